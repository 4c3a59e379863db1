// The data of a drag: items, each in one or more flavors, whose bytes are there or delivered when wanted.
// Begin with NewDrag to make one, CountDragItems to read one.
//
// Everywhere below: badDragRefErr for a null, disposed or foreign drag, badDragItemErr for an item that the
// drag has not, badDragFlavorErr for a flavor that the item has not, paramErr for a null pointer or a
// negative size. Indices count from 1.
#ifndef LAMPBLACK_CARBON_DRAG_H
#define LAMPBLACK_CARBON_DRAG_H

#include <Carbon/AEDataModel.h>
#include <Carbon/Files.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

typedef struct OpaqueDragRef* DragRef;
typedef DragRef DragReference;
typedef UInt32 DragItemRef; // a number of the sender's choice
typedef DragItemRef ItemReference;
typedef OSType FlavorType;
typedef UInt32 FlavorFlags;

enum {
    flavorSenderOnly = 1 << 0,
    flavorSenderTranslated = 1 << 1,
    flavorNotSaved = 1 << 2,
    flavorSystemTranslated = 1 << 8,
    flavorDataPromised = 1 << 9 // set here while the bytes are not delivered yet
};

enum {
    kDragFlavorTypeHFS = 'hfs ',        // an HFSFlavor
    kDragFlavorTypePromiseHFS = 'phfs', // a PromiseHFSFlavor
    flavorTypeHFS = kDragFlavorTypeHFS,
    flavorTypePromiseHFS = kDragFlavorTypePromiseHFS
};

// Flavors that a promise names: an FSSpec of the file, once there is one.
enum { kDragPromisedFlavorFindFile = 'rWm1', kDragPromisedFlavor = 'fssP' };

// Creator and file types of what is no file.
enum {
    kDragPseudoCreatorVolumeOrDirectory = 'MACS',
    kDragPseudoFileTypeVolume = 'disk',
    kDragPseudoFileTypeDirectory = 'fold'
};

#pragma pack(push, 2)

struct HFSFlavor {
    OSType fileType;
    OSType fileCreator;
    UInt16 fdFlags;
    FSSpec fileSpec;
};
typedef struct HFSFlavor HFSFlavor;

struct PromiseHFSFlavor {
    OSType fileType;
    OSType fileCreator;
    UInt16 fdFlags;
    FlavorType promisedFlavor;
};
typedef struct PromiseHFSFlavor PromiseHFSFlavor;

#pragma pack(pop)

static_assert(sizeof(HFSFlavor) == 80 && sizeof(PromiseHFSFlavor) == 14, "the published sizes");

// Called when promised bytes are wanted; answers by SetDragItemFlavorData with the same drag, item and
// flavor. Any error counts as bytes that cannot be had.
typedef OSErr (*DragSendDataProcPtr)(FlavorType theType, void* dragSendRefCon, DragItemRef theItemRef,
                                     DragRef theDrag);
typedef DragSendDataProcPtr DragSendDataUPP;

LAMPBLACK_BEGIN_C

DragSendDataUPP NewDragSendDataUPP(DragSendDataProcPtr userRoutine);
void DisposeDragSendDataUPP(DragSendDataUPP userUPP);
OSErr InvokeDragSendDataUPP(FlavorType theType, void* dragSendRefCon, DragItemRef theItemRef, DragRef theDrag,
                            DragSendDataUPP userUPP);

// Ownership:  the caller owns *theDrag; release it, and what it holds, with DisposeDrag.
OSErr NewDrag(DragRef* theDrag);
OSErr DisposeDrag(DragRef theDrag);

// --- The sender's side

// AddDragItemFlavor
//
// Adds a flavor to an item, which is made by its first flavor. A NULL pointer is a promise, kept by the send
// procedure.
// Errors:     duplicateFlavorErr; memFullErr, also above 65,535 items or flavors of one item.
OSErr AddDragItemFlavor(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, const void* dataPtr,
                        Size dataSize, FlavorFlags theFlags);

// SetDragItemFlavorData
//
// Writes bytes into a flavor from an offset on; it grows as needed, and what lies between is zero. The
// promise, if it was one, is kept then.
OSErr SetDragItemFlavorData(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, const void* dataPtr,
                            Size dataSize, UInt32 dataOffset);

// Who delivers promised bytes; NULL: nobody.
OSErr SetDragSendProc(DragRef theDrag, DragSendDataUPP sendProc, void* dragSendRefCon);

// --- The receiver's side

OSErr CountDragItems(DragRef theDrag, UInt16* numItems);
OSErr GetDragItemReferenceNumber(DragRef theDrag, UInt16 index, DragItemRef* theItemRef);
OSErr CountDragItemFlavors(DragRef theDrag, DragItemRef theItemRef, UInt16* numFlavors);
OSErr GetFlavorType(DragRef theDrag, DragItemRef theItemRef, UInt16 index, FlavorType* theType);
OSErr GetFlavorFlags(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, FlavorFlags* theFlags);

// GetFlavorDataSize, GetFlavorData
//
// Have promised bytes delivered first. *dataSize: in, the room at dataPtr; out, the bytes copied from the
// offset on, none of them behind the end. With dataPtr NULL, what could be copied from there.
// Errors:     cantGetFlavorErr  promised bytes that nobody delivers.
OSErr GetFlavorDataSize(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, Size* dataSize);
OSErr GetFlavorData(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, void* dataPtr,
                    Size* dataSize, UInt32 dataOffset);

// The item's rectangle in global coordinates; empty until the sender sets it.
OSErr GetDragItemBounds(DragRef theDrag, DragItemRef theItemRef, Rect* itemBounds);
OSErr SetDragItemBounds(DragRef theDrag, DragItemRef theItemRef, const Rect* itemBounds);

// Where the receiver put the items: a copy of what SetDropLocation was given, a null descriptor before.
OSErr GetDropLocation(DragRef theDrag, AEDesc* dropLocation);
OSErr SetDropLocation(DragRef theDrag, const AEDesc* dropLocation);

LAMPBLACK_END_C

#endif
