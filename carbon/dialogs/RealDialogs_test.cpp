// Dialogs that others made: each is made and drawn, and its icons and pictures leave a mark.
#include "dialogs/DialogRecord.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Resources.h>
#include <quickdraw/Port.h>

#include <RealResourceFile.h>
#include <doctest/doctest.h>

#include <algorithm>

using namespace lampblack;
using dialogs::Dialog;
using dialogs::Item;

namespace {

std::vector<SInt16> DialogIDs()
{
    std::vector<SInt16> ids;
    for (SInt16 index = 1; index <= Count1Resources('DLOG'); ++index) {
        SInt16 id = 0;
        ResType type = 0;
        Str255 name;
        GetResInfo(Get1IndResource('DLOG', index), &id, &type, name);
        ids.push_back(id);
    }
    return ids;
}

// Whether there is anything but the background in the part of a box that is in the window.
bool HasMark(WindowRef inWindow, Rect inBox)
{
    const quickdraw::PixelView view = quickdraw::PortPixels(GetWindowPort(inWindow));
    if (!SectRect(&inBox, &view.bounds, &inBox))
        return false;
    RGBColor background;
    GetThemeBrushAsColor(kThemeBrushDialogBackgroundActive, 32, true, &background);
    const uint32_t blank =
        (uint32_t)(background.red >> 8) << 16 | (uint32_t)(background.green >> 8) << 8 | background.blue >> 8;
    for (int v = inBox.top; v < inBox.bottom; ++v)
        for (int h = inBox.left; h < inBox.right; ++h)
            if ((view.base[(long)v * view.rowPixels + h] & 0xFFFFFF) != blank)
                return true;
    return false;
}

struct Tally {
    int dialogs = 0, images = 0, marks = 0;
};

void Count(DialogRef inDialog, Tally& ioTally)
{
    Dialog* dialog = dialogs::Find(inDialog);
    for (const Item& item : dialog->items) {
        if (!item.view || !(item.handle || item.systemIcon) || EmptyRect(&item.box))
            continue;
        ++ioTally.images;
        ioTally.marks += HasMark(dialog->window, item.box);
    }
}

Tally Draw(const std::string& inFile)
{
    Tally tally;
    const RealResourceFile file(inFile);
    if (!file.IsOpen())
        return tally;
    for (const SInt16 id : DialogIDs()) {
        CAPTURE(id);
        const DialogRef dialog = GetNewDialog(id, nullptr, (WindowRef)-1);
        CHECK(dialog);
        if (!dialog)
            continue;
        ShowWindow(GetDialogWindow(dialog));
        DrawDialog(dialog);
        ++tally.dialogs;
        Count(dialog, tally);
        DisposeDialog(dialog);
    }
    return tally;
}

} // namespace

TEST_CASE("Real dialogs: all are made and drawn, with their icons and pictures")
{
    struct Expected {
        const char* file;
        int dialogs, images, marks;
    };
    // One picture of the first file lies beside its window.
    for (const Expected& expected :
         { Expected{ "playerpro/General.rsrc", 79, 144, 143 }, Expected{ "macssh/telnet.rsrc", 42, 19, 19 },
           Expected{ "pararena2/Pararena.project.rsrc.bin", 14, 12, 12 },
           Expected{ "alephone/marathon2.resource", 26, 3, 3 }, Expected{ "avara/single-player.r", 8, 5, 5 },
           Expected{ "playerpro/ToneGenerator.rsrc", 1, 4, 4 },
           Expected{ "filie/Resources.rsrc", 1, 1, 1 } }) {
        CAPTURE(std::string(expected.file));
        const Tally tally = Draw(expected.file);
        if (tally.dialogs == 0)
            continue; // the files are not here
        CHECK(tally.dialogs == expected.dialogs);
        CHECK(tally.images == expected.images);
        CHECK(tally.marks >= expected.marks);
    }
}
