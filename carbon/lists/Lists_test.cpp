// Lists: cells, selection, clicks, scrolling, and references that are no lists.
#include <Carbon/Controls.h>
#include <Carbon/Lists.h>
#include <Carbon/MacWindows.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>

#include <string>

using namespace lampblack::host;

namespace {

struct TestList {
    explicit TestList(short inColumns = 1, short inRows = 10)
    {
        const Rect bounds = { 100, 100, 400, 400 };
        CreateNewWindow(kDocumentWindowClass, kWindowStandardHandlerAttribute, &bounds, &fWindow);
        ControlRef root = nullptr;
        CreateRootControl(fWindow, &root);
        ShowWindow(fWindow);
        const Rect view = { 20, 20, 100, 200 };
        const ListBounds data = { 0, 0, inRows, inColumns };
        fList = LNew(&view, &data, { 20, 90 }, 0, fWindow, true, false, false, true);
    }
    ~TestList()
    {
        LDispose(fList);
        ReleaseWindow(fWindow);
    }
    std::string Text(Cell inCell) const
    {
        char bytes[100];
        short length = sizeof bytes;
        LGetCell(bytes, &length, inCell, fList);
        return { bytes, static_cast<size_t>(std::min<short>(length, sizeof bytes)) };
    }
    bool IsSelected(Cell inCell) const { return LGetSelect(false, &inCell, fList); }
    bool Press(short inRow, short inColumn, EventModifiers inModifiers = 0) const
    {
        const Point local = { static_cast<short>(20 + inRow * 20 + 5),
                              static_cast<short>(20 + inColumn * 90 + 5) };
        const Point global = { static_cast<short>(local.v + 100), static_cast<short>(local.h + 100) };
        ReleaseMouse(global);
        return LClick(local, inModifiers, fList);
    }
    WindowRef fWindow = nullptr;
    ListHandle fList = nullptr;
};

} // namespace

TEST_CASE("LSetCell, LAddToCell, LGetCell: bytes come back, and the length says how many there are")
{
    TestList list;
    LSetCell("abc", 3, { 2, 0 }, list.fList);
    LAddToCell("def", 3, { 2, 0 }, list.fList);
    CHECK(list.Text({ 2, 0 }) == "abcdef");
    char two[2];
    short length = 2;
    LGetCell(two, &length, { 2, 0 }, list.fList);
    CHECK(length == 6);
    CHECK(std::string(two, 2) == "ab");
    LClrCell({ 2, 0 }, list.fList);
    CHECK(list.Text({ 2, 0 }).empty());
    LSetCell("x", 1, { 99, 0 }, list.fList);
    CHECK(list.Text({ 99, 0 }).empty());
}

TEST_CASE("LAddRow, LDelRow: cells move with their row")
{
    TestList list(2, 3);
    LSetCell("a", 1, { 1, 1 }, list.fList);
    CHECK(LAddRow(2, 1, list.fList) == 1);
    CHECK(list.Text({ 3, 1 }) == "a");
    LDelRow(1, 0, list.fList);
    CHECK(list.Text({ 2, 1 }) == "a");
    ListBounds bounds;
    GetListDataBounds(list.fList, &bounds);
    CHECK(bounds.bottom == 4);
    LDelRow(0, 0, list.fList);
    GetListDataBounds(list.fList, &bounds);
    CHECK(bounds.bottom == 0);
}

TEST_CASE("LAddColumn, LDelColumn: cells move with their column")
{
    TestList list(2, 2);
    LSetCell("a", 1, { 1, 1 }, list.fList);
    CHECK(LAddColumn(1, 0, list.fList) == 0);
    CHECK(list.Text({ 1, 2 }) == "a");
    LDelColumn(2, 0, list.fList);
    CHECK(list.Text({ 1, 0 }) == "a");
}

TEST_CASE("LGetSelect: with next it finds the first selected cell from there on")
{
    TestList list;
    LSetSelect(true, { 3, 0 }, list.fList);
    LSetSelect(true, { 5, 0 }, list.fList);
    Cell cell = { 0, 0 };
    CHECK(LGetSelect(true, &cell, list.fList));
    CHECK(cell.v == 3);
    cell.v = 4;
    CHECK(LGetSelect(true, &cell, list.fList));
    CHECK(cell.v == 5);
    cell.v = 6;
    CHECK_FALSE(LGetSelect(true, &cell, list.fList));
}

TEST_CASE("LClick: a click selects its cell only; command adds one, shift a block")
{
    TestList list;
    list.Press(0, 0);
    list.Press(2, 0);
    CHECK(list.IsSelected({ 2, 0 }));
    CHECK_FALSE(list.IsSelected({ 0, 0 }));
    CHECK(LLastClick(list.fList).v == 2);
    list.Press(0, 0, cmdKey);
    CHECK(list.IsSelected({ 0, 0 }));
    CHECK(list.IsSelected({ 2, 0 }));
    list.Press(3, 0, shiftKey);
    CHECK(list.IsSelected({ 1, 0 }));
    CHECK(list.IsSelected({ 3, 0 }));
}

TEST_CASE("LClick: with lOnlyOne command and shift select one cell as well")
{
    TestList list;
    SetListSelectionFlags(list.fList, lOnlyOne);
    list.Press(0, 0);
    list.Press(2, 0, cmdKey);
    list.Press(3, 0, shiftKey);
    CHECK_FALSE(list.IsSelected({ 0, 0 }));
    CHECK_FALSE(list.IsSelected({ 2, 0 }));
    CHECK(list.IsSelected({ 3, 0 }));
}

TEST_CASE("LClick: the second click on one cell is a double click")
{
    TestList list;
    CHECK_FALSE(list.Press(1, 0));
    CHECK(list.Press(1, 0));
    CHECK_FALSE(list.Press(2, 0));
}

TEST_CASE("LScroll: stays within the cells, and the scroll bar follows")
{
    TestList list(1, 10);
    LScroll(0, 3, list.fList);
    ListBounds visible;
    GetListVisibleCells(list.fList, &visible);
    CHECK(visible.top == 3);
    CHECK(GetControl32BitValue(GetListVerticalScrollBar(list.fList)) == 3);
    LScroll(0, 100, list.fList);
    GetListVisibleCells(list.fList, &visible);
    CHECK(visible.top == 6);
    LScroll(0, -32768, list.fList);
    GetListVisibleCells(list.fList, &visible);
    CHECK(visible.top == 0);
}

TEST_CASE("LNew: an empty view, a null window or an unknown definition give no list")
{
    const Rect empty = { 0, 0, 0, 0 }, view = { 0, 0, 50, 50 };
    const ListBounds data = { 0, 0, 1, 1 };
    TestList list;
    CHECK_FALSE(LNew(&empty, &data, { 0, 0 }, 0, list.fWindow, true, false, false, false));
    CHECK_FALSE(LNew(&view, &data, { 0, 0 }, 0, nullptr, true, false, false, false));
    CHECK_FALSE(LNew(&view, &data, { 0, 0 }, 77, list.fWindow, true, false, false, false));
    CHECK_FALSE(LNew(nullptr, &data, { 0, 0 }, 0, list.fWindow, true, false, false, false));
}

TEST_CASE("Lists: null and disposed references do nothing")
{
    ListHandle gone = nullptr;
    {
        TestList list;
        gone = list.fList;
    }
    for (const ListHandle list : { ListHandle(nullptr), gone }) {
        LSetCell("x", 1, { 0, 0 }, list);
        LAddRow(1, 0, list);
        LDispose(list);
        CHECK(GetListPort(list) == nullptr);
        CHECK_FALSE(LClick({ 30, 30 }, 0, list));
    }
}
