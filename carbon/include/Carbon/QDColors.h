// Colour tables, pixel patterns, pixel maps of the application's own, arithmetic modes and conversion between
// kinds of colour. Begin with GetCTable and GetPixPat. Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QDCOLORS_H
#define LAMPBLACK_CARBON_QDCOLORS_H

#include <Carbon/Quickdraw.h>

// Arithmetic modes, for pens, CopyBits and text. They work on 8 bits a channel; on pixels of depth 1 each
// stands for a boolean mode.
enum {
    blend = 32,   // the destination and the source mixed; OpColor says how much of the source
    addPin = 33,  // the sum, no more than OpColor
    addOver = 34, // the sum, overflowing
    subPin = 35,  // the destination less the source, no less than OpColor
    addMax = 37,  // the greater of each channel
    adMax = 37,
    subOver = 38, // the destination less the source, overflowing
    adMin = 39,   // the lesser of each channel
    hilite = 50,  // the background colour becomes the highlight colour and back; other pixels stay
    hilitetransfermode = 50
};
enum { hiliteBit = 7, pHiliteBit = 0 };

enum { minSeed = 1023 }; // seeds up to this one are those of standard tables

// A pixel pattern. patMap and patData belong to it; after a change of them call PixPatChanged.
struct PixPat {
    short patType;       // 0: an old pattern; 1: pixels; 2: one colour, mixed from those of the table
    PixMapHandle patMap; // NULL for type 0
    Handle patData;
    Handle patXData; // QuickDraw's own
    short patXValid; // -1: to be expanded again
    Handle patXMap;
    Pattern pat1Data; // what an old pattern would be
};
typedef struct PixPat PixPat;
typedef PixPat* PixPatPtr;
typedef PixPatPtr* PixPatHandle;

struct ReqListRec {
    short reqLSize; // entries - 1
    short reqLData[1];
};
typedef struct ReqListRec ReqListRec;

// 0 to 65535 for 0 to 1, of which 65535 is the greatest.
typedef UInt16 SmallFract;
enum { MaxSmallFract = 0x0000FFFF };

struct HSLColor {
    SmallFract hue; // 0 is red, a third green
    SmallFract saturation;
    SmallFract lightness;
};
typedef struct HSLColor HSLColor;

struct HSVColor {
    SmallFract hue;
    SmallFract saturation;
    SmallFract value;
};
typedef struct HSVColor HSVColor;

struct CMYColor {
    SmallFract cyan;
    SmallFract magenta;
    SmallFract yellow;
};
typedef struct CMYColor CMYColor;

static_assert(sizeof(HSLColor) == 6 && sizeof(HSVColor) == 6 && sizeof(CMYColor) == 6, "the published sizes");

LAMPBLACK_BEGIN_C

// Modes
// ------------------------------------------------------------------------------------------------------

// Of the current port. A new port's OpColor is black, its highlight colour that of LMGetHiliteRGB.
void OpColor(const RGBColor* color);
void HiliteColor(const RGBColor* color);
RGBColor* GetPortOpColor(CGrafPtr port, RGBColor* opColor);
RGBColor* GetPortHiliteColor(CGrafPtr port, RGBColor* hiliteColor);
void SetPortOpColor(CGrafPtr port, const RGBColor* opColor);

// A clear pHiliteBit (counted from the highest bit: hiliteBit from the lowest) makes the next Invert call
// highlight instead; that call sets it again.
UInt8 LMGetHiliteMode(void);
void LMSetHiliteMode(UInt8 value);
void LMGetHiliteRGB(RGBColor* hiliteRGBValue);
void LMSetHiliteRGB(const RGBColor* hiliteRGBValue);

// Where patterns begin, in the current port's local coordinates; (0,0) in a new port.
Point* QDGetPatternOrigin(Point* origin);
void QDSetPatternOrigin(Point origin);

// Colour tables
// ----------------------------------------------------------------------------------------------

// GetCTable
//
// A new table: of a depth (1, 2, 4 and 8), its greys (depth + 32), its colours with the highlight colour
// among them (depth + 64, from 2 on), the eight old colours (127), or what a 'clut' resource holds.
//
// Ownership:  the caller's; release it with DisposeCTable.
// Errors:     NULL without such a table, or with one that is too short or longer than 256 entries. QDError
//             answers cResErr or paramErr.
// Source:     [IM-QD, documented]; the highlight colour takes the place of the nearest one [ours]
CTabHandle GetCTable(short ctID);
void DisposeCTable(CTabHandle cTable);
SInt32 GetCTSeed(void);            // never the same twice
void CTabChanged(CTabHandle ctab); // to be called after a change of entries
void PixPatChanged(PixPatHandle ppat);
void PortChanged(GrafPtr port);
void GDeviceChanged(GDHandle gdh);

// What the current device makes of colours: an index of its table, or a direct pixel.
SInt32 Color2Index(const RGBColor* myColor);
void Index2Color(SInt32 index, RGBColor* aColor);
Boolean RealColor(const RGBColor* color);
void InvertColor(RGBColor* myColor);

// Puts into each value of myColors the index of its colour in targetTbl (NULL: the current device's). The
// resolution of the published inverse tables is of no use: the nearest colour is found exactly.
void GetSubTable(CTabHandle myColors, short iTabRes, CTabHandle targetTbl);

// Entries of the current device's table; nothing happens on a direct device. With a start of -1 each entry
// goes to the index in its value. count is the number of entries - 1.
void SetEntries(short start, short count, ColorSpec* aTable);
void SaveEntries(CTabHandle srcTable, CTabHandle resultTable, ReqListRec* selection);
void RestoreEntries(CTabHandle srcTable, CTabHandle dstTable, ReqListRec* selection);

// Devices of the application's own
// ---------------------------------------------------------------------------------------

// NewGDevice
//
// A device without a driver, whose pixel map (without pixels) and rectangle the application fills in. refNum
// is kept; mode is -1, since there are no drivers to be initialised.
//
// Ownership:  the caller's; release it with DisposeGDevice. A current device that is disposed of gives way to
//             the main one. The main device and those of worlds are left alone.
// Errors:     NULL for other modes, and QDError answers cDevErr
GDHandle NewGDevice(short refNum, SInt32 mode);
void DisposeGDevice(GDHandle gdh);
void SetDeviceAttribute(GDHandle gdh, short attribute, Boolean value); // of a device of the application's own

// Whether the screen can have a depth: the mode's number, or 0. The main device has depth 32 and no other.
// whichFlags and flags say whether it must be in colour (1 << gdDevType).
short HasDepth(GDHandle gd, short depth, short whichFlags, short flags);
OSErr SetDepth(GDHandle gd, short depth, short whichFlags, short flags); // paramErr for what HasDepth denies

// Pixel maps of the application's own
// ------------------------------------------------------------------------

// NewPixMap answers a map without pixels, like the current device's, and with an empty table that belongs to
// it. CopyPixMap copies the table too.
PixMapHandle NewPixMap(void);
void DisposePixMap(PixMapHandle pm); // and its table; a port's map is left alone
void CopyPixMap(PixMapHandle srcPM, PixMapHandle dstPM);

// Pixel patterns
// ---------------------------------------------------------------------------------------------

PixPatHandle NewPixPat(void); // type 1, 8 x 8, without pixels
void DisposePixPat(PixPatHandle pp);
void CopyPixPat(PixPatHandle srcPP, PixPatHandle dstPP);
void MakeRGBPat(PixPatHandle pp, const RGBColor* myColor);

// GetPixPat
//
// A new pattern from a 'ppat' resource, of any published type. Its width and height are powers of two, up
// to 1,024.
//
// Ownership:  the caller's; release it with DisposePixPat.
// Errors:     NULL without such a resource (resNotFound), or for one that is too short or no pattern
//             (paramErr), as QDError answers.
// Source:     [IM-QD, documented]; the greatest size [ours]
PixPatHandle GetPixPat(short patID);

// The port keeps the reference. When the pattern is disposed of, its pat1Data as it was serves instead.
void PenPixPat(PixPatHandle pp);
void BackPixPat(PixPatHandle pp);
PixPatHandle GetPortPenPixPat(CGrafPtr port, PixPatHandle penPattern); // copies into penPattern
PixPatHandle GetPortBackPixPat(CGrafPtr port, PixPatHandle backPattern);
void SetPortPenPixPat(CGrafPtr port, PixPatHandle penPattern);
void SetPortBackPixPat(CGrafPtr port, PixPatHandle backPattern);

void FillCRect(const Rect* r, PixPatHandle pp);
void FillCOval(const Rect* r, PixPatHandle pp);
void FillCRoundRect(const Rect* r, short ovalWidth, short ovalHeight, PixPatHandle pp);
void FillCArc(const Rect* r, short startAngle, short arcAngle, PixPatHandle pp);
void FillCRgn(RgnHandle rgn, PixPatHandle pp);
void FillCPoly(PolyHandle poly, PixPatHandle pp);

// Conversion between kinds of colour
// -------------------------------------------------------------------------

SmallFract Fix2SmallFract(Fixed f); // the fraction of f; 1.0 and above are MaxSmallFract
Fixed SmallFract2Fix(SmallFract s);
void CMY2RGB(const CMYColor* cColor, RGBColor* rColor);
void RGB2CMY(const RGBColor* rColor, CMYColor* cColor);
void HSL2RGB(const HSLColor* hColor, RGBColor* rColor);
void RGB2HSL(const RGBColor* rColor, HSLColor* hColor);
void HSV2RGB(const HSVColor* hColor, RGBColor* rColor);
void RGB2HSV(const RGBColor* rColor, HSVColor* hColor);

LAMPBLACK_END_C

#endif
