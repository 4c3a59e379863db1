// Command keys.
#include "Commands.h"
#include "MenuSending.h"
#include "MenuTracking.h"

#include <Carbon/Events.h>
#include <foundation/MacRoman.h>
#include <windows/WindowEvents.h>

namespace lampblack::menus {

namespace {

// What was pressed.
struct Key {
    UInt8 character = 0; // Mac Roman
    UInt16 virtualKey = 0;
    UInt32 modifiers = 0;
    bool byCharacterAlone = false; // MenuKey knows no more
};

struct Match {
    MenuRef menu = nullptr;
    MenuItemIndex item = 0;
};

UInt8 ModifiersAsked(UInt32 inModifiers)
{
    UInt8 asked = inModifiers & cmdKey ? kMenuNoModifiers : kMenuNoCommandModifier;
    asked |= inModifiers & (shiftKey | rightShiftKey) ? kMenuShiftModifier : 0;
    asked |= inModifiers & (optionKey | rightOptionKey) ? kMenuOptionModifier : 0;
    return asked;
}

bool IsLetter(UInt8 inCharacter)
{
    return foundation::MacRomanUpper(inCharacter) >= 'A' && foundation::MacRomanUpper(inCharacter) <= 'Z';
}

// The control key is left alone where it serves as the command key. Shift is needed to type some characters,
// so it counts only with letters.
bool ModifiersMatch(const MenuItem& inItem, const Key& inKey)
{
    if (inKey.byCharacterAlone)
        return !(inItem.modifiers & kMenuNoCommandModifier);
    const bool shiftCounts = inItem.Has(kMenuItemAttrUseVirtualKey) || IsLetter(inKey.character);
    const auto counted = (UInt8)(shiftCounts ? 0x0B : 0x0B & ~kMenuShiftModifier);
    if ((inItem.modifiers & kMenuControlModifier) && !(inKey.modifiers & (controlKey | rightControlKey)))
        return false;
    return (inItem.modifiers & counted) == (ModifiersAsked(inKey.modifiers) & counted);
}

bool KeyMatches(const MenuItem& inItem, const Key& inKey)
{
    if (!inItem.key || inItem.key == hMenuCmd || inItem.Has(kMenuItemAttrHidden))
        return false;
    if (inItem.Has(kMenuItemAttrUseVirtualKey))
        return !inKey.byCharacterAlone && inItem.key == inKey.virtualKey;
    return inKey.character &&
           foundation::MacRomanUpper((UInt8)inItem.key) == foundation::MacRomanUpper(inKey.character);
}

// The first item that matches and can be chosen, or the first that matches when disabled ones count.
bool FindKey(MenuRef inStart, const Key& inKey, MenuEventOptions inOptions, Match* outMatch)
{
    constexpr UInt32 kContext = kMenuContextMenuBar | kMenuContextKeyMatching;
    auto visit = [&](MenuRef menu, MenuItemIndex number) {
        const MenuItem* item = FindItem(menu, number);
        if (!KeyMatches(*item, inKey) || !ModifiersMatch(*item, inKey))
            return false;
        if (!(inOptions & kMenuEventQueryOnly)) {
            PrepareMenu(menu, kContext, true);
            UpdateStatus(menu, number, kContext);
        }
        item = FindItem(menu, number);
        if (!item || (!(inOptions & kMenuEventIncludeDisabledItems) && !IsUsable(menu, *item)))
            return false;
        *outMatch = { menu, number };
        return true;
    };
    return Walk(visit).Run(inStart);
}

bool ReadKey(EventRef inEvent, Key* outKey)
{
    if (GetEventClass(inEvent) != kEventClassKeyboard ||
        (GetEventKind(inEvent) != kEventRawKeyDown && GetEventKind(inEvent) != kEventRawKeyRepeat))
        return false;
    char character = 0;
    UInt32 code = 0;
    windows::GetParameter(inEvent, kEventParamKeyMacCharCodes, typeChar, &character);
    windows::GetParameter(inEvent, kEventParamKeyCode, typeUInt32, &code);
    *outKey = { (UInt8)character, (UInt16)code, windows::EventModifiers(inEvent), false };
    return true;
}

SInt32 Result(const Match& inMatch)
{
    return (SInt32)((UInt32)(UInt16)GetMenuID(inMatch.menu) << 16 | inMatch.item);
}

} // namespace

bool ChooseByKey(EventRef inEvent)
{
    Key key;
    Match match;
    if (!ReadKey(inEvent, &key) || GetEventKind(inEvent) == kEventRawKeyRepeat ||
        !FindKey(nullptr, key, 0, &match))
        return false;
    HiliteTitle(match.menu);
    const OSStatus status = SendCommand(match.menu, match.item, key.modifiers);
    HiliteTitle(nullptr);
    return status != eventNotHandledErr;
}

} // namespace lampblack::menus

using namespace lampblack::menus;

Boolean IsMenuKeyEvent(MenuRef inStartMenu, EventRef inEvent, MenuEventOptions inOptions, MenuRef* outMenu,
                       MenuItemIndex* outItem)
{
    Key key;
    Match match;
    if ((inStartMenu && !Find(inStartMenu)) || !ReadKey(inEvent, &key) ||
        !FindKey(inStartMenu, key, inOptions, &match))
        return false;
    if (outMenu)
        *outMenu = match.menu;
    if (outItem)
        *outItem = match.item;
    return true;
}

// A command that a handler takes is done, and there is nothing left to choose.
SInt32 MenuKey(CharParameter inKey)
{
    const Key key = { (UInt8)inKey, 0, cmdKey, true };
    Match match;
    if (!FindKey(nullptr, key, 0, &match))
        return 0;
    if (SendCommand(match.menu, match.item, cmdKey) != eventNotHandledErr)
        return 0;
    HiliteTitle(match.menu);
    return Result(match);
}

Boolean IsShowContextualMenuEvent(EventRef inEvent)
{
    if (GetEventClass(inEvent) != kEventClassMouse || GetEventKind(inEvent) != kEventMouseDown)
        return false;
    EventMouseButton button = kEventMouseButtonPrimary;
    lampblack::windows::GetParameter(inEvent, kEventParamMouseButton, typeMouseButton, &button);
    return button == kEventMouseButtonSecondary ||
           (lampblack::windows::EventModifiers(inEvent) & controlKey) != 0;
}
