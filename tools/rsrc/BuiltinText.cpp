// More of the built-in types. Layouts: Inside Macintosh, Macintosh Toolbox Essentials, Imaging With
// QuickDraw, Text.
#include "BuiltinText.h"

namespace lampblack::rsrc {

const char kFinderTypes[] = R"(
type 'BNDL' {
    signature: literal longint;
    version: integer;
    integer = $$CountOf(kinds) - 1;
    array kinds {
        kind: literal longint;
        integer = $$CountOf(ids) - 1;
        array ids { localID: integer; resourceID: integer; };
    };
};

type 'FREF' {
    fileType: literal longint;
    localID: integer;
    name: pstring;
};

type 'SIZE' {
    boolean reserved, saveScreen, dontSaveScreen = 0;
    boolean ignoreSuspendResumeEvents, acceptSuspendResumeEvents;
    boolean reserved, disableOptionSwitch, enableOptionSwitch = 0;
    boolean cannotBackground, canBackground;
    boolean needsActivateOnFGSwitch, doesActivateOnFGSwitch;
    boolean backgroundAndForeground, onlyBackground;
    boolean dontGetFrontClicks, getFrontClicks;
    boolean ignoreAppDiedEvents, acceptAppDiedEvents, ignoreChildDiedEvents = 0, acceptChildDiedEvents = 1;
    boolean not32BitCompatible, is32BitCompatible;
    boolean notHighLevelEventAware, isHighLevelEventAware;
    boolean onlyLocalHLEvents, localAndRemoteHLEvents;
    boolean notStationeryAware, isStationeryAware;
    boolean dontUseTextEditServices, useTextEditServices;
    boolean notDisplayManagerAware, isDisplayManagerAware, reserved = 0;
    boolean reserved, reservedSet;
    boolean reserved, reservedSet;
    preferredSize: unsigned longint;
    minimumSize: unsigned longint;
};

type 'dlgx' {
    version: integer versionZero = 0;
    flags: unsigned longint
        kDialogFlagsUseThemeBackground = 1, kDialogFlagsUseControlHierarchy = 2,
        kDialogFlagsHandleMovableModal = 4, kDialogFlagsUseThemeControls = 8;
};

type 'alrx' {
    version: integer versionZero = 0;
    flags: unsigned longint
        kAlertFlagsUseThemeBackground = 1, kAlertFlagsUseControlHierarchy = 2, kAlertFlagsAlertIsMovable = 4,
        kAlertFlagsUseThemeControls = 8;
    refCon: longint;
    window: byte kUseClassicWindow, kUseThemeWindow;
    fill byte;
    fill long[4];
    title: pstring;
};

type 'plst' as 'TEXT';
type 'carb' { };
)";

const char kPictureTypes[] = R"(
type 'ICON' { bits: hex string[128]; };
type 'ICN#' { array icons { bits: hex string[128]; }; };
type 'icl4' { pixels: hex string[512]; };
type 'icl8' { pixels: hex string[1024]; };
type 'ics#' { array icons { bits: hex string[32]; }; };
type 'ics4' { pixels: hex string[128]; };
type 'ics8' { pixels: hex string[256]; };
type 'icm#' { array icons { bits: hex string[24]; }; };
type 'icm4' { pixels: hex string[96]; };
type 'icm8' { pixels: hex string[192]; };
type 'SICN' { array icons { bits: hex string[32]; }; };
type 'CURS' { bits: hex string[32]; mask: hex string[32]; hotSpot: point; };
type 'PAT ' { pattern: hex string[8]; };
type 'PAT#' {
    integer = $$CountOf(patterns);
    array patterns { pattern: hex string[8]; };
};
type 'acur' {
    integer = $$CountOf(cursors);
    fill word;
    array cursors { cursorID: integer; fill word; };
};
)";

const char kColorTypes[] = R"(
type 'clut' {
    seed: unsigned hex longint;
    flags: unsigned hex integer;
    integer = $$CountOf(colors) - 1;
    array colors { value: integer; @rgb@; };
};

type 'wctb' {
    fill long;
    fill word;
    integer = $$CountOf(colors) - 1;
    array colors {
        part: integer wContentColor, wFrameColor, wTextColor, wHiliteColor, wTitleBarColor;
        @rgb@;
    };
};
type 'dctb' as 'wctb';
type 'actb' as 'wctb';

type 'cctb' {
    fill long;
    fill word;
    integer = $$CountOf(colors) - 1;
    array colors { part: integer cFrameColor, cBodyColor, cTextColor, cThumbColor; @rgb@; };
};

type 'mctb' {
    integer = $$CountOf(entries);
    array entries {
        menuID: integer; item: integer;
        @rgb@; @rgb@; @rgb@; @rgb@;
        fill word;
    };
};

type 'pltt' {
    integer = $$CountOf(colors);
    fill byte[14];
    array colors { @rgb@; usage: integer; tolerance: integer; fill byte[6]; };
};
)";

const char kListTypes[] = R"(
type 'ictb' {
    array words { kind: unsigned hex integer; place: unsigned integer; };
};

type 'nrct' {
    integer = $$CountOf(rectangles);
    array rectangles { bounds: rect; };
};

type 'wpos' { bounds: native rect; };

type 'finf' {
    integer = $$CountOf(fonts);
    array fonts { font: integer; style: @styles16@; size: integer; };
};

type 'styl' {
    integer = $$CountOf(runs);
    array runs {
        start: longint; height: integer; ascent: integer; font: integer;
        style: @styles@; fill byte; size: integer;
        @rgb@;
    };
};

type 'TMPL' {
    array items { label: pstring; kind: literal longint; };
};

type 'ldes' {
    version: integer versionZero = 0;
    rows: integer; columns: integer;
    cellHeight: integer; cellWidth: integer;
    vertical: byte noVertScroll, hasVertScroll; fill byte;
    horizontal: byte noHorizScroll, hasHorizScroll; fill byte;
    definitionID: integer;
    growBox: byte noGrowSpace, hasGrowSpace; fill byte;
};
)";

} // namespace lampblack::rsrc
