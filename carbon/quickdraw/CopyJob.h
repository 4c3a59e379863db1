// One copy from pixels to pixels, whatever their depths. CopyBits, CopyMask and ScrollRect make jobs. Begin
// with Perform.
#ifndef LAMPBLACK_QUICKDRAW_COPYJOB_H
#define LAMPBLACK_QUICKDRAW_COPYJOB_H

#include "Arithmetic.h"
#include "Copying.h"
#include "Dithering.h"
#include "Scaling.h"

#include <algorithm>

namespace lampblack::quickdraw {

// What a copy takes from the current port.
struct CopyColors {
    uint32_t fore = kBlackPixel;
    ArithmeticColors others; // with the background
};

// The pixels of one rectangle that show those of another which exist.
Box BoxShowing(const Rect& readable, const Rect& from, const Rect& to);

class CopyJob {
public:
    // The rectangles are not empty. A mode that does not exist copies. The surfaces' colours must outlive the
    // job.
    CopyJob(const Surface& from, const Surface& to, const Rect& fromRect, const Rect& toRect, short mode,
            const CopyColors&);

    const Surface& From() const { return fFrom; }
    const Surface& To() const { return fTo; }
    const Rect& FromRect() const { return fFromRect; }
    const Rect& ToRect() const { return fToRect; }
    void ReadFrom(const Surface& aside) { fFrom = aside; } // which holds what the source held

    bool Scales() const { return fScales; }
    bool IsPrepared() const { return fDithers || fAverages; } // rows come from PreparedRows
    bool IsPlain() const { return !fArithmetic && fCombination.IsPlainCopy() && !IsPrepared(); }
    bool IsBlit() const { return IsPlain() && !fScales && fConverter.IsSame(); } // pixels as they are
    const Converter& Conversion() const { return fConverter; }

    Steps Columns(int h) const
    {
        return Steps(fFromRect.right - fFromRect.left, fToRect.right - fToRect.left, h - fToRect.left);
    }
    Steps Rows(int v) const
    {
        return Steps(fFromRect.bottom - fFromRect.top, fToRect.bottom - fToRect.top, v - fToRect.top);
    }
    int SourceRow(int v) const { return fFromRect.top + Rows(v).At(); }

    // The destination pixels that exist and whose source pixel exists.
    Box ShownBox() const;

    // Makes a plain copy convert into colours, for what weighs them with others; false for any other job,
    // which still converts into pixels of the destination.
    bool KeepColors();

    // Source pixels for destination pixels from column h, not converted; any number of them.
    void Read(int sourceRow, int h, int count, uint32_t* outValues) const;

    // What the mode makes of converted pixels and of pixels of the destination.
    void Meet(const uint32_t* converted, uint32_t* ioPixels, int count) const;
    // The same in the destination itself; at most kRowPiece pixels.
    void MeetThere(const uint32_t* converted, int v, int h, int count) const;

private:
    friend class PreparedRows;
    Converter::Meaning MeaningOfCopy(bool inverted, const CopyColors&) const;
    void PrepareBoolean(short mode, const CopyColors&);
    void PrepareArithmetic(short mode, const CopyColors&);
    void MeetColors(const uint32_t* converted, uint32_t* ioPixels, int count) const;

    Surface fFrom, fTo;
    Rect fFromRect, fToRect;
    bool fScales, fDithers = false, fAverages = false;
    Converter fConverter;
    Converter::Meaning fMeaning = { kBlackPixel, kWhitePixel };
    Combination fCombination;
    ArithmeticRow fArithmetic = nullptr;
    ArithmeticColors fColors;
};

// The rows of a job that dithers or averages: whole rows from the top of what is shown, so that they do not
// depend on the clip.
class PreparedRows {
public:
    void Begin(const CopyJob&);
    // The converted pixels of row v from column h; rows are asked for in ascending order.
    const uint32_t* Row(int v, int h);

private:
    void NextRow();

    const CopyJob* fJob = nullptr;
    Box fShown = { 0, 0, 0, 0 };
    int fNext = 0;
    Ditherer fDitherer;
    std::vector<uint32_t> fRow;
};

// Where pixels may change: boxes in bands from top to bottom, and what of them lies within the bounds.
struct Where {
    Box bounds;
    std::span<const Box> boxes;
};

// Where a job may draw: what is shown, within a mask, and within the clip where the destination is the
// current port's (else null). The answer holds until the next call.
Where WhereOf(const CopyJob&, PortRecord* current, const Region* mask);

// Performs the job, also within one map. Answers what may have changed.
Box Perform(CopyJob&, const Where&);

// A whole copy without a port: black on white, clipped by the pixels there are. Answers what may have
// changed.
Box CopySurface(const Surface& from, const Surface& to, const Rect& fromRect, const Rect& toRect, short mode);

// A surface of the rows from top to bottom with the same pixels, kept in the storage.
Surface SetAside(const Surface&, int top, int bottom, std::vector<uint8_t>& storage);
bool ShareMemory(const Surface&, const Surface&);
void SetSourceAside(CopyJob&); // until the next call

// Calls use(box) for each box that is not empty and answers the box around them.
template <class Use>
Box EachBox(const Where& inWhere, Use inUse)
{
    Box around = { 0, 0, 0, 0 };
    for (const Box& any : inWhere.boxes) {
        const Box box = Intersection(any, inWhere.bounds);
        if (IsEmpty(box))
            continue;
        around = IsEmpty(around) ? box
                                 : Box{ std::min(around.x1, box.x1), around.y1, std::max(around.x2, box.x2),
                                        std::max(around.y2, box.y2) };
        inUse(box);
    }
    return around;
}

PreparedRows& Prepared(const CopyJob&);

// Calls use(v, h, count, converted) for all pixels, a piece of a row at a time, from top to bottom.
template <class Use>
void EachConvertedRow(const CopyJob& inJob, const Where& inWhere, Use inUse)
{
    uint32_t piece[kRowPiece];
    PreparedRows* prepared = inJob.IsPrepared() ? &Prepared(inJob) : nullptr;
    const auto convert = [&](int v, int sourceRow, int h, int count) -> const uint32_t* {
        if (prepared)
            return prepared->Row(v, h);
        inJob.Read(sourceRow, h, count, piece);
        inJob.Conversion().Row(piece, count);
        return piece;
    };
    for (size_t first = 0, end = 0; first < inWhere.boxes.size(); first = end) {
        while (end < inWhere.boxes.size() && inWhere.boxes[end].y1 == inWhere.boxes[first].y1)
            ++end; // one band
        const int top = std::max(inWhere.boxes[first].y1, inWhere.bounds.y1),
                  bottom = std::min(inWhere.boxes[first].y2, inWhere.bounds.y2);
        for (int v = top; v < bottom; ++v) {
            const int sourceRow = inJob.SourceRow(v);
            for (size_t i = first; i < end; ++i) {
                const int right = std::min(inWhere.boxes[i].x2, inWhere.bounds.x2);
                for (int h = std::max(inWhere.boxes[i].x1, inWhere.bounds.x1); h < right; h += kRowPiece) {
                    const int count = std::min(kRowPiece, right - h);
                    inUse(v, h, count, convert(v, sourceRow, h, count));
                }
            }
        }
    }
}

} // namespace lampblack::quickdraw

#endif
