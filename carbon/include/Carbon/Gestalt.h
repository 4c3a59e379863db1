// What this system is and can do. Begin at Gestalt.
#ifndef LAMPBLACK_CARBON_GESTALT_H
#define LAMPBLACK_CARBON_GESTALT_H

#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

// Selectors. Each is answered unless an application or the host's control interface says otherwise.
enum {
    gestaltSystemVersion = 0x73797376,       // 'sysv': binary-coded decimal, 0x1049 at most for any 10.4
    gestaltSystemVersionMajor = 0x73797331,  // 'sys1'
    gestaltSystemVersionMinor = 0x73797332,  // 'sys2'
    gestaltSystemVersionBugFix = 0x73797333, // 'sys3'
    gestaltVersion = 0x76657273,             // 'vers': of Gestalt itself
    gestaltCarbonVersion = 0x63626F6E,       // 'cbon'
    gestaltMenuMgrAttr = 0x6D656E75,         // 'menu'
    gestaltAppearanceAttr = 0x61707072,      // 'appr'
    gestaltAppearanceVersion = 0x61707672,   // 'apvr'
    gestaltControlMgrAttr = 0x636E746C,      // 'cntl'
    gestaltControlMgrVersion = 0x636D7672,   // 'cmvr'
    gestaltWindowMgrAttr = 0x77696E64,       // 'wind'
    gestaltDITLExtAttr = 0x6469746C,         // 'ditl'
    gestaltQuickTimeVersion = 0x7174696D,    // 'qtim'
    gestaltQuickTime = 0x7174696D,
    gestaltSpeechAttr = 0x74747363,                 // 'ttsc'
    gestaltFSAttr = 0x66732020,                     // 'fs  '
    gestaltFindFolderAttr = 0x666F6C64,             // 'fold'
    gestaltQuickdrawVersion = 0x71642020,           // 'qd  '
    gestaltQuickdrawFeatures = 0x71647277,          // 'qdrw'
    gestaltTextEditVersion = 0x74652020,            // 'te  '
    gestaltResourceMgrAttr = 0x72737263,            // 'rsrc'
    gestaltScrapMgrAttr = 0x73637261,               // 'scra'
    gestaltMachineType = 0x6D616368,                // 'mach'
    gestaltNativeCPUtype = 0x63707574,              // 'cput'
    gestaltNativeCPUfamily = 0x63707566,            // 'cpuf'
    gestaltSysArchitecture = 0x73797361,            // 'sysa'
    gestaltProcClkSpeed = 0x70636C6B,               // 'pclk': hertz
    gestaltPhysicalRAMSize = 0x72616D20,            // 'ram ': bytes, at most 2 GB less one
    gestaltPhysicalRAMSizeInMegabytes = 0x72616D6D, // 'ramm'
    gestaltLogicalRAMSize = 0x6C72616D,             // 'lram'
    gestaltLogicalPageSize = 0x7067737A,            // 'pgsz'
    gestaltOSAttr = 0x6F732020,                     // 'os  '
    gestaltOSTable = 0x6F737474,                    // 'ostt'
    gestaltTimeMgrVersion = 0x746D6772              // 'tmgr'
};

// Bits and values of the answers.
enum {
    gestaltMenuMgrPresent = 0,
    gestaltMenuMgrAquaLayoutBit = 1,
    gestaltMenuMgrMultipleItemsWithCommandIDBit = 2,
    gestaltMenuMgrRetainsIconRefBit = 3,
    gestaltMenuMgrPresentMask = 1,
    gestaltMenuMgrAquaLayoutMask = 2,
    gestaltAppearanceExists = 0,
    gestaltAppearanceCompatMode = 1,
    gestaltControlMgrPresent = 0,
    gestaltControlMgrPresentMask = 1,
    gestaltWindowMgrPresent = 0,
    gestaltExtendedWindowAttributes = 1,
    gestaltHasFloatingWindows = 3,
    gestaltSheetsAreWindowModalBit = 4,
    gestaltDITLExtPresent = 0,
    gestaltSpeechMgrPresent = 0,
    gestaltSpeechHasPPCGlue = 1,
    gestaltFullExtFSDispatching = 0,
    gestaltHasFSSpecCalls = 1,
    gestaltFSSupportsHFSPlusVols = 8,
    gestaltFindFolderPresent = 0,
    gestalt32BitQD13 = 0x230,
    gestaltMacOSXQD = 0x300,
    gestaltHasColor = 0,
    gestaltHasDeepGWorlds = 1,
    gestaltHasDirectPixMaps = 2,
    gestaltPartialRsrcs = 0,
    gestaltScrapMgrTranslationAware = 0,
    gestaltCPUX86 = 0x696E3836,      // 'in86'
    gestaltCPUPentium4 = 0x69356934, // 'i5i4'
    gestaltCPUPentium = 0x69353836,  // 'i586'
    gestaltIntel = 10,
    gestaltExtendedTimeMgr = 3
};

LAMPBLACK_BEGIN_C

// Gestalt
//
// Asks about one selector.
//
// Errors:     gestaltUndefSelectorErr  nobody knows it: *response is left alone; paramErr  a null response.
OSErr Gestalt(OSType selector, SInt32* response);

// Answers of the application's own, which stand before the system's. SetGestaltValue adds or replaces;
// DeleteGestaltValue removes a system answer too.
//
// Errors:     gestaltDupSelectorErr  NewGestaltValue of a selector that has an answer;
//             gestaltUndefSelectorErr  Replace- and DeleteGestaltValue of one that has none.
OSErr NewGestaltValue(OSType selector, SInt32 newValue);
OSErr ReplaceGestaltValue(OSType selector, SInt32 replacementValue);
OSErr SetGestaltValue(OSType selector, SInt32 newValue);
OSErr DeleteGestaltValue(OSType selector);

LAMPBLACK_END_C

#endif
