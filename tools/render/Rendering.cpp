#include "Dialogs.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>

namespace lampblack::render {

namespace {

using Draw = std::function<void()>; // into the current port

constexpr RGBColor kWhite = { 0xFFFF, 0xFFFF, 0xFFFF }, kBlack = { 0, 0, 0 };

// A drawing on paper of one colour, and its pixels.
class Sheet {
public:
    Sheet() { GetGWorld(&fPort, &fDevice); }
    ~Sheet()
    {
        SetGWorld(fPort, fDevice);
        DisposeGWorld(fWorld);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    OSStatus Paint(const Rect& inBounds, const RGBColor& inPaper, const Draw& inDraw)
    {
        if (const QDErr error = NewGWorld(&fWorld, 32, &inBounds, nullptr, nullptr, 0))
            return error;
        SetGWorld(fWorld, nullptr);
        RGBBackColor(&inPaper);
        EraseRect(&inBounds);
        RGBBackColor(&kWhite);
        inDraw();
        return noErr;
    }
    const uint32_t* Row(int inRow) const
    {
        const PixMapHandle map = GetGWorldPixMap(fWorld);
        return reinterpret_cast<const uint32_t*>(GetPixBaseAddr(map) + (long)inRow * GetPixRowBytes(map));
    }

private:
    GWorldPtr fWorld = nullptr;
    CGrafPtr fPort;
    GDHandle fDevice;
};

// What is as bright on black paper as on white is opaque.
uint32_t WithAlpha(uint32_t inOnWhite, uint32_t inOnBlack)
{
    int difference = 255;
    for (const int shift : { 16, 8, 0 })
        difference =
            std::min(difference, (int)(inOnWhite >> shift & 0xFF) - (int)(inOnBlack >> shift & 0xFF));
    const int alpha = 255 - std::clamp(difference, 0, 255);
    if (alpha == 0)
        return 0;
    uint32_t pixel = (uint32_t)alpha << 24;
    for (const int shift : { 16, 8, 0 })
        pixel |= (uint32_t)std::min(255, (int)(inOnBlack >> shift & 0xFF) * 255 / alpha) << shift;
    return pixel;
}

// One of the columns of which a wide drawing is put together.
OSStatus DrawColumn(const Rect& inColumn, const Draw& inDraw, Image* ioImage)
{
    Sheet white;
    if (const OSStatus status = white.Paint(inColumn, kWhite, inDraw))
        return status;
    for (int v = 0; v < ioImage->height; ++v) {
        uint32_t* to = ioImage->pixels.data() + (size_t)v * (size_t)ioImage->width + inColumn.left;
        for (int h = 0; h < inColumn.right - inColumn.left; ++h)
            to[h] = 0xFF000000 | white.Row(v)[h];
    }
    return noErr;
}

// At the origin. No world is as wide as a picture may be.
OSStatus OnPaper(const Rect& inBounds, const Draw& inDraw, Image* outImage)
{
    static constexpr int kWidest = 4000;
    static constexpr int64_t kMostPixels = 1 << 27;
    *outImage = { inBounds.right, inBounds.bottom, {} };
    if (EmptyRect(&inBounds)) // beyond all coordinates
        return paramErr;
    if ((int64_t)outImage->width * outImage->height > kMostPixels)
        return memFullErr;
    outImage->pixels.resize((size_t)outImage->width * (size_t)outImage->height);
    for (int left = 0; left < outImage->width; left += kWidest) {
        const Rect column = { 0, (short)left, inBounds.bottom,
                              (short)std::min(left + kWidest, (int)inBounds.right) };
        if (const OSStatus status = DrawColumn(column, inDraw, outImage))
            return status;
    }
    return noErr;
}

OSStatus Transparent(const Rect& inBounds, const Draw& inDraw, Image* outImage)
{
    Sheet white, black;
    OSStatus status = white.Paint(inBounds, kWhite, inDraw);
    if (!status)
        status = black.Paint(inBounds, kBlack, inDraw);
    if (status)
        return status;
    *outImage = { inBounds.right - inBounds.left, inBounds.bottom - inBounds.top, {} };
    for (int v = 0; v < outImage->height; ++v)
        for (int h = 0; h < outImage->width; ++h)
            outImage->pixels.push_back(WithAlpha(white.Row(v)[h], black.Row(v)[h]));
    return noErr;
}

Rect Square(short inSize)
{
    return { 0, 0, inSize, inSize };
}

OSStatus RenderPicture(ResType, short inID, Image* outImage)
{
    const PicHandle picture = GetPicture(inID);
    Rect frame;
    if (!picture || EmptyRect(QDGetPictureBounds(picture, &frame)))
        return paramErr;
    OffsetRect(&frame, (short)-frame.left, (short)-frame.top);
    return OnPaper(
        frame, [&] { DrawPicture(picture, &frame); }, outImage);
}

OSStatus RenderColorIcon(ResType, short inID, Image* outImage)
{
    const CIconHandle icon = GetCIcon(inID);
    if (!icon)
        return paramErr;
    Rect bounds = (**icon).iconPMap.bounds;
    OffsetRect(&bounds, (short)-bounds.left, (short)-bounds.top);
    const OSStatus status = Transparent(
        bounds, [&] { PlotCIcon(&bounds, icon); }, outImage);
    DisposeCIcon(icon);
    return status;
}

OSStatus RenderIcon(ResType, short inID, Image* outImage)
{
    const Handle icon = GetIcon(inID);
    if (!icon)
        return paramErr;
    const Rect bounds = Square(32);
    return OnPaper(
        bounds, [&] { PlotIcon(&bounds, icon); }, outImage);
}

struct FamilyMember {
    ResType type, maskType;
    short width, height;
};
constexpr FamilyMember kFamily[] = {
    { 'ICN#', 'ICN#', 32, 32 }, { 'icl4', 'ICN#', 32, 32 }, { 'icl8', 'ICN#', 32, 32 },
    { 'ics#', 'ics#', 16, 16 }, { 'ics4', 'ics#', 16, 16 }, { 'ics8', 'ics#', 16, 16 },
    { 'icm#', 'icm#', 16, 12 }, { 'icm4', 'icm#', 16, 12 }, { 'icm8', 'icm#', 16, 12 },
};

// One member of a family, with the mask that lies in the black-and-white one.
OSStatus RenderFamilyMember(ResType inType, short inID, Image* outImage)
{
    const FamilyMember& member = *std::find_if(std::begin(kFamily), std::end(kFamily),
                                               [=](const FamilyMember& m) { return m.type == inType; });
    IconSuiteRef suite = nullptr;
    OSErr error = NewIconSuite(&suite);
    if (!error)
        error = AddIconToSuite(GetResource(inType, inID), suite, inType);
    const Handle mask = GetResource(member.maskType, inID);
    if (!error && member.maskType != inType && mask)
        error = AddIconToSuite(mask, suite, member.maskType);
    OSStatus status = error;
    const Rect bounds = { 0, 0, member.height, member.width };
    const auto draw = [&] { error = PlotIconSuite(&bounds, kAlignNone, kTransformNone, suite); };
    if (!status)
        status = Transparent(bounds, draw, outImage);
    DisposeIconSuite(suite, false);
    return status ? status : (OSStatus)error;
}

// The largest square that a family has pixels for.
short SideOf(IconFamilyHandle inFamily)
{
    static constexpr struct {
        OSType types[4];
        short side;
    } kSizes[] = {
        { { kThumbnail32BitData }, 128 },
        { { kHuge32BitData, kHuge8BitData, kHuge4BitData, kHuge1BitMask }, 48 },
        { { kLarge32BitData, kLarge8BitData, kLarge4BitData, kLarge1BitMask }, 32 },
    };
    for (const auto& size : kSizes)
        for (const OSType type : size.types) {
            const Handle data = NewHandle(0);
            const bool isThere = type && GetIconFamilyData(inFamily, type, data) == noErr;
            DisposeHandle(data);
            if (isThere)
                return size.side;
        }
    return 16;
}

OSStatus RenderFamily(ResType inType, short inID, Image* outImage)
{
    static constexpr OSType kOwner = 'LBrn';
    const auto family = reinterpret_cast<IconFamilyHandle>(GetResource(inType, inID));
    IconRef icon = nullptr;
    OSErr error = RegisterIconRefFromIconFamily(kOwner, inType, family, &icon);
    const Rect bounds = Square(SideOf(family));
    const auto draw = [&] { error = PlotIconRef(&bounds, kAlignNone, kTransformNone, 0, icon); };
    OSStatus status = error;
    if (!status)
        status = Transparent(bounds, draw, outImage);
    ReleaseIconRef(icon);
    UnregisterIconRef(kOwner, inType);
    return status ? status : (OSStatus)error;
}

// Icons without masks, one below the other.
OSStatus RenderSmallIcons(ResType inType, short inID, Image* outImage)
{
    constexpr Size kIconBytes = 32;
    const Handle icons = GetResource(inType, inID);
    const auto count = (short)std::min<Size>(GetHandleSize(icons) / kIconBytes, 1024);
    if (count < 1)
        return paramErr;
    const Rect bounds = { 0, 0, (short)(16 * count), 16 };
    return OnPaper(
        bounds,
        [&] {
            const BitMap from = { *icons, 2, bounds };
            CopyBits(&from, GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &bounds, &bounds, srcCopy,
                     nullptr);
        },
        outImage);
}

OSStatus RenderCursor(ResType, short inID, Image* outImage)
{
    const CursHandle cursor = GetCursor(inID);
    if (!cursor)
        return paramErr;
    const Rect bounds = Square(16);
    return Transparent(
        bounds,
        [&] {
            Cursor copy = **cursor;
            const BitMap data = { reinterpret_cast<Ptr>(copy.data), 2, bounds };
            const BitMap mask = { reinterpret_cast<Ptr>(copy.mask), 2, bounds };
            CopyMask(&data, &mask, GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &bounds, &bounds,
                     &bounds);
        },
        outImage);
}

OSStatus RenderColorCursor(ResType, short inID, Image* outImage)
{
    const CCrsrHandle cursor = GetCCursor(inID);
    if (!cursor)
        return paramErr;
    const Rect bounds = Square(16);
    const OSStatus status = Transparent(
        bounds,
        [&] {
            PixMap pixels = **(**cursor).crsrMap;
            pixels.baseAddr = *(**cursor).crsrData;
            Bits16 bits;
            std::memcpy(bits, (**cursor).crsrMask, sizeof bits);
            const BitMap mask = { reinterpret_cast<Ptr>(bits), 2, bounds };
            CopyMask(reinterpret_cast<const BitMap*>(&pixels), &mask,
                     GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &bounds, &bounds, &bounds);
        },
        outImage);
    DisposeCCursor(cursor);
    return status;
}

constexpr short kPatternSheet = 64; // pixels each way

OSStatus RenderPattern(ResType, short inID, Image* outImage)
{
    const PatHandle pattern = GetPattern(inID);
    if (!pattern)
        return paramErr;
    const Rect bounds = Square(kPatternSheet);
    return OnPaper(
        bounds,
        [&] {
            const Pattern copy = **pattern;
            FillRect(&bounds, &copy);
        },
        outImage);
}

OSStatus RenderPixelPattern(ResType, short inID, Image* outImage)
{
    const PixPatHandle pattern = GetPixPat(inID);
    if (!pattern)
        return paramErr;
    const Rect bounds = Square(kPatternSheet);
    const OSStatus status = OnPaper(
        bounds, [&] { FillCRect(&bounds, pattern); }, outImage);
    DisposePixPat(pattern);
    return status;
}

struct Renderer {
    ResType type;
    OSStatus (*render)(ResType, short, Image*);
};

constexpr Renderer kRenderers[] = {
    { 'PICT', RenderPicture },      { 'cicn', RenderColorIcon },    { 'ICON', RenderIcon },
    { 'ICN#', RenderFamilyMember }, { 'icl4', RenderFamilyMember }, { 'icl8', RenderFamilyMember },
    { 'ics#', RenderFamilyMember }, { 'ics4', RenderFamilyMember }, { 'ics8', RenderFamilyMember },
    { 'icm#', RenderFamilyMember }, { 'icm4', RenderFamilyMember }, { 'icm8', RenderFamilyMember },
    { 'icns', RenderFamily },       { 'DLOG', RenderDialog },       { 'SICN', RenderSmallIcons },
    { 'CURS', RenderCursor },       { 'crsr', RenderColorCursor },  { 'PAT ', RenderPattern },
    { 'ppat', RenderPixelPattern },
};

} // namespace

std::string KnownTypes()
{
    std::string types;
    for (const Renderer& renderer : kRenderers) {
        types += types.empty() ? "" : ", ";
        for (const int shift : { 24, 16, 8, 0 })
            types += (char)(renderer.type >> shift);
    }
    return types;
}

OSStatus Render(ResType inType, short inID, Image* outImage)
{
    for (const Renderer& renderer : kRenderers)
        if (renderer.type == inType)
            return GetResource(inType, inID) ? renderer.render(inType, inID, outImage)
                                             : (OSStatus)resNotFound;
    return paramErr;
}

OSStatus RenderFile(const FSSpec& inFile, Image* outImage)
{
    GraphicsImportComponent importer = nullptr;
    OSStatus status = GetGraphicsImporterForFile(&inFile, &importer);
    if (status)
        return status;
    Rect bounds;
    status = GraphicsImportGetNaturalBounds(importer, &bounds);
    const auto draw = [&] {
        GraphicsImportSetGWorld(importer, nullptr, nullptr);
        status = GraphicsImportDraw(importer);
    };
    OffsetRect(&bounds, (short)-bounds.left, (short)-bounds.top);
    if (!status) {
        GraphicsImportSetBoundsRect(importer, &bounds);
        const OSStatus drawn = OnPaper(bounds, draw, outImage);
        status = drawn ? drawn : status;
    }
    CloseComponent(importer);
    return status;
}

} // namespace lampblack::render
