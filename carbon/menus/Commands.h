// Walking all menus: those of the bar, the application's, and what opens from them.
#ifndef LAMPBLACK_MENUS_COMMANDS_H
#define LAMPBLACK_MENUS_COMMANDS_H

#include "MenuBar.h"

#include <algorithm>

namespace lampblack::menus {

// Calls inVisit(menu, item number) for each item of a menu, or of all menus when it is null, submenus after
// the item that opens them; stops as soon as a call answers true. Menus that contain themselves are walked
// once.
template <class Visit>
class Walk {
public:
    explicit Walk(Visit inVisit) : fVisit(inVisit) {}

    bool Run(MenuRef inMenu)
    {
        if (inMenu)
            return One(inMenu);
        const Bar bar = TheBar();
        for (MenuRef menu : bar.menus)
            if (One(menu))
                return true;
        for (MenuRef menu : bar.hierarchical)
            if (One(menu))
                return true;
        return One(ApplicationMenu());
    }

private:
    bool One(MenuRef inMenu)
    {
        if (!Find(inMenu) || std::find(fSeen.begin(), fSeen.end(), inMenu) != fSeen.end())
            return false;
        fSeen.push_back(inMenu);
        for (MenuItemIndex item = 1; item <= CountMenuItems(inMenu); ++item) {
            if (fVisit(inMenu, item))
                return true;
            const MenuItem* record = FindItem(inMenu, item);
            if (record && One(SubmenuOf(*record)))
                return true;
        }
        return false;
    }

    Visit fVisit;
    std::vector<MenuRef> fSeen;
};

} // namespace lampblack::menus

#endif
