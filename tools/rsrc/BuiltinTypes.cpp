// The built-in types, declared in the language of the tool itself. Layouts: docs/formats, and Inside
// Macintosh, Macintosh Toolbox Essentials and More Macintosh Toolbox.
#include "BuiltinTypes.h"

#include "BuiltinText.h"
#include "Lexer.h"
#include "TypeParser.h"

#include <cstring>

namespace lampblack::rsrc {

namespace {

// What more than one type has in common, put in the place of its name.
constexpr struct {
    const char *name, *text;
} kShared[] = {
    { "@kinds@", R"(procID: integer
        documentProc = 0, dBoxProc = 1, plainDBox = 2, altDBoxProc = 3, noGrowDocProc = 4,
        movableDBoxProc = 5, zoomDocProc = 8, zoomNoGrow = 12, rDocProc = 16,
        floatProc = 1985, floatGrowProc = 1987, floatZoomProc = 1989, floatZoomGrowProc = 1991,
        kWindowDocumentProc = 1024, kWindowGrowDocumentProc = 1025,
        kWindowVertZoomDocumentProc = 1026, kWindowVertZoomGrowDocumentProc = 1027,
        kWindowHorizZoomDocumentProc = 1028, kWindowHorizZoomGrowDocumentProc = 1029,
        kWindowFullZoomDocumentProc = 1030, kWindowFullZoomGrowDocumentProc = 1031,
        kWindowPlainDialogProc = 1040, kWindowShadowDialogProc = 1041, kWindowModalDialogProc = 1042,
        kWindowMovableModalDialogProc = 1043, kWindowAlertProc = 1044, kWindowMovableAlertProc = 1045,
        kWindowMovableModalGrowProc = 1046, kWindowFloatProc = 1057, kWindowFloatGrowProc = 1059,
        kWindowSheetProc = 1088, kWindowSheetAlertProc = 1120)" },
    { "@positions@", R"(position: unsigned integer
            noAutoCenter = 0, centerMainScreen = 0x280A, alertPositionMainScreen = 0x300A,
            staggerMainScreen = 0x380A, centerParentWindow = 0xA80A, alertPositionParentWindow = 0xB00A,
            staggerParentWindow = 0xB80A, centerParentWindowScreen = 0x680A,
            alertPositionParentWindowScreen = 0x700A, staggerParentWindowScreen = 0x780A)" },
    { "@rgb@", "unsigned integer; unsigned integer; unsigned integer" },
    { "@styles16@",
      "unsigned integer plain = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 16, "
      "condense = 32, extend = 64" },
    { "@styles@", "unsigned byte plain = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 16, "
                  "condense = 32, extend = 64" },
};

constexpr char kWindows[] = R"(
type 'DLOG' {
    bounds: rect;
    @kinds@;
    visible: byte invisible, visible;
    fill byte;
    goAway: byte noGoAway, goAway;
    fill byte;
    refCon: longint;
    itemsID: integer;
    title: pstring Untitled = "Untitled";
    optional {
        align word;
        @positions@;
    };
};

type 'WIND' {
    bounds: rect;
    @kinds@;
    visible: byte invisible, visible;
    fill byte;
    goAway: byte noGoAway, goAway;
    fill byte;
    refCon: longint;
    title: pstring Untitled = "Untitled";
    optional {
        align word;
        @positions@;
    };
};

type 'ALRT' {
    bounds: rect;
    itemsID: integer;
    array stages[4] {
        boldItem: boolean OK, Cancel;
        visible: boolean invisible, visible;
        sound: bitstring[2] silent, sound1, sound2, sound3;
    };
    optional {
        @positions@;
    };
};

type 'DITL' {
    integer = $$CountOf(items) - 1;
    array items {
        fill long;
        bounds: rect;
        item: switch {
        case Button:
            boolean enabled, disabled; key bitstring[7] = 4; title: pstring;
        case CheckBox:
            boolean enabled, disabled; key bitstring[7] = 5; title: pstring;
        case RadioButton:
            boolean enabled, disabled; key bitstring[7] = 6; title: pstring;
        case Control:
            boolean enabled, disabled; key bitstring[7] = 7; byte = 2; controlID: integer;
        case StaticText:
            boolean enabled, disabled; key bitstring[7] = 8; text: pstring;
        case EditText:
            boolean enabled, disabled; key bitstring[7] = 16; text: pstring;
        case Icon:
            boolean enabled, disabled; key bitstring[7] = 32; byte = 2; iconID: integer;
        case Picture:
            boolean enabled, disabled; key bitstring[7] = 64; byte = 2; pictureID: integer;
        case HelpItem:
            boolean enabled, disabled; key bitstring[7] = 1;
            help: switch {
            case HMScanhdlg:
                byte = 4; key integer = 1; helpID: integer;
            case HMScanhrct:
                byte = 4; key integer = 2; helpID: integer;
            case HMScanAppendhdlg:
                byte = 6; key integer = 8; helpID: integer; itemNumber: integer;
            };
        case UserItem:
            boolean enabled, disabled; key bitstring[7] = 0; byte = 0;
        };
        align word;
    };
};
)";

constexpr char kControls[] = R"(
type 'CNTL' {
    bounds: rect;
    value: integer;
    visible: byte invisible, visible;
    fill byte;
    max: integer;
    min: integer;
    procID: integer
        pushButProc = 0, checkBoxProc = 1, radioButProc = 2, scrollBarProc = 16, popupMenuProc = 1008,
        kControlBevelButtonSmallBevelProc = 32, kControlBevelButtonNormalBevelProc = 33,
        kControlBevelButtonLargeBevelProc = 34, kControlSliderProc = 48, kControlTriangleProc = 64,
        kControlProgressBarProc = 80, kControlLittleArrowsProc = 96, kControlChasingArrowsProc = 112,
        kControlTabLargeProc = 128, kControlTabSmallProc = 129, kControlSeparatorLineProc = 144,
        kControlGroupBoxTextTitleProc = 160, kControlGroupBoxCheckBoxProc = 161,
        kControlGroupBoxPopupButtonProc = 162, kControlGroupBoxSecondaryTextTitleProc = 164,
        kControlGroupBoxSecondaryCheckBoxProc = 165, kControlImageWellProc = 176, kControlPlacardProc = 224,
        kControlUserPaneProc = 256, kControlEditTextProc = 272, kControlEditTextPasswordProc = 274,
        kControlStaticTextProc = 288, kControlPictureProc = 304, kControlPictureNoTrackProc = 305,
        kControlIconProc = 320, kControlIconNoTrackProc = 321, kControlWindowHeaderProc = 336,
        kControlWindowListViewHeaderProc = 337, kControlListBoxProc = 352, kControlListBoxAutoSizeProc = 353,
        kControlPushButtonProc = 368, kControlCheckBoxProc = 369, kControlRadioButtonProc = 370,
        kControlCheckBoxAutoToggleProc = 371, kControlRadioButtonAutoToggleProc = 372,
        kControlPushButLeftIconProc = 374, kControlPushButRightIconProc = 375,
        kControlScrollBarProc = 384, kControlScrollBarLiveProc = 386, kControlPopupButtonProc = 400,
        kControlRadioGroupProc = 416;
    refCon: longint;
    title: pstring;
};

type 'CTL#' {
    array controls { controlID: integer; };
};

type 'xBTN' {
    fill bit[6];
    defaultButton: boolean notDefault, defaultButton;
    cancelButton: boolean notCancel, cancelButton;
};

type 'PBAR' {
    indeterminate: byte determinate, indeterminate;
};

type 'CNTS' {
    size: native integer normalSize, smallSize;
};

type 'CNTF' {
    flags: native unsigned integer
        useFont = 1, useFace = 2, useSize = 4, useForeColor = 8, useBackColor = 16, useMode = 32, useJust = 64,
        useAll = 255, addFontSize = 256;
    font: native integer
        systemFont = 0, bigSystemFont = -1, smallSystemFont = -2, smallBoldSystemFont = -3,
        monacoFont = 12345, genevaFont = 12346;
    size: native integer;
    style: native integer
        plain = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 16, condense = 32, extend = 64;
    mode: native integer srcCopy = 0, srcOr = 1;
    just: native integer left = 0, center = 1, right = -1, teJustLeft = 0, teJustCenter = 1, teJustRight = -1;
    foreRed: native unsigned integer; foreGreen: native unsigned integer; foreBlue: native unsigned integer;
    backRed: native unsigned integer; backGreen: native unsigned integer; backBlue: native unsigned integer;
};

type 'TDEx' {
    flags: native unsigned longint noOptions = 0, locked = 1, addressOnly = 0x40000000, unicode = 0x80000000;
    maximum: native longint unlimited = 0;
};

type 'CNTH' {
    minimumKind: native literal longint none = 'none', string = 'pstr', stringResource = 'str ', stringList = 'str#';
    maximumKind: native literal longint none = 'none', string = 'pstr', stringResource = 'str ', stringList = 'str#';
    minimumID: native integer;
    maximumID: native integer;
    minimumIndex: native integer;
    maximumIndex: native integer;
    minimumText: pstring;
    maximumText: pstring;
};
)";

constexpr char kMenusAndText[] = R"(
type 'MENU' {
    menuID: integer;
    fill word[2];
    procID: integer textMenuProc = 0;
    fill word;
    items: unsigned hex bitstring[31] allEnabled = 0x7FFFFFFF;
    menu: boolean disabled, enabled;
    title: pstring apple = "\0x14";
    array menuItems {
        text: pstring;
        icon: byte noIcon;
        key: char noKey = "", hierarchicalMenu = "\0x1B";
        mark: char noMark = "", check = "\0x12";
        style: unsigned byte
            plain = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 16, condense = 32, extend = 64;
    };
    byte = 0;
};

type 'MBAR' {
    integer = $$CountOf(menus);
    array menus { menuID: integer; };
};

type 'STR ' {
    text: pstring;
};

type 'STR#' {
    integer = $$CountOf(strings);
    array strings { text: pstring; };
};

type 'vers' {
    major: hex byte;
    minor: hex byte;
    stage: hex byte development = 0x20, alpha = 0x40, beta = 0x60, final = 0x80, release = 0x80;
    nonRelease: hex byte;
    region: integer
        verUS = 0, verFrance = 1, verBritain = 2, verGermany = 3, verItaly = 4, verNetherlands = 5,
        verFrBelgiumLux = 6, verSweden = 7, verSpain = 8, verDenmark = 9, verPortugal = 10, verFrCanada = 11,
        verNorway = 12, verIsrael = 13, verJapan = 14, verAustralia = 15, verFinland = 17, verFrSwiss = 18,
        verGrSwiss = 19, verGreece = 20, verIceland = 21, verMalta = 22, verCyprus = 23, verTurkey = 24;
    short: pstring;
    long: pstring;
};

type 'TEXT' {
    text: string;
};

type 'BOOL' {
    value: byte false, true;
};

type 'RECT' {
    top: native integer; left: native integer; bottom: native integer; right: native integer;
};

type 'RGB ' {
    red: native unsigned integer; green: native unsigned integer; blue: native unsigned integer;
};
)";

std::string Shared(std::string inText)
{
    for (const auto& shared : kShared)
        for (size_t at; (at = inText.find(shared.name)) != std::string::npos;)
            inText.replace(at, std::strlen(shared.name), shared.text);
    return inText;
}

} // namespace

const SourceText& BuiltinTypeText()
{
    static const SourceText text{ "built-in types",
                                  Shared(std::string(kWindows) + kControls + kMenusAndText + kFinderTypes +
                                         kPictureTypes + kColorTypes + kListTypes) };
    return text;
}

namespace {

TypeTable Declare(const SourceText& inText)
{
    const std::vector<Token> tokens = Tokenize(inText);
    TokenCursor cursor(tokens, { &inText, inText.text.size() });
    TypeTable types;
    while (cursor.AcceptWord("type"))
        ReadTypeDeclaration(cursor, {}, &types);
    if (!cursor.AtEnd())
        cursor.Fail("'type'");
    return types;
}

} // namespace

const TypeTable& BuiltinTypes()
{
    static const TypeTable types = Declare(BuiltinTypeText());
    return types;
}

} // namespace lampblack::rsrc
