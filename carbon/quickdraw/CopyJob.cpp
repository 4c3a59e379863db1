// How a copy is set up, and its rows.
#include "CopyJob.h"

#include <cstring>

namespace lampblack::quickdraw {

// The first destination pixel that shows source pixel `at` or a later one.
static int FirstShowing(int at, int source, int destination)
{
    if (at <= 0)
        return 0;
    if (source == destination) // most copies
        return std::min(at, destination);
    return (int)std::min<int64_t>(((int64_t)at * destination + source - 1) / source, destination);
}

Box BoxShowing(const Rect& readable, const Rect& from, const Rect& to)
{
    const int fromWidth = from.right - from.left, fromHeight = from.bottom - from.top;
    const int width = to.right - to.left, height = to.bottom - to.top;
    return { to.left + FirstShowing(readable.left - from.left, fromWidth, width),
             to.top + FirstShowing(readable.top - from.top, fromHeight, height),
             to.left + FirstShowing(std::min(readable.right - from.left, fromWidth), fromWidth, width),
             to.top + FirstShowing(std::min(readable.bottom - from.top, fromHeight), fromHeight, height) };
}

Box CopyJob::ShownBox() const
{
    return Intersection(BoxShowing(fFrom.bounds, fFromRect, fToRect), BoxOf(fTo.bounds));
}

CopyJob::CopyJob(const Surface& from, const Surface& to, const Rect& fromRect, const Rect& toRect, short mode,
                 const CopyColors& colors)
    : fFrom(from),
      fTo(to),
      fFromRect(fromRect),
      fToRect(toRect),
      fScales(fromRect.right - fromRect.left != toRect.right - toRect.left ||
              fromRect.bottom - fromRect.top != toRect.bottom - toRect.top),
      fColors(colors.others)
{
    const bool shrinks = fromRect.right - fromRect.left > toRect.right - toRect.left ||
                         fromRect.bottom - fromRect.top > toRect.bottom - toRect.top;
    const bool mayDither = mode > 0 && (mode & ditherCopy);
    fDithers = mayDither && from.depth > to.depth;
    // Of all scaling only this one is more than the nearest pixel: who asks for dithering asks for quality.
    fAverages = mayDither && from.depth >= 16 && shrinks;
    short pure = mayDither ? (short)(mode & ~ditherCopy) : mode;
    if (to.depth == 1)
        pure = ModeAtDepth1(pure);
    fArithmetic = ArithmeticRowOf(pure);
    if (fArithmetic)
        PrepareArithmetic(pure, colors);
    else
        PrepareBoolean(pure < srcCopy || pure > notSrcBic ? (short)srcCopy : pure, colors);
}

void CopyJob::PrepareArithmetic(short inMode, const CopyColors& inColors)
{
    if (inMode == hilite) { // what the destination cannot hold would never be found there
        fColors.back = ShownColor(fTo, fColors.back);
        fColors.hilite = ShownColor(fTo, fColors.hilite);
    } else if (fFrom.depth == 16) { // a background that the source cannot hold would never be left out
        fColors.back = ColorOf555(PixelOf555(fColors.back));
    }
    const Converter::Meaning meaning = inMode == hilite
                                           ? Converter::Meaning{ kBlackPixel, kWhitePixel }
                                           : Converter::Meaning{ inColors.fore, inColors.others.back };
    fConverter.BeginColors(fFrom, meaning);
}

// Black takes the foreground, white the background, or the other way round.
Converter::Meaning CopyJob::MeaningOfCopy(bool inInverted, const CopyColors& inColors) const
{
    const uint32_t fore = inInverted ? inColors.others.back : inColors.fore,
                   back = inInverted ? inColors.fore : inColors.others.back;
    return { PixelFor(fTo, fore), PixelFor(fTo, back), fore, back };
}

void CopyJob::PrepareBoolean(short inMode, const CopyColors& inColors)
{
    const bool isColored = inColors.fore != kBlackPixel || inColors.others.back != kWhitePixel;
    const bool isBitMap = IsBitMap(fFrom);
    const bool isCopy = inMode == srcCopy || (inMode == notSrcCopy && (isColored || isBitMap));
    fMeaning = { AllSet(fTo.depth), NoneSet(fTo.depth) };
    if (inMode == srcCopy && !isColored && fFrom.depth == fTo.depth && fTo.depth >= 16 && !IsPrepared())
        return fConverter.BeginSame(); // most copies; direct pixels mean black and white as it stands
    if (isCopy)
        fMeaning = MeaningOfCopy(inMode == notSrcCopy, inColors);
    else if (isColored || isBitMap)
        fCombination =
            Combination(inMode, fTo.depth, PixelFor(fTo, inColors.fore), PixelFor(fTo, inColors.others.back));
    else // without colours of its own the mode works on the bits alone
        fCombination = Combination(inMode, fTo.depth, AllSet(fTo.depth), NoneSet(fTo.depth));
    if (IsPrepared())
        fConverter.BeginColors(fFrom, fMeaning);
    else
        fConverter.BeginPixels(fFrom, fTo, fMeaning);
}

bool CopyJob::KeepColors()
{
    if (!IsPlain())
        return false;
    fConverter.BeginColors(fFrom, { fMeaning.fore, fMeaning.back, fMeaning.fore, fMeaning.back });
    return true;
}

void CopyJob::Read(int inSourceRow, int h, int inCount, uint32_t* outValues) const
{
    if (fScales)
        ReadScaledPixels(fFrom, inSourceRow, fFromRect.left, Columns(h), inCount, outValues);
    else
        ReadPixels(fFrom, inSourceRow, fFromRect.left + h - fToRect.left, inCount, outValues);
}

// Pixels whose colour does not change keep their value, which need not be the one nearest to it.
void CopyJob::MeetColors(const uint32_t* inColors, uint32_t* ioPixels, int inCount) const
{
    uint32_t colors[kRowPiece];
    for (int i = 0; i < inCount; ++i)
        colors[i] = ColorFor(fTo, ioPixels[i]);
    fArithmetic(inColors, colors, inCount, fColors);
    for (int i = 0; i < inCount; ++i)
        if (colors[i] != ColorFor(fTo, ioPixels[i]))
            ioPixels[i] = PixelFor(fTo, colors[i]);
}

void CopyJob::Meet(const uint32_t* inConverted, uint32_t* ioPixels, int inCount) const
{
    if (!fArithmetic)
        fCombination.Row(inConverted, ioPixels, inCount);
    else if (fTo.depth == 32)
        fArithmetic(inConverted, ioPixels, inCount, fColors);
    else
        MeetColors(inConverted, ioPixels, inCount);
}

void CopyJob::MeetThere(const uint32_t* inConverted, int v, int h, int inCount) const
{
    if (fTo.depth == 32)
        return Meet(inConverted, reinterpret_cast<uint32_t*>(fTo.RowAt(v)) + (h - fTo.bounds.left), inCount);
    if (!fArithmetic && fCombination.IsPlainCopy())
        return WritePixels(fTo, v, h, inCount, inConverted);
    uint32_t pixels[kRowPiece];
    ReadPixels(fTo, v, h, inCount, pixels);
    Meet(inConverted, pixels, inCount);
    WritePixels(fTo, v, h, inCount, pixels);
}

void PreparedRows::Begin(const CopyJob& inJob)
{
    fJob = &inJob;
    fShown = inJob.ShownBox();
    fShown.x2 = std::max(fShown.x1, fShown.x2);
    fNext = fShown.y1;
    fRow.resize((size_t)(fShown.x2 - fShown.x1));
    if (inJob.fDithers)
        fDitherer.Begin(inJob.To(), fShown.x2 - fShown.x1);
}

void PreparedRows::NextRow()
{
    const CopyJob& job = *fJob;
    const int width = fShown.x2 - fShown.x1;
    uint32_t* row = fRow.data();
    if (job.fAverages)
        ReadMeanColors(job.fFrom, job.fFromRect, job.fToRect, fNext, fShown.x1, width, row);
    else
        job.Read(job.SourceRow(fNext), fShown.x1, width, row);
    if (!job.fAverages)
        job.fConverter.Row(row, width);
    else
        job.fConverter.ColorizeRow(row, width);
    if (job.fDithers)
        fDitherer.Row(row);
    else
        for (uint32_t& value : fRow)
            value = PixelFor(job.fTo, value);
    if (job.fArithmetic)
        for (uint32_t& value : fRow)
            value = ColorFor(job.fTo, value);
    ++fNext;
}

const uint32_t* PreparedRows::Row(int v, int h)
{
    while (fNext <= v)
        NextRow();
    return fRow.data() + (h - fShown.x1);
}

PreparedRows& Prepared(const CopyJob& inJob)
{
    static PreparedRows rows; // whose buffers stay
    rows.Begin(inJob);
    return rows;
}

} // namespace lampblack::quickdraw
