// QuickDraw: ports, regions, pens, shapes, colours, copying of pixels, cursors. Begin with SetPort; a shape
// is drawn in the current port, clipped to its bounds, its clip region and its visible region. With no valid
// current port nothing is drawn. Drawing calls take rectangles that are half-open.
#ifndef LAMPBLACK_CARBON_QUICKDRAW_H
#define LAMPBLACK_CARBON_QUICKDRAW_H

#include <Carbon/MacTypes.h>
#include <Carbon/QuickdrawText.h>

typedef SInt16 QDErr;

// Transfer modes. Pattern modes are for pens, source modes for CopyBits and text.
enum {
    srcCopy = 0,
    srcOr = 1,
    srcXor = 2,
    srcBic = 3,
    notSrcCopy = 4,
    notSrcOr = 5,
    notSrcXor = 6,
    notSrcBic = 7,
    patCopy = 8,
    patOr = 9,
    patXor = 10,
    patBic = 11,
    notPatCopy = 12,
    notPatOr = 13,
    notPatXor = 14,
    notPatBic = 15,
    transparent = 36,   // source pixels of the background colour leave the destination
    grayishTextOr = 49, // text half-way between foreground and background
    ditherCopy = 64     // may be added to a source mode
};

// Colours of ForeColor and BackColor.
enum {
    whiteColor = 30,
    blackColor = 33,
    yellowColor = 69,
    magentaColor = 137,
    redColor = 205,
    cyanColor = 273,
    greenColor = 341,
    blueColor = 409
};

enum { RGBDirect = 16, k32ARGBPixelFormat = 0x00000020, baseAddr32 = 4 };
enum { chunky = 0 };
enum { sysPatListID = 0 };
enum { iBeamCursor = 1, crossCursor = 2, plusCursor = 3, watchCursor = 4 };

// GDevice flags
enum {
    clutType = 0,
    fixedType = 1,
    directType = 2,
    gdDevType = 0,
    mainScreen = 11,
    allInit = 12,
    screenDevice = 13,
    noDriver = 14,
    screenActive = 15
};

struct BitMap {
    Ptr baseAddr;
    short rowBytes; // even; the two highest bits are flags
    Rect bounds;    // the local coordinates of the pixels
};
typedef struct BitMap BitMap;
typedef BitMap* BitMapPtr;
typedef BitMap** BitMapHandle;

struct ColorSpec {
    short value;
    RGBColor rgb;
};
typedef struct ColorSpec ColorSpec;
typedef ColorSpec* ColorSpecPtr;
typedef ColorSpec CSpecArray[1];

struct ColorTable {
    SInt32 ctSeed;
    short ctFlags;
    short ctSize; // entries - 1
    CSpecArray ctTable;
};
typedef struct ColorTable ColorTable;
typedef ColorTable* CTabPtr;
typedef CTabPtr* CTabHandle;

// A pixel map begins like a bit map and has the highest bit of rowBytes set. Pixels of depth 32 are native
// words 0x00RRGGBB.
struct PixMap {
    Ptr baseAddr;
    short rowBytes;
    Rect bounds;
    short pmVersion;
    short packType;
    SInt32 packSize;
    Fixed hRes;
    Fixed vRes;
    short pixelType;
    short pixelSize;
    short cmpCount;
    short cmpSize;
    OSType pixelFormat;
    CTabHandle pmTable;
    void* pmExt;
};
typedef struct PixMap PixMap;
typedef PixMap* PixMapPtr;
typedef PixMapPtr* PixMapHandle;

struct Pattern {
    UInt8 pat[8];
};
typedef struct Pattern Pattern;
typedef Pattern* PatPtr;
typedef PatPtr* PatHandle;

typedef SInt16 Bits16[16];

struct Cursor {
    Bits16 data;
    Bits16 mask;
    Point hotSpot;
};
typedef struct Cursor Cursor;
typedef Cursor* CursPtr;
typedef CursPtr* CursHandle;

struct PenState {
    Point pnLoc;
    Point pnSize;
    short pnMode;
    Pattern pnPat;
};
typedef struct PenState PenState;

struct MacPolygon {
    short polySize; // bytes of this record, with its points
    Rect polyBBox;
    Point polyPoints[1];
};
typedef struct MacPolygon MacPolygon;
typedef struct MacPolygon Polygon;
typedef MacPolygon* PolyPtr;
typedef PolyPtr* PolyHandle;

struct GDevice {
    short gdRefNum;
    short gdID;
    short gdType;
    Handle gdITable;
    short gdResPref;
    void* gdSearchProc;
    void* gdCompProc;
    short gdFlags;
    PixMapHandle gdPMap;
    long gdRefCon;
    struct GDevice** gdNextGD;
    Rect gdRect; // global
    SInt32 gdMode;
    short gdCCBytes;
    short gdCCDepth;
    Handle gdCCXData;
    Handle gdCCXMask;
    Handle gdExt;
};
typedef struct GDevice GDevice;
typedef GDevice* GDPtr;
typedef GDPtr* GDHandle;

static_assert(sizeof(Pattern) == 8 && sizeof(Cursor) == 68 && sizeof(PenState) == 18 &&
                  sizeof(ColorSpec) == 8,
              "the published sizes");

typedef SInt32 QDRegionParseDirection;
enum {
    kQDParseRegionFromTop = 1 << 0,
    kQDParseRegionFromBottom = 1 << 1,
    kQDParseRegionFromLeft = 1 << 2,
    kQDParseRegionFromRight = 1 << 3,
    kQDParseRegionFromTopLeft = kQDParseRegionFromTop | kQDParseRegionFromLeft,
    kQDParseRegionFromBottomRight = kQDParseRegionFromBottom | kQDParseRegionFromRight
};
enum { kQDRegionToRectsMsgInit = 1, kQDRegionToRectsMsgParse = 2, kQDRegionToRectsMsgTerminate = 3 };
typedef OSStatus (*RegionToRectsProcPtr)(UInt16 message, RgnHandle rgn, const Rect* rect, void* refCon);
typedef RegionToRectsProcPtr RegionToRectsUPP;

LAMPBLACK_BEGIN_C

// Errors of the last QuickDraw call that can fail.
QDErr QDError(void);

// Ports
// ------------------------------------------------------------------------------------------------------

// CreateNewPort
//
// Makes a port with the coordinates of the main screen and no pixels: it measures text and holds a pen, and
// drawing in it shows nowhere. Release it with DisposePort. A disposed current port leaves none current.
CGrafPtr CreateNewPort(void);
void DisposePort(CGrafPtr port);
void GetPort(GrafPtr* port); // NULL when none is current
void SetPort(GrafPtr port);  // a reference that is no port, or NULL, leaves none current
#define MacSetPort SetPort
Boolean QDSwapPort(CGrafPtr inNewPort, CGrafPtr* outOldPort); // answers whether the port changed
Boolean IsValidPort(CGrafPtr port);
Boolean IsPortColor(CGrafPtr port);
Boolean IsPortOffscreen(CGrafPtr port);
Boolean IsPortRegionBeingDefined(CGrafPtr port);
Boolean IsPortPolyBeingDefined(CGrafPtr port);

// What belongs to a port. A getter of a reference that is no port answers an empty value.
PixMapHandle GetPortPixMap(CGrafPtr port);
const BitMap* GetPortBitMapForCopyBits(CGrafPtr port);
Rect* GetPortBounds(CGrafPtr port, Rect* rect);
RGBColor* GetPortForeColor(CGrafPtr port, RGBColor* foreColor);
RGBColor* GetPortBackColor(CGrafPtr port, RGBColor* backColor);
RgnHandle GetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn);
RgnHandle GetPortClipRegion(CGrafPtr port, RgnHandle clipRgn);
Point* GetPortPenSize(CGrafPtr port, Point* penSize);
Point* GetPortPenLocation(CGrafPtr port, Point* penLocation);
SInt32 GetPortPenMode(CGrafPtr port);
short GetPortPenVisibility(CGrafPtr port); // 0 or more: the pen draws
short GetPortTextFont(CGrafPtr port);
Style GetPortTextFace(CGrafPtr port);
short GetPortTextMode(CGrafPtr port);
short GetPortTextSize(CGrafPtr port);
Fixed GetPortSpExtra(CGrafPtr port);

void SetPortBounds(CGrafPtr port, const Rect* rect);
void SetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn);
void SetPortClipRegion(CGrafPtr port, RgnHandle clipRgn);
void SetPortPenSize(CGrafPtr port, Point penSize);
void SetPortPenMode(CGrafPtr port, SInt32 penMode);
void SetPortTextFont(CGrafPtr port, short txFont);
void SetPortTextFace(CGrafPtr port, StyleParameter face);
void SetPortTextMode(CGrafPtr port, short mode);
void SetPortTextSize(CGrafPtr port, short txSize);
Boolean IsPortVisibleRegionEmpty(CGrafPtr port);
Boolean IsPortClipRegionEmpty(CGrafPtr port);
OSStatus SectRegionWithPortClipRegion(CGrafPtr port, RgnHandle ioRegion);
OSStatus SectRegionWithPortVisibleRegion(CGrafPtr port, RgnHandle ioRegion);

// The current port's place and clipping.
void SetOrigin(short h, short v); // the port bounds' new top left; pixels stay, the clip region does not move
void MovePortTo(short leftGlobal, short topGlobal);
void PortSize(short width, short height);
void ClipRect(const Rect* r);
void GetClip(RgnHandle rgn);
void SetClip(RgnHandle rgn);

// The back buffer of a window's port: what was drawn and is not on the screen yet.
Boolean QDIsPortBuffered(CGrafPtr port);
Boolean QDIsPortBufferDirty(CGrafPtr port);
void QDFlushPortBuffer(CGrafPtr port, RgnHandle region); // region may be NULL: all of it
OSStatus QDGetDirtyRegion(CGrafPtr port, RgnHandle rgn);
OSStatus QDSetDirtyRegion(CGrafPtr port, RgnHandle rgn);
OSStatus QDAddRectToDirtyRegion(CGrafPtr port, const Rect* inBounds);
OSStatus QDAddRegionToDirtyRegion(CGrafPtr port, RgnHandle inRegion);
OSErr LockPortBits(GrafPtr port);
OSErr UnlockPortBits(GrafPtr port);

// Globals and devices
// ----------------------------------------------------------------------------------------

CGrafPtr GetQDGlobalsThePort(void);
BitMap* GetQDGlobalsScreenBits(BitMap* screenBits);
Cursor* GetQDGlobalsArrow(Cursor* arrow);
Pattern* GetQDGlobalsBlack(Pattern* black);
Pattern* GetQDGlobalsWhite(Pattern* white);
Pattern* GetQDGlobalsGray(Pattern* gray);
Pattern* GetQDGlobalsLightGray(Pattern* lightGray);
Pattern* GetQDGlobalsDarkGray(Pattern* darkGray);
SInt32 GetQDGlobalsRandomSeed(void);
void SetQDGlobalsRandomSeed(SInt32 randomSeed);
void SetQDGlobalsArrow(const Cursor* arrow);
short Random(void); // -32767 to 32767

GDHandle GetMainDevice(void);
GDHandle GetDeviceList(void);
GDHandle GetNextDevice(GDHandle curDevice); // NULL after the last
GDHandle GetGDevice(void);
void SetGDevice(GDHandle gd);
GDHandle GetMaxDevice(const Rect* globalRect); // NULL when the rectangle is on no device
Boolean TestDeviceAttribute(GDHandle gdh, short attribute);
void ScreenRes(short* scrnHRes, short* scrnVRes);

// Points and rectangles
// --------------------------------------------------------------------------------------

void SetPt(Point* pt, short h, short v);
void AddPt(Point src, Point* dst);
void SubPt(Point src, Point* dst);
Boolean EqualPt(Point pt1, Point pt2);
SInt32 DeltaPoint(Point ptA, Point ptB); // ptA - ptB: vertical in the high word, horizontal in the low
void ScalePt(Point* pt, const Rect* srcRect, const Rect* dstRect); // a width and a height, at least 1
void MapPt(Point* pt, const Rect* srcRect, const Rect* dstRect);
void MapRect(Rect* r, const Rect* srcRect, const Rect* dstRect);
void LocalToGlobal(Point* pt);
void GlobalToLocal(Point* pt);
Rect* QDLocalToGlobalRect(CGrafPtr port, Rect* bounds);
Rect* QDGlobalToLocalRect(CGrafPtr port, Rect* bounds);
Point* QDLocalToGlobalPoint(CGrafPtr port, Point* point);
Point* QDGlobalToLocalPoint(CGrafPtr port, Point* point);
RgnHandle QDLocalToGlobalRegion(CGrafPtr port, RgnHandle region);
RgnHandle QDGlobalToLocalRegion(CGrafPtr port, RgnHandle region);

void SetRect(Rect* r, short left, short top, short right, short bottom);
void OffsetRect(Rect* r, short dh, short dv);
void InsetRect(Rect* r, short dh, short dv);                         // (0,0,0,0) when nothing is left
Boolean SectRect(const Rect* src1, const Rect* src2, Rect* dstRect); // (0,0,0,0) and false when apart
void UnionRect(const Rect* src1, const Rect* src2, Rect* dstRect);
Boolean EqualRect(const Rect* rect1, const Rect* rect2);
Boolean EmptyRect(const Rect* r);
Boolean PtInRect(Point pt, const Rect* r);
void Pt2Rect(Point pt1, Point pt2, Rect* dstRect);
void PtToAngle(const Rect* r, Point pt, short* angle);
#define MacSetRect SetRect
#define MacOffsetRect OffsetRect
#define MacInsetRect InsetRect
#define MacUnionRect UnionRect
#define MacEqualRect EqualRect
#define MacPtInRect PtInRect

// Pen and lines
// ---------------------------------------------------------------------------------------------- The pen
// hangs below and to the right of the path.

void HidePen(void);
void ShowPen(void);
void GetPen(Point* pt);
void GetPenState(PenState* pnState);
void SetPenState(const PenState* pnState);
void PenSize(short width, short height);
void PenMode(short mode);
void PenPat(const Pattern* pat);
void PenNormal(void);
void MoveTo(short h, short v);
void Move(short dh, short dv);
void LineTo(short h, short v);
void Line(short dh, short dv);
#define MacLineTo LineTo

// Colours
// ----------------------------------------------------------------------------------------------------

void ForeColor(SInt32 color);
void BackColor(SInt32 color);
void RGBForeColor(const RGBColor* color);
void RGBBackColor(const RGBColor* color);
void GetForeColor(RGBColor* color);
void GetBackColor(RGBColor* color);
void BackPat(const Pattern* pat);
void GetCPixel(short h, short v, RGBColor* cPix);
void SetCPixel(short h, short v, const RGBColor* cPix);
Boolean GetPixel(short h, short v); // whether the pixel is not white
#define MacGetPixel GetPixel
// The pattern stays as it is when there is no such list or index. Indexes begin at 1; the system's own list,
// sysPatListID, has 38 patterns.
void GetIndPattern(Pattern* thePat, short patternListID, short index);
PatHandle GetPattern(short patternID);

// Shapes
// ----------------------------------------------------------------------------------------------------- Frame
// draws with the pen inside the shape, Paint fills with the pen's pattern and mode, Erase with the background
// pattern, Invert inverts pixels, Fill uses the given pattern.

void FrameRect(const Rect* r);
void PaintRect(const Rect* r);
void EraseRect(const Rect* r);
void InvertRect(const Rect* r);
void FillRect(const Rect* r, const Pattern* pat);
#define MacFrameRect FrameRect
#define MacInvertRect InvertRect
#define MacFillRect FillRect

void FrameOval(const Rect* r);
void PaintOval(const Rect* r);
void EraseOval(const Rect* r);
void InvertOval(const Rect* r);
void FillOval(const Rect* r, const Pattern* pat);

void FrameRoundRect(const Rect* r, short ovalWidth, short ovalHeight);
void PaintRoundRect(const Rect* r, short ovalWidth, short ovalHeight);
void EraseRoundRect(const Rect* r, short ovalWidth, short ovalHeight);
void InvertRoundRect(const Rect* r, short ovalWidth, short ovalHeight);
void FillRoundRect(const Rect* r, short ovalWidth, short ovalHeight, const Pattern* pat);

// Angles are degrees clockwise from straight up; 45 always points to the rectangle's top right corner.
void FrameArc(const Rect* r, short startAngle, short arcAngle);
void PaintArc(const Rect* r, short startAngle, short arcAngle);
void EraseArc(const Rect* r, short startAngle, short arcAngle);
void InvertArc(const Rect* r, short startAngle, short arcAngle);
void FillArc(const Rect* r, short startAngle, short arcAngle, const Pattern* pat);

// A polygon collects the lines drawn between OpenPoly and ClosePoly; the pen is hidden meanwhile.
PolyHandle OpenPoly(void);
void ClosePoly(void);
void KillPoly(PolyHandle poly);
void OffsetPoly(PolyHandle poly, short dh, short dv);
void MapPoly(PolyHandle poly, const Rect* srcRect, const Rect* dstRect);
void FramePoly(PolyHandle poly);
void PaintPoly(PolyHandle poly);
void ErasePoly(PolyHandle poly);
void InvertPoly(PolyHandle poly);
void FillPoly(PolyHandle poly, const Pattern* pat);

// Regions
// ----------------------------------------------------------------------------------------------------

RgnHandle NewRgn(void);
void DisposeRgn(RgnHandle rgn);
Boolean IsValidRgnHandle(RgnHandle rgn);
Boolean IsRegionRectangular(RgnHandle region);
Rect* GetRegionBounds(RgnHandle region, Rect* bounds);
void SetEmptyRgn(RgnHandle rgn);
void SetRectRgn(RgnHandle rgn, short left, short top, short right, short bottom);
void RectRgn(RgnHandle rgn, const Rect* r);
void CopyRgn(RgnHandle srcRgn, RgnHandle dstRgn);
void OffsetRgn(RgnHandle rgn, short dh, short dv);
void InsetRgn(RgnHandle rgn, short dh, short dv);
void MapRgn(RgnHandle rgn, const Rect* srcRect, const Rect* dstRect);
void SectRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
void UnionRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
void DiffRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
void XorRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
Boolean EqualRgn(RgnHandle rgnA, RgnHandle rgnB);
Boolean EmptyRgn(RgnHandle rgn);
Boolean PtInRgn(Point pt, RgnHandle rgn);
Boolean RectInRgn(const Rect* r, RgnHandle rgn); // whether they share a pixel
void FrameRgn(RgnHandle rgn);
void PaintRgn(RgnHandle rgn);
void EraseRgn(RgnHandle rgn);
void InvertRgn(RgnHandle rgn);
void FillRgn(RgnHandle rgn, const Pattern* pat);
#define MacSetRectRgn SetRectRgn
#define MacCopyRgn CopyRgn
#define MacOffsetRgn OffsetRgn
#define MacUnionRgn UnionRgn
#define MacXorRgn XorRgn
#define MacEqualRgn EqualRgn
#define MacFrameRgn FrameRgn
#define MacPaintRgn PaintRgn
#define MacInvertRgn InvertRgn
#define MacFillRgn FillRgn

// Between OpenRgn and CloseRgn, lines and framed shapes of the current port become the outline of a region;
// where outlines overlap an even number of times, the region is open. The pen is hidden meanwhile.
void OpenRgn(void);
void CloseRgn(RgnHandle dstRgn);

// QDRegionToRects
//
// Calls proc with kQDRegionToRectsMsgInit, then with each rectangle of the region in the wished order, then
// with kQDRegionToRectsMsgTerminate. An error of proc ends the walk and is the answer.
OSStatus QDRegionToRects(RgnHandle rgn, QDRegionParseDirection dir, RegionToRectsUPP proc, void* userData);
RegionToRectsUPP NewRegionToRectsUPP(RegionToRectsProcPtr userRoutine);
void DisposeRegionToRectsUPP(RegionToRectsUPP userUPP);
OSStatus InvokeRegionToRectsUPP(UInt16 message, RgnHandle rgn, const Rect* rect, void* refCon,
                                RegionToRectsUPP userUPP);

// Copying pixels
// ---------------------------------------------------------------------------------------------

// CopyBits
//
// Copies srcRect of the source onto dstRect of the destination, between any depths, scaling when they differ
// in size (the nearest pixel). Where the destination belongs to the current port its clip and visible regions
// hold; maskRgn, which may be NULL, is in the destination's coordinates.
//
// Colours:    a bit map's set pixels take the current port's foreground, its clear ones the background. Other
//             pixels keep their colours, the nearest that the destination has; tables of one seed count as
//             equal, and indexes are copied. With a foreground that is not black or a background that is not
//             white they are colourised bit by bit: black becomes the foreground, white the background.
// Modes:      the boolean ones work on the bits of the destination's pixel values, of which black is set; the
//             arithmetic ones on colours, without colourising. ditherCopy added to any mode spreads what a
//             lesser depth cannot show over its neighbours, and takes means where direct pixels shrink.
//             A mode that does not exist is srcCopy.
// Errors:     by QDError: paramErr   a NULL, a map without address, with rows of no length, a reversed
//                                    rectangle, or direct pixels at odd addresses
//                         cDepthErr  a depth that does not exist. Nothing is drawn then.
void CopyBits(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
              short mode, RgnHandle maskRgn);

// ScrollRect
//
// Moves the pixels of r; what comes into view is erased with the background, and is what updateRgn (which may
// be NULL) receives.
void ScrollRect(const Rect* r, short dh, short dv, RgnHandle updateRgn);

// Cursors
// ----------------------------------------------------------------------------------------------------

void InitCursor(void); // the arrow, visible
void SetCursor(const Cursor* crsr);
void HideCursor(void);
void ShowCursor(void);
void ObscureCursor(void); // until the mouse moves
CursHandle GetCursor(short cursorID);
#define MacSetCursor SetCursor
#define MacShowCursor ShowCursor

LAMPBLACK_END_C

#include <Carbon/QDColors.h>
#include <Carbon/QDCopying.h>
#include <Carbon/QDOffscreen.h>
#include <Carbon/QDPictures.h>
#include <Carbon/QDRegions.h>

#endif
