// The menus that hang open on the screen while one is chosen from, the last one in front.
#ifndef LAMPBLACK_MENUS_OPENMENUS_H
#define LAMPBLACK_MENUS_OPENMENUS_H

#include "MenuLayout.h"

namespace lampblack::menus {

struct OpenMenu {
    std::vector<MenuRef> menus; // retained while they are open
    Layout layout;
    WindowRef surface = nullptr;
    Rect bounds = { 0, 0, 0, 0 }; // global
    int selected = -1;            // a row
    int scrolled = 0;             // pixels of the layout above the surface
    UInt32 context = 0;

    // A menu taller than the screen has an arrow at each end that hides more of it.
    int Overflow() const { return layout.height - (bounds.bottom - bounds.top); }
    bool HasArrowAbove() const { return scrolled > 0; }
    bool HasArrowBelow() const { return scrolled < Overflow(); }
    Rect RowArea() const; // what is left for rows, relative to the menu's top left
};

class OpenMenus {
public:
    ~OpenMenus() { CloseTo(0); }

    // Opens menus shown as one, the top left of their layout at the point. They are moved to stay on the
    // screen; a menu taller than the screen scrolls. Answers false when there is nothing to open.
    bool Open(const std::vector<MenuRef>& inMenus, Point inTopLeft, UInt32 inContext, short inLeastWidth = 0);
    void CloseTo(size_t inCount); // the menus beyond the first inCount

    size_t Count() const { return fOpen.size(); }
    OpenMenu& At(size_t inIndex) { return fOpen[inIndex]; }
    OpenMenu& Last() { return fOpen.back(); }

    // The frontmost open menu under a point; -1 for none.
    int MenuAt(Point inWhere) const;
    int RowAt(const OpenMenu& inMenu, Point inWhere) const;  // -1 for none
    Rect RowBounds(const OpenMenu& inMenu, int inRow) const; // global

    // Lights a row of a menu (-1: none) and closes the menus opened from another.
    void Select(size_t inMenu, int inRow);
    // Opens the submenu of the lit row of a menu. Answers whether there is one.
    bool OpenSubmenu(size_t inMenu);
    // Whether a point is on an arrow of the frontmost menu, or farther out on the same side.
    bool IsOnArrow(Point inWhere) const;
    void ScrollAt(Point inWhere); // by one row
    void Reveal(int inRow);       // of the frontmost menu
    void FlashSelected(size_t inMenu, bool inLit);

private:
    int ArrowAt(Point inWhere) const; // 1 below, -1 above, 0 none
    int PlaceAfter(const OpenMenu& inMenu, int inScrolled) const;
    int PlaceBefore(const OpenMenu& inMenu, int inScrolled) const;
    void ScrollTo(OpenMenu& inMenu, int inScrolled);
    void Draw(OpenMenu& inMenu);
    void DrawOne(OpenMenu& inMenu, int inRow, bool inSelected);

    std::vector<OpenMenu> fOpen;
};

bool CanChoose(const Row& inRow);

} // namespace lampblack::menus

#endif
