// Scoped savers of drawing state: construct, draw, and the caller's port, world, pen or colours are back
// when the scope ends. They nest last in, first out; a saved null port or world restores nothing.
#ifndef LAMPBLACK_GRAPHICS_STATESAVERS_H
#define LAMPBLACK_GRAPHICS_STATESAVERS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// StPortSaver
//
// Saves the current port and may make another one current: a window's, a port, the port of a control's
// window or of a list. A null argument saves without switching.
class StPortSaver {
public:
    [[nodiscard]] StPortSaver();
    [[nodiscard]] explicit StPortSaver(WindowRef inWindow);
    [[nodiscard]] explicit StPortSaver(CGrafPtr inPort);
    [[nodiscard]] explicit StPortSaver(ControlRef inControl);
    [[nodiscard]] explicit StPortSaver(ListRef inList);
    virtual ~StPortSaver();

    StPortSaver(const StPortSaver&) = delete;
    StPortSaver& operator=(const StPortSaver&) = delete;

    // Makes the saved port current now; the destructor does so again.
    void Restore() const;

    // Replaces the port to be restored. NULL: restoring does nothing.
    void SetSavedPort(CGrafPtr inPort) { fPort = inPort; }

private:
    CGrafPtr fPort = nullptr;
};

// StGWorldSaver
//
// Saves the current GWorld and device, and may make another pair current (a null world does not switch).
class StGWorldSaver {
public:
    [[nodiscard]] StGWorldSaver();
    [[nodiscard]] StGWorldSaver(GWorldPtr inWorld, GDHandle inDevice);
    virtual ~StGWorldSaver();

    StGWorldSaver(const StGWorldSaver&) = delete;
    StGWorldSaver& operator=(const StGWorldSaver&) = delete;

    void Restore() const;

    // Replaces what will be restored. A null world: restoring does nothing.
    void SetSavedGWorld(GWorldPtr inWorld, GDHandle inDevice);

private:
    CGrafPtr fWorld = nullptr;
    GDHandle fDevice = nullptr;
};

// StColorState
//
// Saves the foreground and background colours of the current port.
class StColorState {
public:
    [[nodiscard]] StColorState();
    ~StColorState();

    StColorState(const StColorState&) = delete;
    StColorState& operator=(const StColorState&) = delete;

    void Save();
    void Restore() const;

    // Black on white, which copying pixels wants; the saved colours stay saved.
    static void Normalize();

private:
    RGBColor fForeground;
    RGBColor fBackground;
};

// StPenState
//
// Saves the pen and leaves a normal one for the scope, of the given size in pixels if one is given.
class StPenState {
public:
    [[nodiscard]] StPenState();
    [[nodiscard]] StPenState(SInt16 inWidth, SInt16 inHeight);
    ~StPenState();

    StPenState(const StPenState&) = delete;
    StPenState& operator=(const StPenState&) = delete;

    void Save();
    void Restore() const;

private:
    PenState fState;
};

// The font settings of a port.
struct TextState {
    SInt16 font;
    SInt16 size;
    SInt16 face;
    SInt16 mode;
};

// GetTextState, SetTextState
//
// Read and set the font, size, face and mode of the current port. NULL does nothing.
void GetTextState(TextState* outState);
void SetTextState(const TextState* inState);

// SetTextFont
//
// Makes the font of that name current; a name that is not installed gives the system font, number 0.
void SetTextFont(ConstStr255Param inName);

LAMPBLACK_END

#endif
