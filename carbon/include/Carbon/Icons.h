// Icons: 'ICON', 'cicn' and 'SICN' resources, suites of one icon in several sizes and depths, icon families
// ('icns') and the icons of the system. Begin with GetIconSuite and PlotIconSuite, PlotIconID, or GetIconRef
// and PlotIconRef. All icons are drawn in the current port.
#ifndef LAMPBLACK_CARBON_ICONS_H
#define LAMPBLACK_CARBON_ICONS_H

#include <Carbon/Files.h>
#include <Carbon/Folders.h>
#include <Carbon/Quickdraw.h>

// The resource types of a suite.
enum {
    kLarge1BitMask = 'ICN#', // 32 by 32, a mask after the icon
    kLarge4BitData = 'icl4',
    kLarge8BitData = 'icl8',
    kLarge32BitData = 'il32',
    kLarge8BitMask = 'l8mk',
    kSmall1BitMask = 'ics#', // 16 by 16
    kSmall4BitData = 'ics4',
    kSmall8BitData = 'ics8',
    kSmall32BitData = 'is32',
    kSmall8BitMask = 's8mk',
    kMini1BitMask = 'icm#', // 16 by 12
    kMini4BitData = 'icm4',
    kMini8BitData = 'icm8',
    kHuge1BitMask = 'ich#', // 48 by 48
    kHuge4BitData = 'ich4',
    kHuge8BitData = 'ich8',
    kHuge32BitData = 'ih32',
    kHuge8BitMask = 'h8mk',
    kThumbnail32BitData = 'it32', // 128 by 128
    kThumbnail8BitMask = 't8mk',
    large1BitMask = kLarge1BitMask,
    large4BitData = kLarge4BitData,
    large8BitData = kLarge8BitData,
    small1BitMask = kSmall1BitMask,
    small4BitData = kSmall4BitData,
    small8BitData = kSmall8BitData,
    mini1BitMask = kMini1BitMask,
    mini4BitData = kMini4BitData,
    mini8BitData = kMini8BitData
};

// Where an icon that is smaller than its rectangle goes. Without alignment it is stretched to fill it.
typedef SInt16 IconAlignmentType;
enum {
    kAlignNone = 0x00,
    kAlignVerticalCenter = 0x01,
    kAlignTop = 0x02,
    kAlignBottom = 0x03,
    kAlignHorizontalCenter = 0x04,
    kAlignAbsoluteCenter = kAlignVerticalCenter | kAlignHorizontalCenter,
    kAlignCenterTop = kAlignTop | kAlignHorizontalCenter,
    kAlignCenterBottom = kAlignBottom | kAlignHorizontalCenter,
    kAlignLeft = 0x08,
    kAlignCenterLeft = kAlignVerticalCenter | kAlignLeft,
    kAlignTopLeft = kAlignTop | kAlignLeft,
    kAlignBottomLeft = kAlignBottom | kAlignLeft,
    kAlignRight = 0x0C,
    kAlignCenterRight = kAlignVerticalCenter | kAlignRight,
    kAlignTopRight = kAlignTop | kAlignRight,
    kAlignBottomRight = kAlignBottom | kAlignRight,
    atNone = kAlignNone,
    atVerticalCenter = kAlignVerticalCenter,
    atTop = kAlignTop,
    atBottom = kAlignBottom,
    atHorizontalCenter = kAlignHorizontalCenter,
    atAbsoluteCenter = kAlignAbsoluteCenter,
    atCenterTop = kAlignCenterTop,
    atCenterBottom = kAlignCenterBottom,
    atLeft = kAlignLeft,
    atCenterLeft = kAlignCenterLeft,
    atTopLeft = kAlignTopLeft,
    atBottomLeft = kAlignBottomLeft,
    atRight = kAlignRight,
    atCenterRight = kAlignCenterRight,
    atTopRight = kAlignTopRight,
    atBottomRight = kAlignBottomRight
};

// How an icon looks: one of the first four, a label, and whether it is selected.
typedef SInt16 IconTransformType;
enum {
    kTransformNone = 0x00,
    kTransformDisabled = 0x01,
    kTransformOffline = 0x02,
    kTransformOpen = 0x03,
    kTransformLabel1 = 0x0100,
    kTransformLabel2 = 0x0200,
    kTransformLabel3 = 0x0300,
    kTransformLabel4 = 0x0400,
    kTransformLabel5 = 0x0500,
    kTransformLabel6 = 0x0600,
    kTransformLabel7 = 0x0700,
    kTransformSelected = 0x4000,
    kTransformSelectedDisabled = kTransformSelected | kTransformDisabled,
    kTransformSelectedOffline = kTransformSelected | kTransformOffline,
    kTransformSelectedOpen = kTransformSelected | kTransformOpen,
    ttNone = kTransformNone,
    ttDisabled = kTransformDisabled,
    ttOffline = kTransformOffline,
    ttOpen = kTransformOpen,
    ttLabel1 = kTransformLabel1,
    ttLabel2 = kTransformLabel2,
    ttLabel3 = kTransformLabel3,
    ttLabel4 = kTransformLabel4,
    ttLabel5 = kTransformLabel5,
    ttLabel6 = kTransformLabel6,
    ttLabel7 = kTransformLabel7,
    ttSelected = kTransformSelected,
    ttSelectedDisabled = kTransformSelectedDisabled,
    ttSelectedOffline = kTransformSelectedOffline,
    ttSelectedOpen = kTransformSelectedOpen
};

// Which members of a suite a call is about.
typedef UInt32 IconSelectorValue;
enum {
    kSelectorLarge1Bit = 0x00000001,
    kSelectorLarge4Bit = 0x00000002,
    kSelectorLarge8Bit = 0x00000004,
    kSelectorLarge32Bit = 0x00000008,
    kSelectorLarge8BitMask = 0x00000010,
    kSelectorSmall1Bit = 0x00000100,
    kSelectorSmall4Bit = 0x00000200,
    kSelectorSmall8Bit = 0x00000400,
    kSelectorSmall32Bit = 0x00000800,
    kSelectorSmall8BitMask = 0x00001000,
    kSelectorMini1Bit = 0x00010000,
    kSelectorMini4Bit = 0x00020000,
    kSelectorMini8Bit = 0x00040000,
    kSelectorHuge1Bit = 0x01000000,
    kSelectorHuge4Bit = 0x02000000,
    kSelectorHuge8Bit = 0x04000000,
    kSelectorHuge32Bit = 0x08000000,
    kSelectorHuge8BitMask = 0x10000000,
    kSelectorAllLargeData = 0x000000FF,
    kSelectorAllSmallData = 0x0000FF00,
    kSelectorAllMiniData = 0x00FF0000,
    kSelectorAll1BitData = kSelectorLarge1Bit | kSelectorSmall1Bit | kSelectorMini1Bit | kSelectorHuge1Bit,
    kSelectorAll4BitData = kSelectorLarge4Bit | kSelectorSmall4Bit | kSelectorMini4Bit | kSelectorHuge4Bit,
    kSelectorAll8BitData = kSelectorLarge8Bit | kSelectorSmall8Bit | kSelectorMini8Bit | kSelectorHuge8Bit,
    kSelectorAll32BitData = kSelectorLarge32Bit | kSelectorSmall32Bit | kSelectorHuge32Bit,
    svLarge1Bit = kSelectorLarge1Bit,
    svLarge4Bit = kSelectorLarge4Bit,
    svLarge8Bit = kSelectorLarge8Bit,
    svSmall1Bit = kSelectorSmall1Bit,
    svSmall4Bit = kSelectorSmall4Bit,
    svSmall8Bit = kSelectorSmall8Bit,
    svMini1Bit = kSelectorMini1Bit,
    svMini4Bit = kSelectorMini4Bit,
    svMini8Bit = kSelectorMini8Bit,
    svAllLargeData = kSelectorAllLargeData,
    svAllSmallData = kSelectorAllSmallData,
    svAllMiniData = kSelectorAllMiniData,
    svAll1BitData = kSelectorAll1BitData,
    svAll4BitData = kSelectorAll4BitData,
    svAll8BitData = kSelectorAll8BitData
};
#define kSelectorAllHugeData 0xFF000000U
#define kSelectorAllAvailableData 0xFFFFFFFFU
#define svAllAvailableData kSelectorAllAvailableData

// The icons of the system.
enum { kSystemIconsCreator = 'macs' };
enum {
    kGenericDocumentIcon = 'docu',
    kGenericApplicationIcon = 'APPL',
    kGenericFolderIcon = 'fldr',
    kTrashIcon = 'trsh',
    kAlertNoteIcon = 'note',
    kAlertCautionIcon = 'caut',
    kAlertStopIcon = 'stop',
    kHelpIcon = 'help'
};
enum {
    kGenericDocumentIconResource = -4000,
    kGenericApplicationIconResource = -3996,
    kGenericFolderIconResource = -3999,
    kTrashIconResource = -3993,
    kHelpIconResource = -20271
};

typedef UInt32 IconServicesUsageFlags;
enum {
    kIconServicesNormalUsageFlag = 0,
    kIconServicesNoBadgeFlag = 1 << 0,
    kIconServicesUpdateIfNeededFlag = 1 << 1
};

enum {
    noMaskFoundErr = -1000,
    invalidIconRefErr = -2580,
    noSuchIconErr = -2581,
    noIconDataAvailableErr = -2582
};

// A colour icon. The bits of the mask are in iconMaskData, followed by those of iconBMap, if its rowBytes are
// not 0; iconData holds the pixels of iconPMap.
struct CIcon {
    PixMap iconPMap;
    BitMap iconMask;
    BitMap iconBMap;
    Handle iconData;
    SInt16 iconMaskData[1];
};
typedef struct CIcon CIcon;
typedef CIcon* CIconPtr;
typedef CIconPtr* CIconHandle;

typedef Handle IconSuiteRef;
typedef OSErr (*IconActionProcPtr)(ResType theType, Handle* theIcon, void* yourDataPtr);
typedef Handle (*IconGetterProcPtr)(ResType theType, void* yourDataPtr);
typedef IconActionProcPtr IconActionUPP;
typedef IconGetterProcPtr IconGetterUPP;

// An icon family: this header, then elements one after the other. All of it is big-endian, in memory too.
struct IconFamilyElement {
    OSType elementType;
    SInt32 elementSize; // with this header
    unsigned char elementData[1];
};
typedef struct IconFamilyElement IconFamilyElement;
struct IconFamilyResource {
    OSType resourceType; // 'icns'
    SInt32 resourceSize; // of everything
    IconFamilyElement elements[1];
};
typedef struct IconFamilyResource IconFamilyResource;
typedef IconFamilyResource* IconFamilyPtr;
typedef IconFamilyPtr* IconFamilyHandle;
enum { kIconFamilyType = 'icns' };

LAMPBLACK_BEGIN_C

IconActionUPP NewIconActionUPP(IconActionProcPtr userRoutine);
IconGetterUPP NewIconGetterUPP(IconGetterProcPtr userRoutine);
void DisposeIconActionUPP(IconActionUPP userUPP);
void DisposeIconGetterUPP(IconGetterUPP userUPP);

// Single icons
// -----------------------------------------------------------------------------------------------

// GetIcon
//
// The 'ICON' resource with this ID, 32 by 32 bits without a mask; NULL when there is none or it is too short.
// The handle is the resource's.
Handle GetIcon(SInt16 iconID);
void PlotIcon(const Rect* theRect, Handle theIcon); // stretched, in the colours of the port

// GetCIcon
//
// Reads the 'cicn' resource with this ID. Each call makes another record, which the caller owns and gives to
// DisposeCIcon; NULL when there is none, or it is damaged, or memory is short.
CIconHandle GetCIcon(SInt16 iconID);
void PlotCIcon(const Rect* theRect, CIconHandle theIcon); // a port of depth 1 or 2 shows iconBMap, if any
void DisposeCIcon(CIconHandle theIcon);

// Errors of these: paramErr for a NULL rectangle or what is no icon of that kind. A handle to 'ICN#' data has
// its mask; one to 'ICON' data has none and covers all of its square. A 'SICN' is 16 by 16; of several, the
// second is the mask of the first.
OSErr PlotIconHandle(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                     Handle theIcon);
OSErr PlotSICNHandle(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                     Handle theSICN);
OSErr PlotCIconHandle(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                      CIconHandle theCIcon);

// Suites
// -----------------------------------------------------------------------------------------------------

// PlotIconID
//
// Draws the icon with this ID: the size that fits the rectangle, from mini to huge, in the depth that suits
// the port.
//
// Errors:     resNotFound  there is none;  paramErr  a NULL rectangle
OSErr PlotIconID(const Rect* theRect, IconAlignmentType align, IconTransformType transform, SInt16 theResID);

// Ownership:  the caller owns *theIconSuite; release it with DisposeIconSuite. What GetIconSuite puts in are
//             resources, which DisposeIconSuite does not touch, even with disposeData.
// Errors:     resNotFound  no resource of the types asked for has this ID (and *theIconSuite is NULL)
//             paramErr     a NULL result, a reference that is no suite
OSErr NewIconSuite(IconSuiteRef* theIconSuite);
OSErr GetIconSuite(IconSuiteRef* theIconSuite, SInt16 theResID, IconSelectorValue selector);
OSErr DisposeIconSuite(IconSuiteRef theIconSuite, Boolean disposeData);

// The data of one type. AddIconToSuite replaces what was there; a type that no suite holds is paramErr.
OSErr AddIconToSuite(Handle theIconData, IconSuiteRef theSuite, ResType theType);
OSErr GetIconFromSuite(Handle* theIconData, IconSuiteRef theSuite, ResType theType); // paramErr: none there

// Calls action for each member of the suite that the selector names; it may change *theIcon, which then
// belongs to the suite. An error ends the walk and is the answer.
OSErr ForEachIconDo(IconSuiteRef theSuite, IconSelectorValue selector, IconActionUPP action,
                    void* yourDataPtr);

OSErr PlotIconSuite(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                    IconSuiteRef theIconSuite);

// The label, 0 to 7, that an icon of this suite is drawn with when the transform names none.
OSErr SetSuiteLabel(IconSuiteRef theSuite, SInt16 theLabel);
SInt16 GetSuiteLabel(IconSuiteRef theSuite);

// As a suite, but each piece of data is asked of theMethod, which answers NULL for what it does not have.
OSErr PlotIconMethod(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                     IconGetterUPP theMethod, void* yourDataPtr);

// Where an icon's mask is. Without a mask these answer false, or noMaskFoundErr.
Boolean PtInIconID(Point testPt, const Rect* iconRect, IconAlignmentType align, SInt16 iconID);
Boolean PtInIconSuite(Point testPt, const Rect* iconRect, IconAlignmentType align, IconSuiteRef theIconSuite);
Boolean PtInIconMethod(Point testPt, const Rect* iconRect, IconAlignmentType align, IconGetterUPP theMethod,
                       void* yourDataPtr);
Boolean RectInIconID(const Rect* testRect, const Rect* iconRect, IconAlignmentType align, SInt16 iconID);
Boolean RectInIconSuite(const Rect* testRect, const Rect* iconRect, IconAlignmentType align,
                        IconSuiteRef theIconSuite);
Boolean RectInIconMethod(const Rect* testRect, const Rect* iconRect, IconAlignmentType align,
                         IconGetterUPP theMethod, void* yourDataPtr);
OSErr IconIDToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align, SInt16 iconID);
OSErr IconSuiteToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align,
                     IconSuiteRef theIconSuite);
OSErr IconMethodToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align,
                      IconGetterUPP theMethod, void* yourDataPtr);

// Families
// ---------------------------------------------------------------------------------------------------

// Elements of a family. Data of 24 bits and 8 bits of mask are packed in a family and plain (0, red, green,
// blue for each pixel) in the handles of SetIconFamilyData and GetIconFamilyData; other data are as they are.
// Errors:     paramErr  no such family or handle, data of a wrong size
//             noIconDataAvailableErr  the family has no such element
OSErr SetIconFamilyData(IconFamilyHandle iconFamily, OSType iconType, Handle h);
OSErr GetIconFamilyData(IconFamilyHandle iconFamily, OSType iconType, Handle h);
OSErr IconSuiteToIconFamily(IconSuiteRef iconSuite, IconSelectorValue whichIcons,
                            IconFamilyHandle* iconFamily);
OSErr IconFamilyToIconSuite(IconFamilyHandle iconFamily, IconSelectorValue whichIcons,
                            IconSuiteRef* iconSuite); // the data are the suite's

// Icon references
// --------------------------------------------------------------------------------------------

// GetIconRef
//
// The icon registered for a creator and a type, or one of the system's. Each is counted: release it with
// ReleaseIconRef. vRefNum is kOnSystemDisk or any volume.
//
// Errors:     paramErr  a NULL result;  noSuchIconErr  nobody registered it
OSErr GetIconRef(SInt16 vRefNum, OSType creator, OSType iconType, IconRef* theIconRef);

// Each answers invalidIconRefErr for what is no icon reference.
OSErr AcquireIconRef(IconRef theIconRef);
OSErr ReleaseIconRef(IconRef theIconRef);
OSErr GetIconRefOwners(IconRef theIconRef, UInt16* owners);
Boolean IsValidIconRef(IconRef theIconRef);

// Registers an icon under a creator and a type, in place of what was registered; a reference that is in use
// keeps its picture. *theIconRef counts once for the caller; release it.
// Errors:     paramErr  a NULL result, bad bytes;  resNotFound  no 'icns' nor suite has that ID
OSErr RegisterIconRefFromIconFamily(OSType creator, OSType iconType, IconFamilyHandle iconFamily,
                                    IconRef* theIconRef);
OSErr RegisterIconRefFromResource(OSType creator, OSType iconType, const FSSpec* resourceFile,
                                  SInt16 resourceID, IconRef* theIconRef);
OSErr UnregisterIconRef(OSType creator, OSType iconType); // noSuchIconErr

OSErr PlotIconRef(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                  IconServicesUsageFlags theIconServicesUsageFlags, IconRef theIconRef);
Boolean PtInIconRef(const Point* testPt, const Rect* iconRect, IconAlignmentType align,
                    IconServicesUsageFlags iconServicesUsageFlags, IconRef theIconRef);
Boolean RectInIconRef(const Rect* testRect, const Rect* iconRect, IconAlignmentType align,
                      IconServicesUsageFlags iconServicesUsageFlags, IconRef theIconRef);
OSErr IconRefToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align,
                   IconServicesUsageFlags iconServicesUsageFlags, IconRef theIconRef);

LAMPBLACK_END_C

#endif
