// The basic types of every manager: integers, references, points and rectangles, strings, results.
// Begin here, then at the header of the manager that you call.
#ifndef LAMPBLACK_CARBON_MACTYPES_H
#define LAMPBLACK_CARBON_MACTYPES_H

#include <stddef.h>
#include <stdint.h>

// Every public entry is a C function, visible outside the library and open to interposition.
#define LAMPBLACK_BEGIN_C                                                                                    \
    extern "C" {                                                                                             \
    _Pragma("GCC visibility push(default)")
#define LAMPBLACK_END_C                                                                                      \
    _Pragma("GCC visibility pop")                                                                            \
    }

// Begins a template that only pointers to one type pick: of calls that take 32 bits, for sources that keep those
// in a long.
template <bool isSo>
struct LampblackOnlyIf {
};
template <>
struct LampblackOnlyIf<true> {
    typedef int type;
};
#define LAMPBLACK_IF_TYPE(Name, wanted)                                                                      \
    template <class Name, typename LampblackOnlyIf<__is_same(Name, wanted)>::type = 0>

#define TARGET_OS_MAC 1
#define TARGET_API_MAC_CARBON 1
#define TARGET_API_MAC_OS8 0
#define TARGET_API_MAC_OSX 0
#define OPAQUE_TOOLBOX_STRUCTS 1
#define ACCESSOR_CALLS_ARE_FUNCTIONS 1
#define TARGET_RT_LITTLE_ENDIAN 1
#define TARGET_RT_BIG_ENDIAN 0

typedef uint8_t UInt8;
typedef int8_t SInt8;
typedef uint16_t UInt16;
typedef int16_t SInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef uint64_t UInt64;
typedef int64_t SInt64;
typedef float Float32;
typedef double Float64;

typedef unsigned char Boolean;
typedef unsigned char Byte;
typedef signed char SignedByte;
typedef UInt8* BytePtr;
typedef char* Ptr;
typedef Ptr* Handle;
typedef long Size;
typedef unsigned long ByteCount;
typedef unsigned long ByteOffset;
typedef unsigned long ItemCount;
typedef UInt32 OptionBits;
typedef SInt32 Duration; // milliseconds when positive, microseconds when negative
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef void* LogicalAddress;
typedef const void* ConstLogicalAddress;
typedef long (*ProcPtr)();
typedef ProcPtr UniversalProcPtr;
typedef SInt32 Fixed; // 16.16
typedef Fixed* FixedPtr;
typedef SInt32 Fract; // 2.30
typedef UInt32 UnsignedFixed;
typedef SInt16 ScriptCode;
typedef SInt16 LangCode;
typedef SInt16 RegionCode;

typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef FourCharCode ResType;
typedef OSType* OSTypePtr;
typedef ResType* ResTypePtr;

typedef UInt16 UniChar;
typedef UniChar* UniCharPtr;
typedef const UniChar* ConstUniCharPtr;
typedef UInt8 UTF8Char;
typedef UInt16 UTF16Char;
typedef unsigned long UniCharCount;

// Pascal strings: a length byte, then at most that many bytes of Mac Roman text.
typedef unsigned char Str255[256];
typedef unsigned char Str63[64];
typedef unsigned char Str32[33];
typedef unsigned char Str31[32];
typedef unsigned char Str27[28];
typedef unsigned char Str15[16];
typedef unsigned char* StringPtr;
typedef StringPtr* StringHandle;
typedef const unsigned char* ConstStringPtr;
typedef const unsigned char* ConstStr255Param;
typedef const unsigned char* ConstStr63Param;
typedef const unsigned char* ConstStr32Param;
typedef const unsigned char* ConstStr31Param;
typedef const unsigned char* ConstStr27Param;

typedef UInt8 Style;
enum {
    normal = 0,
    bold = 1,
    italic = 2,
    underline = 4,
    outline = 8,
    shadow = 0x10,
    condense = 0x20,
    extend = 0x40
};

struct Point {
    short v;
    short h;
};
typedef struct Point Point;
typedef Point* PointPtr;

// A half-open rectangle: left and top are inside, right and bottom are not.
struct Rect {
    short top;
    short left;
    short bottom;
    short right;
};
typedef struct Rect Rect;
typedef Rect* RectPtr;

struct RGBColor {
    UInt16 red;
    UInt16 green;
    UInt16 blue;
};
typedef struct RGBColor RGBColor;
typedef RGBColor* RGBColorPtr;

struct NumVersion {
    UInt8 majorRev;       // binary-coded decimal
    UInt8 minorAndBugRev; // a nibble each
    UInt8 stage;
    UInt8 nonRelRev;
};
typedef struct NumVersion NumVersion;

// A version as four fields, or as one number of the machine's byte order.
union NumVersionVariant {
    NumVersion parts;
    UInt32 whole;
};
typedef union NumVersionVariant NumVersionVariant;
typedef NumVersionVariant* NumVersionVariantPtr;

// 'vers', as far as its fields have a fixed place: the long version follows the short one. Big-endian.
struct VersRec {
    NumVersion numericVersion;
    short countryCode;
    Str255 shortVersion;
    Str255 reserved;
};
typedef struct VersRec VersRec;
typedef VersRec* VersRecPtr;
typedef VersRecPtr* VersRecHndl;

struct ProcessSerialNumber {
    UInt32 highLongOfPSN;
    UInt32 lowLongOfPSN;
};
typedef struct ProcessSerialNumber ProcessSerialNumber;
typedef ProcessSerialNumber* ProcessSerialNumberPtr;

// References are opaque; each type is distinct so that overloads can tell them apart.
typedef struct OpaqueGrafPtr* GrafPtr;
typedef GrafPtr CGrafPtr;
typedef CGrafPtr GWorldPtr;
typedef struct OpaqueRgnHandle* RgnHandle;
typedef struct OpaqueWindowPtr* WindowRef;
typedef WindowRef WindowPtr;
typedef struct OpaqueDialogPtr* DialogRef;
typedef DialogRef DialogPtr;
typedef struct OpaqueControlRef* ControlRef;
typedef ControlRef ControlHandle;
typedef struct OpaqueMenuRef* MenuRef;
typedef MenuRef MenuHandle;
typedef struct OpaqueListRef* ListRef;
typedef ListRef ListHandle;
typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventQueueRef* EventQueueRef;
typedef struct OpaqueEventLoopRef* EventLoopRef;
typedef struct OpaqueEventLoopTimerRef* EventLoopTimerRef;
typedef struct OpaqueIconRef* IconRef;
typedef const struct OpaqueCFAllocator* CFAllocatorRef; // NULL is the default allocator

struct UnsignedWide {
    UInt32 lo;
    UInt32 hi;
};
typedef struct UnsignedWide UnsignedWide;

typedef UInt32 PropertyCreator;
typedef UInt32 PropertyTag;

enum { kUnknownType = 0x3F3F3F3F };

enum { kNilOptions = 0 };

#ifndef NULL
#define NULL 0
#endif

static_assert(sizeof(Rect) == 8 && sizeof(Point) == 4 && sizeof(RGBColor) == 6 && sizeof(NumVersion) == 4,
              "the published sizes");

#include <Carbon/MacErrors.h>

#endif
