// Savers of the current port, world, pen and colours.
#include "graphics/StateSavers.h"

StPortSaver::StPortSaver()
{
    GetPort(&fPort);
}

StPortSaver::StPortSaver(WindowRef inWindow) : StPortSaver()
{
    if (inWindow)
        SetPortWindowPort(inWindow);
}

StPortSaver::StPortSaver(CGrafPtr inPort) : StPortSaver()
{
    if (inPort)
        ::SetPort(inPort);
}

StPortSaver::StPortSaver(ControlRef inControl) : StPortSaver()
{
    if (inControl)
        SetPortWindowPort(GetControlOwner(inControl));
}

StPortSaver::StPortSaver(ListRef inList) : StPortSaver()
{
    if (inList)
        ::SetPort(GetListPort(inList));
}

StPortSaver::~StPortSaver()
{
    Restore();
}

void StPortSaver::Restore() const
{
    if (fPort)
        ::SetPort(fPort);
}

StGWorldSaver::StGWorldSaver()
{
    GetGWorld(&fWorld, &fDevice);
}

StGWorldSaver::StGWorldSaver(GWorldPtr inWorld, GDHandle inDevice) : StGWorldSaver()
{
    if (inWorld)
        SetGWorld(inWorld, inDevice);
}

StGWorldSaver::~StGWorldSaver()
{
    Restore();
}

void StGWorldSaver::Restore() const
{
    if (fWorld)
        SetGWorld(fWorld, fDevice);
}

void StGWorldSaver::SetSavedGWorld(GWorldPtr inWorld, GDHandle inDevice)
{
    fWorld = inWorld;
    fDevice = inDevice;
}

StColorState::StColorState()
{
    Save();
}

StColorState::~StColorState()
{
    Restore();
}

void StColorState::Save()
{
    GetForeColor(&fForeground);
    GetBackColor(&fBackground);
}

void StColorState::Restore() const
{
    RGBForeColor(&fForeground);
    RGBBackColor(&fBackground);
}

void StColorState::Normalize()
{
    ForeColor(blackColor);
    BackColor(whiteColor);
}

StPenState::StPenState()
{
    Save();
    PenNormal();
}

StPenState::StPenState(SInt16 inWidth, SInt16 inHeight) : StPenState()
{
    PenSize(inWidth, inHeight);
}

StPenState::~StPenState()
{
    Restore();
}

void StPenState::Save()
{
    GetPenState(&fState);
}

void StPenState::Restore() const
{
    SetPenState(&fState);
}

void GetTextState(TextState* outState)
{
    if (!outState)
        return;
    CGrafPtr port = nullptr;
    GetPort(&port);
    outState->font = GetPortTextFont(port);
    outState->size = GetPortTextSize(port);
    outState->face = GetPortTextFace(port);
    outState->mode = GetPortTextMode(port);
}

void SetTextState(const TextState* inState)
{
    if (!inState)
        return;
    TextFont(inState->font);
    TextSize(inState->size);
    TextFace(static_cast<StyleParameter>(inState->face));
    TextMode(inState->mode);
}

void SetTextFont(ConstStr255Param inName)
{
    SInt16 font = 0;
    GetFNum(inName, &font);
    TextFont(font);
}
