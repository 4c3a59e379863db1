// Universal procedure pointers are the procedures themselves here: making one is taking its address.
#include <Carbon/Appearance.h>

ThemeTabTitleDrawUPP NewThemeTabTitleDrawUPP(ThemeTabTitleDrawProcPtr inProc)
{
    return inProc;
}

ThemeEraseUPP NewThemeEraseUPP(ThemeEraseProcPtr inProc)
{
    return inProc;
}

ThemeButtonDrawUPP NewThemeButtonDrawUPP(ThemeButtonDrawProcPtr inProc)
{
    return inProc;
}

WindowTitleDrawingUPP NewWindowTitleDrawingUPP(WindowTitleDrawingProcPtr inProc)
{
    return inProc;
}

MenuTitleDrawingUPP NewMenuTitleDrawingUPP(MenuTitleDrawingProcPtr inProc)
{
    return inProc;
}

MenuItemDrawingUPP NewMenuItemDrawingUPP(MenuItemDrawingProcPtr inProc)
{
    return inProc;
}

void DisposeThemeTabTitleDrawUPP(ThemeTabTitleDrawUPP) {}
void DisposeThemeEraseUPP(ThemeEraseUPP) {}
void DisposeThemeButtonDrawUPP(ThemeButtonDrawUPP) {}
void DisposeWindowTitleDrawingUPP(WindowTitleDrawingUPP) {}
void DisposeMenuTitleDrawingUPP(MenuTitleDrawingUPP) {}
void DisposeMenuItemDrawingUPP(MenuItemDrawingUPP) {}
