// The Scrap Manager: what was cut or copied, in one or more flavors. The flavors 'TEXT' and 'utxt' are shared
// with the other programs on the desktop. Begin with GetCurrentScrap to read, ClearCurrentScrap to write.
#ifndef LAMPBLACK_CARBON_SCRAP_H
#define LAMPBLACK_CARBON_SCRAP_H

#include <Carbon/MacTypes.h>

typedef struct OpaqueScrapRef* ScrapRef;
typedef FourCharCode ScrapFlavorType;
typedef UInt32 ScrapFlavorFlags;

enum {
    kScrapFlavorTypePicture = 'PICT',
    kScrapFlavorTypeText = 'TEXT', // Mac Roman
    kScrapFlavorTypeTextStyle = 'styl',
    kScrapFlavorTypeMovie = 'moov',
    kScrapFlavorTypeSound = 'snd ',
    kScrapFlavorTypeUnicode = 'utxt',       // UniChars in this machine's byte order
    kScrapFlavorTypeUTF16External = 'ut16', // big-endian unless a byte-order mark says otherwise
    kScrapFlavorTypeUnicodeStyle = 'ustl'
};

enum {
    kScrapFlavorMaskNone = 0x00000000,
    kScrapFlavorMaskSenderOnly = 0x00000001,
    kScrapFlavorMaskTranslated = 0x00000002
};

enum { kScrapFlavorSizeUnknown = -1 };
enum { kScrapReservedFlavorType = 'srft' };

struct ScrapFlavorInfo {
    ScrapFlavorType flavorType;
    ScrapFlavorFlags flavorFlags;
};
typedef struct ScrapFlavorInfo ScrapFlavorInfo;

// Called when a promised flavor is wanted; answers by PutScrapFlavor with the same scrap and flavor.
typedef OSStatus (*ScrapPromiseKeeperProcPtr)(ScrapRef inScrap, ScrapFlavorType inType, void* inUserData);
typedef ScrapPromiseKeeperProcPtr ScrapPromiseKeeperUPP;

LAMPBLACK_BEGIN_C

ScrapPromiseKeeperUPP NewScrapPromiseKeeperUPP(ScrapPromiseKeeperProcPtr inProc);
void DisposeScrapPromiseKeeperUPP(ScrapPromiseKeeperUPP inUPP);
OSStatus InvokeScrapPromiseKeeperUPP(ScrapRef inScrap, ScrapFlavorType inType, void* inUserData,
                                     ScrapPromiseKeeperUPP inUPP);

// GetCurrentScrap
//
// The scrap as it is now. The reference ends its life when the scrap is cleared, here or by another program.
OSStatus GetCurrentScrap(ScrapRef* outScrap);

OSStatus ClearCurrentScrap(void);
OSStatus ClearScrap(ScrapRef* ioScrap); // NULL in *ioScrap: the current one; out: the new one

// PutScrapFlavor
//
// Adds a flavor. A NULL pointer is a promise of inSize bytes (kScrapFlavorSizeUnknown when not known yet),
// kept by the scrap's promise keeper.
// Errors:  duplicateScrapFlavorErr  already there and not a promise.  paramErr  size below zero with data.
//          badScrapRefErr  the scrap has been cleared since.
OSStatus PutScrapFlavor(ScrapRef inScrap, ScrapFlavorType inType, ScrapFlavorFlags inFlags, Size inSize,
                        const void* inData);
OSStatus SetScrapPromiseKeeper(ScrapRef inScrap, ScrapPromiseKeeperUPP inUPP, const void* inUserData);

OSStatus GetScrapFlavorCount(ScrapRef inScrap, UInt32* outCount);
OSStatus GetScrapFlavorInfoList(ScrapRef inScrap, UInt32* ioCount, ScrapFlavorInfo outInfo[]);

// GetScrapFlavorFlags / GetScrapFlavorSize / GetScrapFlavorData
//
// Errors:  noTypeErr  the scrap has no such flavor.  badScrapRefErr  the scrap has been cleared since.
OSStatus GetScrapFlavorFlags(ScrapRef inScrap, ScrapFlavorType inType, ScrapFlavorFlags* outFlags);
OSStatus GetScrapFlavorSize(ScrapRef inScrap, ScrapFlavorType inType, Size* outSize);
// *ioSize: in, the room at outData; out, the bytes that the flavor has. No more than the room is written.
OSStatus GetScrapFlavorData(ScrapRef inScrap, ScrapFlavorType inType, Size* ioSize, void* outData);

// CallInScrapPromises
//
// Has every promise of the current scrap kept now, as before the process ends.
OSStatus CallInScrapPromises(void);

LAMPBLACK_END_C

#endif
