// Popup buttons: a menu that shows its chosen item, with a title to its left.
#include "controls/ControlText.h"
#include "controls/Drawing.h"
#include "controls/Kind.h"
#include "menus/PopUpMenu.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Menus.h>

#include <algorithm>
#include <utility>

namespace lampblack::controls {

namespace {

// The menu ID of a button whose menu is given to it later.
constexpr SInt32 kNoMenuYet = -12345;

class PopupButton final : public Kind {
public:
    using Kind::Kind;
    ~PopupButton() override { ReleaseOwn(); }
    OSType Code() const override { return kControlKindPopupButton; }
    bool HasSizes() const override { return true; }

    // It is made with the menu's ID for a minimum, the width of the title (-1: as wide as it is) for a
    // maximum and the style of the title for a value.
    OSStatus Initialize(const NewControlInfo& inInfo) override
    {
        fTitleWidth = (SInt16)inInfo.maximum;
        fTitleStyle = (SInt16)inInfo.value;
        fControl.value = 1;
        fControl.minimum = 1;
        fControl.maximum = 1;
        if (inInfo.minimum != kNoMenuYet)
            TakeMenuID((SInt16)inInfo.minimum);
        return noErr;
    }

    void Draw(ControlPartCode) override
    {
        UseControlFont(fControl);
        DrawTitle();
        const Rect button = ButtonRect();
        const ThemeButtonDrawInfo info = { State(), kThemeButtonOff, kThemeAdornmentNone };
        DrawThemeButton(&button, ThemeKind(), &info, nullptr, nullptr, nullptr, 0);
        Rect content = button;
        GetThemeButtonContentBounds(&button, ThemeKind(), &info, &content);
        Str255 text = { 0 };
        if (fMenu)
            GetMenuItemText(fMenu, (MenuItemIndex)fControl.value, text);
        StClip clip(content);
        UseControlTextColor(fControl, kThemeTextColorPopupButtonActive, kThemeTextColorPopupButtonInactive);
        DrawFittedLine({ (const char*)text + 1, text[0] }, content, 0);
    }

    ControlPartCode HitTest(Point inPoint) const override
    {
        return PtInRect(inPoint, &fControl.bounds) ? (ControlPartCode)kControlMenuPart
                                                   : (ControlPartCode)kControlNoPart;
    }
    ControlPartCode DefaultPart() const override { return kControlMenuPart; }

    ControlPartCode Track(const TrackInfo&) override
    {
        if (!fMenu)
            return kControlNoPart;
        StPin pin(&fControl);
        fControl.hilite = kControlMenuPart;
        RedrawErased(fControl);
        const MenuItemIndex chosen = Choose();
        if (!pin.Alive())
            return kControlNoPart;
        fControl.hilite = kControlNoPart;
        if (chosen == 0 || (SInt32)chosen == fControl.value) {
            RedrawErased(fControl);
            return chosen ? (ControlPartCode)kControlMenuPart : (ControlPartCode)kControlNoPart;
        }
        SetControl32BitValue(fControl.Ref(), chosen);
        return kControlMenuPart;
    }

    void ValueChanged() override { Mark(); }

    std::span<const DataField> Fields() const override
    {
        using P = PopupButton;
        static constexpr DataField kFields[] = {
            { kControlPopupButtonMenuHandleTag, MenuSize, GetMenuData, SetMenuData },
            { kControlPopupButtonOwnedMenuRefTag, MenuSize, GetMenuData, SetOwnedMenuData },
            { kControlPopupButtonMenuIDTag, IDSize, GetIDData, SetIDData },
            FieldFor<P, Boolean, &P::fChecksCurrent>(kControlPopupButtonCheckCurrentTag),
        };
        return kFields;
    }
    MenuRef Menu() const override { return fMenu; }
    OSStatus SetMenu(MenuRef inMenu) override
    {
        ReleaseOwn();
        Take(inMenu);
        return noErr;
    }

    OSErr BestRect(Rect* outRect, SInt16* outBaseLine) override
    {
        StDrawing drawing(fControl);
        UseControlFont(fControl);
        SInt32 height = 20;
        GetThemeMetric(fControl.size == kControlSizeSmall ? kThemeMetricSmallPopupButtonHeight
                                                          : kThemeMetricPopupButtonHeight,
                       &height);
        *outRect = fControl.bounds;
        outRect->bottom = (SInt16)(outRect->top + height);
        *outBaseLine = (SInt16)(FontAscent() - (height + FontLineHeight()) / 2);
        return noErr;
    }

private:
    static constexpr SInt16 kTitleGap = 6; // between the title and the button

    ThemeDrawState State() const
    {
        if (!IsActive(fControl))
            return kThemeStateInactive;
        if (!IsEnabled(fControl))
            return kThemeStateUnavailable;
        return fControl.hilite ? kThemeStatePressed : kThemeStateActive;
    }
    ThemeButtonKind ThemeKind() const
    {
        return fControl.size == kControlSizeSmall ? kThemePopupButtonSmall : kThemePopupButton;
    }
    SInt16 TitleWidth() const
    {
        if (fControl.title.empty())
            return fTitleWidth > 0 ? fTitleWidth : (SInt16)0;
        return fTitleWidth > 0 ? fTitleWidth : (SInt16)(WidthOf(fControl.title) + kTitleGap);
    }
    Rect ButtonRect() const
    {
        Rect button = fControl.bounds;
        button.left = (SInt16)std::min<int>(button.left + TitleWidth(), button.right);
        return button;
    }
    void DrawTitle()
    {
        if (fControl.title.empty())
            return;
        Rect area = fControl.bounds;
        area.right = (SInt16)(area.left + TitleWidth() - kTitleGap);
        TextFace((StyleParameter)((fTitleStyle >> 8) & 0x7F));
        UseControlTextColor(fControl, kThemeTextColorPopupLabelActive, kThemeTextColorPopupLabelInactive);
        const SInt16 just = (fTitleStyle & 0xFF) == 1 ? 1 : (fTitleStyle & 0xFF) == 0xFF ? -1 : 0;
        DrawFittedLine(fControl.title, area, just);
        UseControlFont(fControl);
    }

    // The menu goes where its chosen item lies over the button.
    MenuItemIndex Choose()
    {
        StDrawing drawing(fControl);
        UseControlFont(fControl);
        const Rect button = ButtonRect();
        Point corner = { button.top, button.left };
        LocalToGlobal(&corner);
        const bool installed = GetMenuHandle(GetMenuID(fMenu)) == fMenu;
        if (!installed)
            InsertMenu(fMenu, kInsertHierarchicalMenu);
        const MenuRef menu = fMenu;
        const SInt32 result = menus::PopUpMenu(menu, corner, (MenuItemIndex)fControl.value,
                                               (SInt16)(button.right - button.left));
        if (!installed && IsValidMenu(menu))
            DeleteMenu(GetMenuID(menu));
        return (UInt32)result >> 16 ? (MenuItemIndex)(result & 0xFFFF) : (MenuItemIndex)0;
    }

    void TakeMenuID(SInt16 inMenuID)
    {
        if (MenuRef installed = GetMenuHandle(inMenuID)) {
            Take(installed);
            return;
        }
        fOwned = GetMenu(inMenuID);
        if (fOwned && (fControl.procID & kControlPopupUseAddResMenuVariant) && fControl.reference)
            AppendResMenu(fOwned, (ResType)fControl.reference);
        Take(fOwned);
    }
    void Take(MenuRef inMenu)
    {
        fMenu = inMenu;
        fControl.minimum = 1;
        fControl.maximum = inMenu ? (SInt32)CountMenuItems(inMenu) : 1;
        fControl.value = std::clamp<SInt32>(fControl.value, 1, std::max<SInt32>(1, fControl.maximum));
        Mark();
    }
    void ReleaseOwn()
    {
        fMenu = nullptr;
        if (MenuRef owned = std::exchange(fOwned, nullptr))
            DisposeMenu(owned);
    }
    void Mark()
    {
        if (!fMenu || !fChecksCurrent || !IsValidMenu(fMenu))
            return;
        const MenuItemIndex count = CountMenuItems(fMenu);
        for (MenuItemIndex item = 1; item <= count; ++item)
            CheckMenuItem(fMenu, item, item == fControl.value);
    }

    static PopupButton& Self(Kind& inKind) { return static_cast<PopupButton&>(inKind); }
    static Size MenuSize(Kind&) { return sizeof(MenuRef); }
    static Size IDSize(Kind&) { return sizeof(SInt16); }
    static OSErr GetMenuData(Kind& inKind, void* outData, Size inSize)
    {
        if (inSize < (Size)sizeof(MenuRef))
            return errDataSizeMismatch;
        std::memcpy(outData, &Self(inKind).fMenu, sizeof(MenuRef));
        return noErr;
    }
    static OSErr SetMenuData(Kind& inKind, const void* inData, Size inSize)
    {
        if (inSize != (Size)sizeof(MenuRef))
            return errDataSizeMismatch;
        MenuRef menu = nullptr;
        std::memcpy(&menu, inData, sizeof menu);
        return (OSErr)Self(inKind).SetMenu(menu);
    }
    static OSErr SetOwnedMenuData(Kind& inKind, const void* inData, Size inSize)
    {
        const OSErr status = SetMenuData(inKind, inData, inSize);
        if (status == noErr)
            Self(inKind).fOwned = Self(inKind).fMenu;
        return status;
    }
    static OSErr GetIDData(Kind& inKind, void* outData, Size inSize)
    {
        if (inSize < (Size)sizeof(SInt16))
            return errDataSizeMismatch;
        const SInt16 id = Self(inKind).fMenu ? GetMenuID(Self(inKind).fMenu) : (SInt16)0;
        std::memcpy(outData, &id, sizeof id);
        return noErr;
    }
    static OSErr SetIDData(Kind& inKind, const void* inData, Size inSize)
    {
        if (inSize != (Size)sizeof(SInt16))
            return errDataSizeMismatch;
        SInt16 id = 0;
        std::memcpy(&id, inData, sizeof id);
        Self(inKind).ReleaseOwn();
        Self(inKind).TakeMenuID(id);
        return noErr;
    }

    MenuRef fMenu = nullptr;
    MenuRef fOwned = nullptr;
    SInt16 fTitleWidth = 0, fTitleStyle = 0;
    Boolean fChecksCurrent = true;
};

} // namespace

std::unique_ptr<Kind> NewPopupButton(Control& c)
{
    return std::make_unique<PopupButton>(c);
}

} // namespace lampblack::controls
