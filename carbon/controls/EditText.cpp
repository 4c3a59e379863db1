// Edit text and password fields, on a TextEdit record. A password field keeps its text aside and shows
// bullets.
#include "controls/EditText.h"

#include "controls/ControlText.h"
#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "controls/Idling.h"
#include "foundation/MacRoman.h"

#include <Carbon/Appearance.h>
#include <Carbon/CarbonEvents.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Scrap.h>
#include <Host.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

constexpr char kBullet = (char)0xA5;
constexpr long kLongest = 32767; // the most that a TextEdit record holds
constexpr SInt16 kWide = 16000;  // pixels, the line of a field that scrolls sideways

enum : SInt16 {
    kHomeKey = 1,
    kEnterKey = 3,
    kEndKey = 4,
    kBackspaceKey = 8,
    kTabKey = 9,
    kReturnKey = 13,
    kEscapeKey = 27,
    kLeftArrowKey = 28,
    kDownArrowKey = 31,
    kForwardDeleteKey = 127
};

SInt16 Metric(ThemeMetric inMetric)
{
    SInt32 value = 0;
    GetThemeMetric(inMetric, &value);
    return (SInt16)value;
}

bool IsMovement(SInt16 inCharacter)
{
    return (inCharacter >= kLeftArrowKey && inCharacter <= kDownArrowKey) || inCharacter == kHomeKey ||
           inCharacter == kEndKey;
}

// Left to the window: they press buttons, move the focus or cancel.
bool IsWindowsKey(SInt16 inCharacter, UInt32 inModifiers)
{
    return inCharacter == kReturnKey || inCharacter == kEnterKey || inCharacter == kEscapeKey ||
           inCharacter == kTabKey || (inCharacter == '.' && (inModifiers & cmdKey));
}

} // namespace

// The port as the record wants it while it draws: its font, black on white, nothing outside of the field.
class EditText::StEditing {
public:
    [[nodiscard]] explicit StEditing(EditText& inText)
        : fDrawing(inText.fControl), fClip(inText.fControl.bounds)
    {
        SetThemeBackground(kThemeBrushWhite, kScreenDepth, true);
        UseControlFont(inText.fControl);
        UseControlTextColor(inText.fControl, kThemeTextColorDialogActive, kThemeTextColorDialogInactive);
    }

private:
    StDrawing fDrawing;
    StClip fClip;
};

EditText::~EditText()
{
    if (fText)
        TEDispose(fText);
}

OSStatus EditText::Initialize(const NewControlInfo&)
{
    UseControlFont(fControl);
    fText = TENew(&fControl.bounds, &fControl.bounds);
    if (!fText)
        return memFullErr;
    TEAutoView(true, fText);
    Lay();
    return noErr;
}

// One line scrolls sideways when the field is too low for a second one.
bool EditText::IsOneLine() const
{
    return fSingleLine || fControl.bounds.bottom - fControl.bounds.top < 2 * (**fText).lineHeight;
}

SInt16 EditText::Justification() const
{
    return fControl.font.flags & kControlUseJustMask ? fControl.font.just : (SInt16)teJustLeft;
}

// Gives the record its font, rectangles and alignment again.
void EditText::Lay()
{
    StDrawing drawing(fControl);
    UseControlFont(fControl);
    CGrafPtr port = GetWindowPort(fControl.window);
    FontInfo info;
    GetFontInfo(&info);
    TERec& record = **fText;
    record.txFont = GetPortTextFont(port);
    record.txSize = GetPortTextSize(port);
    record.txFace = GetPortTextFace(port);
    record.lineHeight = (short)(info.ascent + info.descent + info.leading);
    record.fontAscent = info.ascent;
    record.viewRect = fControl.bounds;
    record.destRect = fControl.bounds;
    record.just = Justification();
    const bool oneLine = IsOneLine();
    record.crOnly = oneLine ? -1 : 0;
    if (oneLine && (record.just == teJustLeft || record.just == teForceLeft))
        record.destRect.right = (short)std::min(record.destRect.left + kWide, 32767);
    TECalText(fText);
    Reveal();
}

Rect EditText::FrameRect() const
{
    Rect frame = fControl.bounds;
    const SInt16 white = Metric(kThemeMetricEditTextWhitespace);
    InsetRect(&frame, -white, -white);
    return frame;
}

Rect EditText::StructureBounds() const
{
    Rect bounds = FrameRect();
    const SInt16 outset =
        std::max(Metric(kThemeMetricEditTextFrameOutset), Metric(kThemeMetricFocusRectOutset));
    InsetRect(&bounds, -outset, -outset);
    return bounds;
}

void EditText::Draw(ControlPartCode)
{
    const Rect frame = FrameRect();
    const bool usable = IsUsable(fControl);
    SyncCaret();
    SetThemeBackground(kThemeBrushWhite, kScreenDepth, true);
    EraseRect(&frame);
    DrawThemeEditTextFrame(&frame, usable ? kThemeStateActive : kThemeStateInactive);
    if (fCaretOn)
        DrawThemeFocusRect(&frame, true);
    StClip clip(fControl.bounds);
    UseControlFont(fControl);
    UseControlTextColor(fControl, kThemeTextColorDialogActive, kThemeTextColorDialogInactive);
    CGrafPtr here = nullptr; // the window's port, or one that the control is pictured in
    GetPort(&here);
    const CGrafPtr own = (**fText).inPort;
    (**fText).inPort = here;
    TEUpdate(&fControl.bounds, fText);
    (**fText).inPort = own;
}

ControlPartCode EditText::HitTest(Point inPoint) const
{
    const Rect frame = FrameRect();
    return PtInRect(inPoint, &frame) ? (ControlPartCode)kControlEditTextPart
                                     : (ControlPartCode)kControlNoPart;
}

ControlPartCode EditText::Track(const TrackInfo& inInfo)
{
    StPin pin(&fControl);
    Point where = inInfo.where;
    const Rect& bounds = fControl.bounds; // a click in the white margin is one beside the text
    where.h = std::clamp(where.h, bounds.left, (SInt16)std::max(bounds.right - 1, (int)bounds.left));
    where.v = std::clamp(where.v, bounds.top, (SInt16)std::max(bounds.bottom - 1, (int)bounds.top));
    StEditing editing(*this);
    TEClick(where, (inInfo.modifiers & shiftKey) != 0, fText);
    if (pin.Alive())
        Reveal();
    return kControlEditTextPart;
}

ControlFocusPart EditText::Focus(ControlFocusPart inPart)
{
    if (inPart == kControlEditTextPart)
        return kControlEditTextPart;
    const bool steps = inPart == kControlFocusNextPart || inPart == kControlFocusPrevPart;
    const bool has = fControl.owner->focus == &fControl;
    return steps && !has ? (ControlFocusPart)kControlEditTextPart : (ControlFocusPart)kControlFocusNoPart;
}

void EditText::FocusChanged(bool inByTab)
{
    if (inByTab && fControl.owner->focus == &fControl)
        TESetSelect(0, kLongest, fText);
    UpdateCaret();
}

void EditText::StateChanged()
{
    UpdateCaret();
}

// The caret, or the selection, shows while the field has the focus of an active window.
void EditText::UpdateCaret()
{
    if (SyncCaret())
        RedrawArea(*fControl.owner, StructureBounds());
}

bool EditText::SyncCaret()
{
    const bool wanted = HasFocus(fControl) && IsEnabled(fControl) && CanDraw(fControl);
    if (wanted)
        StartIdling(fControl, std::max<UInt32>(GetCaretTime(), 1) / 60.0);
    if (wanted == fCaretOn)
        return false;
    fCaretOn = wanted;
    StEditing editing(*this);
    if (wanted) {
        TEActivate(fText);
    } else {
        TEDeactivate(fText);
        StopIdling(fControl);
    }
    TellInputMethod();
    return true;
}

void EditText::TellInputMethod() const
{
    const auto& machine = host::Machine();
    if (!machine.setTextInputArea)
        return;
    Rect area = { 0, 0, 0, 0 };
    if (fCaretOn) {
        StDrawing drawing(fControl);
        Point topLeft = { fControl.bounds.top, fControl.bounds.left };
        LocalToGlobal(&topLeft);
        area = fControl.bounds;
        OffsetRect(&area, (short)(topLeft.h - area.left), (short)(topLeft.v - area.top));
    }
    machine.setTextInputArea(area);
}

void EditText::Idle()
{
    if (!fCaretOn)
        return;
    StEditing editing(*this);
    TEIdle(fText);
}

void EditText::BoundsChanged()
{
    Lay();
}
void EditText::FontChanged()
{
    Lay();
}

// Scrolls a field of one line so that the end of the selection shows, and never further than the text
// reaches.
void EditText::Reveal()
{
    TESelView(fText);
    if (!IsOneLine())
        return;
    const TERec& record = **fText;
    const Rect view = record.viewRect;
    const SInt16 caret = TEGetPoint(record.selEnd, fText).h;
    const SInt16 end = TEGetPoint(record.teLength, fText).h;
    int scroll = 0;
    if (caret < view.left)
        scroll = view.left - caret;
    else if (caret >= view.right)
        scroll = view.right - 1 - caret;
    else if (record.destRect.left < view.left && end < view.right - 1)
        scroll = std::min(view.right - 1 - end, view.left - record.destRect.left);
    if (scroll)
        TEScroll((short)scroll, 0, fText);
}

// --- Text

std::string EditText::ShownText() const
{
    const TERec& record = **fText;
    return record.hText && record.teLength > 0 ? std::string(*record.hText, (size_t)record.teLength)
                                               : std::string();
}

// Somebody who has the record may have shortened its text behind our back.
void EditText::SyncPassword()
{
    if (IsPassword())
        fPassword.resize((size_t)std::max<short>((**fText).teLength, 0), kBullet);
}

void EditText::SetText(std::string_view inText)
{
    inText = inText.substr(0, (size_t)kLongest);
    fUndo = {};
    fPassword = IsPassword() ? std::string(inText) : std::string();
    const std::string shown = IsPassword() ? std::string(inText.size(), kBullet) : std::string(inText);
    StDrawing drawing(fControl);
    StClip nothing(Rect{ 0, 0, 0, 0 }); // the caller draws
    TESetText(shown.data(), (long)shown.size(), fText);
    Lay();
}

// Replaces the selection by a text, as typing and pasting do.
void EditText::Replace(std::string_view inText)
{
    const TERec& record = **fText;
    const size_t start = (size_t)record.selStart, length = (size_t)(record.selEnd - record.selStart);
    const size_t rest = (size_t)record.teLength - length;
    inText = inText.substr(0, (size_t)kLongest - std::min((size_t)kLongest, rest));
    SyncPassword();
    if (length)
        TEDelete(fText);
    if (IsPassword())
        fPassword.replace(std::min(start, fPassword.size()), length, inText);
    const std::string shown = IsPassword() ? std::string(inText.size(), kBullet) : std::string(inText);
    TEInsert(shown.data(), (long)shown.size(), fText);
    const long caret = (long)(start + inText.size());
    TESetSelect(caret, caret, fText);
    Reveal();
}

void EditText::DeletePassword(SInt16 inCharacter)
{
    SyncPassword();
    const TERec& record = **fText;
    size_t from = (size_t)record.selStart, count = (size_t)(record.selEnd - record.selStart);
    if (count == 0 && inCharacter == kBackspaceKey && from > 0) {
        --from;
        count = 1;
    } else if (count == 0 && inCharacter == kForwardDeleteKey) {
        count = 1;
    }
    if (from < fPassword.size())
        fPassword.erase(from, count);
}

void EditText::KeepForUndo(UndoRun inRun)
{
    if (inRun == UndoRun::Typing && fUndo.run == UndoRun::Typing)
        return;
    const TERec& record = **fText;
    fUndo = { inRun, IsPassword() ? fPassword : ShownText(), record.selStart, record.selEnd };
}

void EditText::Undo()
{
    if (fUndo.run == UndoRun::None)
        return;
    const TERec& record = **fText;
    UndoState redo = { UndoRun::Undone, IsPassword() ? fPassword : ShownText(), record.selStart,
                       record.selEnd };
    const UndoState undo = fUndo;
    SetText(undo.text);
    TESetSelect(undo.selStart, undo.selEnd, fText);
    fUndo = redo;
    RedrawErased(fControl);
}

// --- Keys and commands

ControlPartCode EditText::Key(SInt16 inKeyCode, SInt16 inCharCode, EventModifiers inModifiers)
{
    StPin pin(&fControl);
    if (fFilter && fFilter(fControl.Ref(), &inKeyCode, &inCharCode, &inModifiers) != kControlKeyFilterPassKey)
        return kControlEditTextPart;
    if (!pin.Alive())
        return kControlNoPart;
    if ((inModifiers & cmdKey) && !IsMovement(inCharCode))
        return CommandKey(inCharCode);
    return Type(inCharCode);
}

ControlPartCode EditText::CommandKey(SInt16 inCharCode)
{
    const UInt32 command = CommandForKey((char)inCharCode);
    if (!command || !CanDo(command))
        return kControlNoPart;
    Do(command);
    return kControlEditTextPart;
}

ControlPartCode EditText::Type(SInt16 inCharCode)
{
    const UInt8 character = (UInt8)inCharCode;
    const bool moves = IsMovement(character);
    const bool deletes = character == kBackspaceKey || character == kForwardDeleteKey;
    const bool breaks = character == kReturnKey && !IsOneLine();
    if (!moves && !deletes && !breaks && character < ' ')
        return kControlNoPart;
    StEditing editing(*this);
    if (moves) {
        TEKey(character, fText);
        Reveal();
        fUndo.run = fUndo.run == UndoRun::Typing ? UndoRun::Edited : fUndo.run;
        return kControlEditTextPart;
    }
    if (fLocked)
        return kControlEditTextPart;
    KeepForUndo(UndoRun::Typing);
    if (deletes) {
        if (IsPassword())
            DeletePassword(character);
        TEKey(character, fText);
        Reveal();
    } else {
        const char typed = (char)character;
        Replace({ &typed, 1 });
    }
    return kControlEditTextPart;
}

OSStatus EditText::RawKey(EventRef inEvent)
{
    UInt32 keyCode = 0, modifiers = 0;
    char character = 0;
    GetEventParameter(inEvent, kEventParamKeyCode, typeUInt32, nullptr, sizeof keyCode, nullptr, &keyCode);
    GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers, nullptr,
                      &modifiers);
    if (GetEventParameter(inEvent, kEventParamKeyMacCharCodes, typeChar, nullptr, sizeof character, nullptr,
                          &character) != noErr)
        return eventNotHandledErr;
    if (IsWindowsKey((UInt8)character, modifiers))
        return eventNotHandledErr;
    const ControlPartCode part =
        HandleControlKey(fControl.Ref(), (SInt16)keyCode, (UInt8)character, (EventModifiers)modifiers);
    return part == kControlNoPart ? (OSStatus)eventNotHandledErr : (OSStatus)noErr;
}

// Text that no key of its own stands behind, from an input method.
OSStatus EditText::TextInput(EventRef inEvent)
{
    UniChar text[256];
    ByteCount size = 0;
    UInt32 modifiers = 0;
    GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers, nullptr,
                      &modifiers);
    if (modifiers & cmdKey) // a command that nobody took; it is no text
        return eventNotHandledErr;
    if (GetEventParameter(inEvent, kEventParamTextInputSendText, typeUnicodeText, nullptr, sizeof text, &size,
                          text) != noErr)
        return eventNotHandledErr;
    const std::u16string_view units((const char16_t*)text,
                                    std::min<size_t>(size, sizeof text) / sizeof(UniChar));
    const std::string bytes = foundation::MacRomanFromUtf8(foundation::Utf8FromUtf16(units));
    StPin pin(&fControl);
    bool took = false;
    for (size_t i = 0; pin.Alive() && i < bytes.size(); ++i)
        if (!IsWindowsKey((UInt8)bytes[i], 0))
            took |= HandleControlKey(fControl.Ref(), 0, (UInt8)bytes[i], 0) != kControlNoPart;
    return took ? (OSStatus)noErr : (OSStatus)eventNotHandledErr;
}

UInt32 EditText::CommandForKey(char inKey)
{
    switch (inKey) {
    case 'x': return kHICommandCut;
    case 'c': return kHICommandCopy;
    case 'v': return kHICommandPaste;
    case 'a': return kHICommandSelectAll;
    case 'z': return kHICommandUndo;
    default: return 0;
    }
}

bool EditText::CanDo(UInt32 inCommand) const
{
    const TERec& record = **fText;
    const bool selected = record.selEnd > record.selStart;
    switch (inCommand) {
    case kHICommandCut: return selected && !fLocked && !IsPassword();
    case kHICommandCopy: return selected && !IsPassword();
    case kHICommandClear: return selected && !fLocked;
    case kHICommandPaste: return !fLocked;
    case kHICommandSelectAll: return record.teLength > 0;
    case kHICommandUndo: return fUndo.run != UndoRun::None && !fLocked;
    default: return false;
    }
}

void EditText::Do(UInt32 inCommand)
{
    StPin pin(&fControl);
    {
        StEditing editing(*this);
        switch (inCommand) {
        case kHICommandCopy: Copy(); return;
        case kHICommandSelectAll: TESetSelect(0, kLongest, fText); return;
        case kHICommandCut: Copy(); [[fallthrough]];
        case kHICommandClear:
            KeepForUndo(UndoRun::Edited);
            Replace({});
            break;
        case kHICommandPaste: Paste(); break;
        case kHICommandUndo: Undo(); break;
        default: return;
        }
    }
    if (fValidate && pin.Alive())
        fValidate(fControl.Ref());
}

void EditText::Copy()
{
    TECopy(fText);
    ClearCurrentScrap();
    TEToScrap();
}

void EditText::Paste()
{
    TEFromScrap();
    const Handle scrap = TEGetScrapHandle();
    const long length = TEGetScrapLength();
    if (!scrap || length <= 0)
        return;
    std::string text(*scrap, (size_t)std::min<long>(length, GetHandleSize(scrap)));
    if (IsOneLine())
        text.resize(std::min(text.find_first_of("\r\n"), text.size()));
    KeepForUndo(UndoRun::Edited);
    Replace(text);
}

OSStatus EditText::Command(EventRef inEvent)
{
    HICommand command = {};
    if (GetEventParameter(inEvent, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                          &command) != noErr)
        return eventNotHandledErr;
    if (GetEventKind(inEvent) == kEventCommandUpdateStatus)
        return UpdateStatus(command);
    if (!CanDo(command.commandID))
        return eventNotHandledErr;
    Do(command.commandID);
    return noErr;
}

OSStatus EditText::UpdateStatus(const HICommand& inCommand) const
{
    switch (inCommand.commandID) {
    case kHICommandCut:
    case kHICommandCopy:
    case kHICommandPaste:
    case kHICommandClear:
    case kHICommandSelectAll:
    case kHICommandUndo: break;
    default: return eventNotHandledErr;
    }
    if (!(inCommand.attributes & kHICommandFromMenu))
        return eventNotHandledErr;
    if (CanDo(inCommand.commandID))
        EnableMenuItem(inCommand.menu.menuRef, inCommand.menu.menuItemIndex);
    else
        DisableMenuItem(inCommand.menu.menuRef, inCommand.menu.menuItemIndex);
    return noErr;
}

bool EditText::SetCursor(Point inPoint, EventModifiers)
{
    return PtInRect(inPoint, &fControl.bounds) && IsUsable(fControl) &&
           SetThemeCursor(kThemeIBeamCursor) == noErr;
}

OSErr EditText::BestRect(Rect* outRect, SInt16* outBaseLine)
{
    *outRect = fControl.bounds;
    outRect->bottom = (SInt16)(outRect->top + (**fText).lineHeight);
    *outBaseLine = (SInt16)((**fText).fontAscent - (**fText).lineHeight);
    return noErr;
}

// --- Data

namespace {

EditText& Self(Kind& inKind)
{
    return static_cast<EditText&>(inKind);
}

OSErr GetTextData(Kind& inKind, void* outData, Size inSize)
{
    return CopyOut(Self(inKind).ShownText(), outData, inSize);
}
Size TextDataSize(Kind& inKind)
{
    return (Size)Self(inKind).ShownText().size();
}
OSErr SetTextData(Kind& inKind, const void* inData, Size inSize)
{
    Self(inKind).SetText({ (const char*)inData, (size_t)inSize });
    return noErr;
}
Size PasswordSize(Kind& inKind)
{
    return (Size)Self(inKind).Password().size();
}
OSErr GetPassword(Kind& inKind, void* outData, Size inSize)
{
    return CopyOut(Self(inKind).Password(), outData, inSize);
}
Size HandleSize(Kind&)
{
    return sizeof(TEHandle);
}
OSErr GetHandle(Kind& inKind, void* outData, Size inSize)
{
    if (inSize < (Size)sizeof(TEHandle))
        return errDataSizeMismatch;
    const TEHandle text = Self(inKind).Text();
    std::memcpy(outData, &text, sizeof text);
    return noErr;
}
Size SelectionSize(Kind&)
{
    return sizeof(ControlEditTextSelectionRec);
}
OSErr GetSelection(Kind& inKind, void* outData, Size inSize)
{
    if (inSize < (Size)sizeof(ControlEditTextSelectionRec))
        return errDataSizeMismatch;
    const TERec& record = **Self(inKind).Text();
    const ControlEditTextSelectionRec selection = { record.selStart, record.selEnd };
    std::memcpy(outData, &selection, sizeof selection);
    return noErr;
}
OSErr SetSelection(Kind& inKind, const void* inData, Size inSize)
{
    if (inSize != (Size)sizeof(ControlEditTextSelectionRec))
        return errDataSizeMismatch;
    ControlEditTextSelectionRec selection;
    std::memcpy(&selection, inData, sizeof selection);
    Self(inKind).Select(selection.selStart, selection.selEnd);
    return noErr;
}

} // namespace

std::string EditText::Password()
{
    SyncPassword();
    return IsPassword() ? fPassword : ShownText();
}

// A negative end is the end of the text.
void EditText::Select(long inStart, long inEnd)
{
    StEditing editing(*this);
    TESetSelect(std::max(inStart, 0L), inEnd < 0 ? kLongest : inEnd, fText);
    Reveal();
}

std::span<const DataField> EditText::Fields() const
{
    static constexpr DataField kFields[] = {
        { kControlEditTextTextTag, TextDataSize, GetTextData, SetTextData },
        { kControlEditTextPasswordTag, PasswordSize, GetPassword, SetTextData },
        { kControlEditTextTEHandleTag, HandleSize, GetHandle, nullptr },
        { kControlEditTextSelectionTag, SelectionSize, GetSelection, SetSelection },
        FieldFor<EditText, Boolean, &EditText::fLocked>(kControlEditTextLockedTag),
        FieldFor<EditText, Boolean, &EditText::fSingleLine>(kControlEditTextSingleLineTag),
        FieldFor<EditText, ControlKeyFilterUPP, &EditText::fFilter>(kControlEditTextKeyFilterTag),
        FieldFor<EditText, ControlEditTextValidationUPP, &EditText::fValidate>(
            kControlEditTextValidationProcTag),
    };
    return kFields;
}

void EditText::DataChanged(ResType inTag)
{
    if (inTag == kControlEditTextSingleLineTag)
        Lay();
}

std::unique_ptr<Kind> NewEditText(Control& c)
{
    return std::make_unique<EditText>(c);
}

} // namespace lampblack::controls
