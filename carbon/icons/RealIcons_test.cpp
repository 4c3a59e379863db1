// Icons that others made: all of them are drawn. LAMPBLACK_ICONSHEET=file.png writes a picture of them.
#include "icons/TestIcons.h"

#include <RealResourceFile.h>
#include <cstdlib>
#include <png.h>

using namespace lampblack::icons;

namespace {

bool Save(CGrafPtr inPort, const char* inPath)
{
    const lampblack::quickdraw::PixelView view = lampblack::quickdraw::PortPixels(inPort);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = (png_uint_32)(view.bounds.right - view.bounds.left);
    image.height = (png_uint_32)(view.bounds.bottom - view.bounds.top);
    image.format = PNG_FORMAT_BGRA;
    std::vector<uint32_t> opaque;
    for (png_uint_32 v = 0; v < image.height; ++v)
        for (png_uint_32 h = 0; h < image.width; ++h)
            opaque.push_back(view.base[(int)v * view.rowPixels + (int)h] | 0xFF000000);
    return png_image_write_to_file(&image, inPath, 0, opaque.data(), 0, nullptr);
}

// Draws icons in cells, from the top left; counts those that left a mark.
struct Sheet {
    static constexpr int kSide = 40, kColumns = 24;

    Rect NextCell()
    {
        const int left = cells % kColumns * kSide + 4, top = cells / kColumns % 20 * kSide + 4;
        ++cells;
        return MakeRect(left, top, left + 32, top + 32);
    }

    Backdrop port{ kColumns * kSide, 20 * kSide };
    int cells = 0;
};

using PlotCall = OSErr (*)(const Rect&, SInt16 inID);

OSErr PlotByID(const Rect& inRect, SInt16 inID)
{
    return PlotIconID(&inRect, kAlignAbsoluteCenter, kTransformNone, inID);
}

OSErr PlotColored(const Rect& inRect, SInt16 inID)
{
    const CIconHandle icon = GetCIcon(inID);
    const OSErr error = PlotCIconHandle(&inRect, kAlignAbsoluteCenter, kTransformNone, icon);
    DisposeCIcon(icon);
    return error;
}

OSErr PlotOld(const Rect& inRect, SInt16 inID)
{
    const Handle icon = GetIcon(inID);
    PlotIcon(&inRect, icon);
    return icon ? noErr : resNotFound;
}

OSErr PlotFamily(const Rect& inRect, SInt16 inID)
{
    IconRef icon = nullptr;
    const auto family = reinterpret_cast<IconFamilyHandle>(GetResource('icns', inID));
    OSErr error = RegisterIconRefFromIconFamily('TEST', 'icon', family, &icon);
    if (error == noErr)
        error = PlotIconRef(&inRect, kAlignAbsoluteCenter, kTransformNone, 0, icon);
    ReleaseIconRef(icon);
    UnregisterIconRef('TEST', 'icon');
    return error;
}

int PlotAll(Sheet& ioSheet, OSType inType, PlotCall inPlot)
{
    int failed = 0;
    for (SInt16 i = 1; i <= Count1Resources(inType); ++i) {
        SInt16 id = 0;
        GetResInfo(Get1IndResource(inType, i), &id, nullptr, nullptr);
        failed += inPlot(ioSheet.NextCell(), id) != noErr;
    }
    return failed;
}

} // namespace

TEST_CASE("Real icons: every suite, colour icon, plain icon and family is drawn")
{
    Sheet sheet;
    bool isAny = false;
    for (const char* name :
         { "vim/os_mac.rsr.hqx", "macperl/MacPerl.rsrc.hqx", "pararena2/Pararena.project.rsrc.bin",
           "avara/single-player.r", "playerpro/General.rsrc", "alephone/marathon2.resource",
           "macssh/telnet.rsrc" }) {
        const RealResourceFile file(name);
        if (!file.IsOpen())
            continue;
        isAny = true;
        const std::string shown = name;
        CAPTURE(shown);
        CHECK(PlotAll(sheet, 'ICN#', PlotByID) == 0);
        CHECK(PlotAll(sheet, 'cicn', PlotColored) == 0);
        CHECK(PlotAll(sheet, 'ICON', PlotOld) == 0);
        CHECK(PlotAll(sheet, 'icns', PlotFamily) == 0);
    }
    CHECK((!isAny || sheet.cells > 250));
    if (const char* path = std::getenv("LAMPBLACK_ICONSHEET"))
        CHECK(Save(sheet.port.port, path));
}
