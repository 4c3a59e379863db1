// Plays a picture: the state that its opcodes build up, and what they draw with. Begin with Player::Play.
#ifndef LAMPBLACK_PICTURES_PLAYER_H
#define LAMPBLACK_PICTURES_PLAYER_H

#include "Mapping.h"

#include <foundation/BigEndian.h>
#include <quickdraw/PortRecord.h>
#include <quickdraw/Verbs.h>

#include <map>
#include <vector>

namespace lampblack::pictures {

using foundation::BigEndianReader;
using foundation::Bytes;

// The drawing state of a port, put back in the end.
class StDrawingState {
public:
    [[nodiscard]] explicit StDrawingState(quickdraw::PortRecord&);
    ~StDrawingState();
    StDrawingState(const StDrawingState&) = delete;
    StDrawingState& operator=(const StDrawingState&) = delete;

    const quickdraw::Region& Clip() const { return fClip; }
    Point PatternOrigin() const { return fPatternOrigin; }

private:
    quickdraw::PortRecord& fPort;
    quickdraw::Region fClip;
    quickdraw::Pen fPen;
    Pattern fBackPattern;
    PixPatHandle fBackPixels;
    Point fPatternOrigin;
    RGBColor fFore, fBack, fOpColor, fHiliteColor;
    quickdraw::TextSettings fText;
    UInt8 fHiliteMode;
    Boolean fOutlinesPreferred;
};

// Pixels that come with a compressed or uncompressed image, and where its matrix puts them.
struct ImagePlacement {
    double matrix[3][3] = { { 1, 0, 0 }, { 0, 1, 0 }, { 0, 0, 1 } };
    Rect Of(const Rect&) const; // the bounds of what becomes of a rectangle
};

// How transparent an image is, from 0 (not seen) to 255, row by row.
struct Matte {
    int width = 0, height = 0;
    std::vector<uint8_t> weights;
};

// What pictures hold behind a compressed image for machines that cannot read it, and what tells it: the image
// was shown in a rectangle not more than so many opcodes ago.
inline constexpr int kOpcodesOfFallbacks = 12; // between an image and its fallback, at most
struct Fallback {
    int opcodes = 0;
    int texts = 0; // so many more of them belong to it
    Rect shown = { 0, 0, 0, 0 };
};

// What the characters of a line are set apart by, and what its spaces share besides.
struct LineJustification {
    Fixed between = 0, shared = 0;
    int line = 0; // the baseline that the spaces were counted on
    int spaces = 0;
    bool isCounted = false;
};

class Player {
public:
    Player(quickdraw::PortRecord&, const Rect& pictureFrame, const Rect& to);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Plays from the version opcode on.
    QDErr Play(Bytes picture, size_t from);

    // For what plays the opcodes -----------------------------------------------------------------------

    quickdraw::PortRecord& Port() { return fPort; }
    const PictureMapping& Map() const { return fMapping; }

    // Says what something costs, in pixels; false when the picture has cost far more than one of its size
    // may, and ends.
    bool CanAfford(int64_t cost);
    bool CanAfford(const Rect& drawn, int64_t pieces = 1); // of the port's pixels, in so many pieces
    void Fail(QDErr inError);

    void SetVersion(int inVersion) { fVersion = inVersion; }
    int Version() const { return fVersion; }
    void End() { fEnded = true; }
    void SetFrame(const Rect&); // that of an extended header
    void MoveOrigin(int dh, int dv);
    void ClipTo(const quickdraw::Region& inPictureRegion);

    // What shapes fill with: one of the two.
    Pattern fFillPattern;
    PixPatHandle fFillPixels = nullptr;
    void OwnPixels(PixPatHandle* ioWhere, PixPatHandle); // disposes of the one before

    Point fPen = { 0, 0 }, fText = { 0, 0 }; // where lines and texts begin, in the picture's coordinates
    Point fOval = { 0, 0 };
    Point fTextNumerator = { 1, 1 }, fTextDenominator = { 1, 1 };
    LineJustification fJustification;
    const BigEndianReader& Rest() const { return fRest; } // what stands behind the opcode that is played
    Rect fRect = { 0, 0, 0, 0 };                          // the last of each kind, for the "same" opcodes
    Rect fRoundRect = { 0, 0, 0, 0 }, fOvalRect = { 0, 0, 0, 0 }, fArcRect = { 0, 0, 0, 0 };
    std::vector<Point> fPolygon;
    quickdraw::Region fRegion;
    std::map<short, short> fFonts; // numbers in the picture and what they are here
    PixPatHandle fPenPixels = nullptr, fBackPixels = nullptr;

    // Images: what the next pixels are subject to, and what a fallback may be skipped for.
    bool fHasPlacement = false;
    ImagePlacement fPlacement;
    Matte fMatte;
    Fallback fFallback;

private:
    void Step(BigEndianReader& ioReader);
    // Reads over an opcode that is a fallback of the image before it.
    bool IsFallback(int opcode, BigEndianReader& ioReader);
    void PatternsMove();

    quickdraw::PortRecord& fPort;
    const StDrawingState fSaved;
    PictureMapping fMapping;
    BigEndianReader fRest{ Bytes() };
    int64_t fBudget = 0;
    int fVersion = 0;
    bool fEnded = false;
    QDErr fError = 0;
};

} // namespace lampblack::pictures

#endif
