#include "Player.h"

#include "Opcodes.h"
#include "Playback.h"

#include <Carbon/Fonts.h>
#include <Carbon/MacErrors.h>

#include <algorithm>
#include <cmath>

namespace lampblack::pictures {

using namespace quickdraw;

StDrawingState::StDrawingState(PortRecord& ioPort)
    : fPort(ioPort),
      fClip(ioPort.fClip),
      fPen(ioPort.fPen),
      fBackPattern(ioPort.fBackPattern),
      fBackPixels(ioPort.fBackPixels),
      fPatternOrigin(ioPort.fPatternOrigin),
      fFore(ioPort.fFore),
      fBack(ioPort.fBack),
      fOpColor(ioPort.fOpColor),
      fHiliteColor(ioPort.fHiliteColor),
      fText(ioPort.fText),
      fHiliteMode(LMGetHiliteMode()),
      fOutlinesPreferred(GetOutlinePreferred())
{
}

StDrawingState::~StDrawingState()
{
    fPort.fClip = fClip;
    fPort.ClippingChanged();
    fPort.fPen = fPen;
    fPort.fBackPattern = fBackPattern;
    fPort.fBackPixels = fBackPixels;
    fPort.fPatternOrigin = fPatternOrigin;
    fPort.fOpColor = fOpColor;
    fPort.fHiliteColor = fHiliteColor;
    fPort.fText = fText;
    fPort.fText.strike = nullptr; // the one of then may be gone
    fPort.SetFore(fFore);
    fPort.SetBack(fBack);
    LMSetHiliteMode(fHiliteMode);
    SetOutlinePreferred(fOutlinesPreferred);
}

Rect ImagePlacement::Of(const Rect& inRect) const
{
    const double h[2] = { (double)inRect.left, (double)inRect.right };
    const double v[2] = { (double)inRect.top, (double)inRect.bottom };
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
    for (int i = 0; i < 4; ++i) {
        const double x = matrix[0][0] * h[i & 1] + matrix[1][0] * v[i >> 1] + matrix[2][0];
        const double y = matrix[0][1] * h[i & 1] + matrix[1][1] * v[i >> 1] + matrix[2][1];
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    const auto near = [](double value) { return (short)std::lround(std::clamp(value, -32768.0, 32767.0)); };
    return { near(top), near(left), near(bottom), near(right) };
}

static int64_t AreaOf(const Box& b)
{
    return IsEmpty(b) ? 0 : (int64_t)(b.x2 - b.x1) * (b.y2 - b.y1);
}

// A picture may draw over all of what it may draw in a few hundred times, and do what its own length makes
// plausible; real ones stay below a tenth of this.
static int64_t BudgetOf(PortRecord& ioPort, size_t inBytes)
{
    static constexpr int64_t kTimesOver = 400, kForEachByte = 64, kForSmallOnes = 64 << 20;
    return kForSmallOnes + AreaOf(ioPort.Drawable().Extents()) * kTimesOver + (int64_t)inBytes * kForEachByte;
}

// What a picture relies on before it says otherwise.
static void SetDefaults()
{
    static constexpr RGBColor kBlack = { 0, 0, 0 };
    const Pattern white = { { 0, 0, 0, 0, 0, 0, 0, 0 } };
    PenNormal();
    BackPat(&white);
    ForeColor(blackColor);
    BackColor(whiteColor);
    OpColor(&kBlack);
    TextFont(0);
    TextFace(normal);
    TextMode(srcOr);
    TextSize(0);
    SpaceExtra(0);
    CharExtra(0);
}

Player::Player(PortRecord& ioPort, const Rect& inFrame, const Rect& inTo)
    : fFillPattern{ { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } },
      fPort(ioPort),
      fSaved(ioPort),
      fMapping(inFrame, inTo)
{
    SetDefaults();
    PatternsMove();
}

Player::~Player()
{
    OwnPixels(&fFillPixels, nullptr);
    OwnPixels(&fPenPixels, nullptr);
    OwnPixels(&fBackPixels, nullptr);
}

// Patterns stay where they were on what is drawn.
void Player::PatternsMove()
{
    const Point origin = fSaved.PatternOrigin(), by = fMapping.Shift();
    QDSetPatternOrigin({ (short)(origin.v + by.v), (short)(origin.h + by.h) });
}

void Player::SetFrame(const Rect& inFrame)
{
    fMapping.SetFrame(inFrame);
    PatternsMove();
}

void Player::MoveOrigin(int dh, int dv)
{
    fMapping.MoveOrigin(dh, dv);
    PatternsMove();
}

bool Player::CanAfford(int64_t inCost)
{
    fBudget -= inCost;
    if (fBudget < 0)
        Fail(pictureDataErr);
    return fBudget >= 0;
}

bool Player::CanAfford(const Rect& inDrawn, int64_t inPieces)
{
    static constexpr int64_t kForEachPiece = 32;
    const Region& drawable = fPort.Drawable();
    const int64_t boxes = (int64_t)drawable.Boxes().size();
    return CanAfford(AreaOf(Intersection(BoxOf(inDrawn), drawable.Extents())) +
                     kForEachPiece * (inPieces + boxes));
}

void Player::Fail(QDErr inError)
{
    fEnded = true;
    fError = inError;
}

void Player::ClipTo(const Region& inPictureRegion)
{
    fPort.fClip.Intersect(fMapping.Of(inPictureRegion), fSaved.Clip());
    fPort.ClippingChanged();
}

void Player::OwnPixels(PixPatHandle* ioWhere, PixPatHandle inPixels)
{
    if (*ioWhere)
        DisposePixPat(*ioWhere);
    *ioWhere = inPixels;
}

// Opcodes are bytes in version 1; in version 2 they are words at even places.
void Player::Step(BigEndianReader& ioReader)
{
    if (fVersion > 1 && (ioReader.Offset() & 1))
        ioReader.Skip(1);
    const int number = fVersion > 1 ? ioReader.U16() : ioReader.U8();
    if (!ioReader.Ok())
        return Fail(pictureDataErr);
    if (IsFallback(number, ioReader))
        return;
    const Opcode opcode = OpcodeOf(number, fVersion);
    if (opcode.length == Length::Own) {
        opcode.play(*this, number, ioReader);
    } else {
        Bytes data;
        if (!ReadData(opcode, ioReader, &data))
            return Fail(pictureDataErr);
        BigEndianReader reader(data);
        fRest = ioReader;
        if (opcode.play && CanAfford(1))
            opcode.play(*this, number, reader);
    }
    if (!ioReader.Ok())
        Fail(pictureDataErr);
}

QDErr Player::Play(Bytes inPicture, size_t inFrom)
{
    fBudget = BudgetOf(fPort, inPicture.size());
    BigEndianReader reader(inPicture, inFrom);
    while (!fEnded && CanAfford(1))
        Step(reader);
    return fError;
}

// Size and frame, and the version where an opcode would be.
static constexpr size_t kVersionAt = 10;

static int VersionOf(Bytes inPicture)
{
    const uint32_t start = foundation::ReadBE32(inPicture, kVersionAt);
    if (start == 0x001102FF)
        return 2;
    return foundation::ReadBE16(inPicture, kVersionAt) == 0x1101 ? 1 : 0;
}

bool IsPicture(Bytes inBytes)
{
    return VersionOf(inBytes) != 0;
}

Rect FrameOf(Bytes inPicture)
{
    BigEndianReader reader(inPicture, 2);
    return reader.ReadRect();
}

QDErr PlayPicture(Bytes inPicture, const Rect& inFrame)
{
    PortRecord* port = CurrentPort();
    const Rect frame = FrameOf(inPicture);
    if (!port || inPicture.size() < kVersionAt)
        return paramErr;
    if (IsEmpty(frame) || IsEmpty(inFrame))
        return noErr;
    const int version = VersionOf(inPicture);
    if (version == 0)
        return pictureDataErr;
    Player player(*port, frame, inFrame);
    player.SetVersion(version);
    return player.Play(inPicture, kVersionAt);
}

Bytes PictureInFile(Bytes inFile)
{
    const Bytes behind = inFile.size() > kPictureFileHeader ? inFile.subspan(kPictureFileHeader) : Bytes();
    if (IsPicture(behind))
        return behind;
    return IsPicture(inFile) ? inFile : Bytes();
}

} // namespace lampblack::pictures
