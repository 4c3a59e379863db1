// The data of drags: items, flavors, promises, and what is refused.
#include <Carbon/Drag.h>
#include <Carbon/Files.h>
#include <doctest/doctest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

struct Drag {
    DragRef ref = nullptr;

    Drag() { REQUIRE(NewDrag(&ref) == noErr); }
    ~Drag() { DisposeDrag(ref); }
    operator DragRef() const { return ref; }

    OSErr Add(DragItemRef inItem, FlavorType inType, const char* inText, FlavorFlags inFlags = 0)
    {
        return AddDragItemFlavor(ref, inItem, inType, inText, inText ? (Size)std::strlen(inText) : 0,
                                 inFlags);
    }
    std::string Data(DragItemRef inItem, FlavorType inType, Size inRoom = 100, UInt32 inOffset = 0)
    {
        std::string text(100, '#');
        Size size = inRoom;
        const OSErr err = GetFlavorData(ref, inItem, inType, text.data(), &size, inOffset);
        return err == noErr ? text.substr(0, (size_t)size) : std::to_string(err);
    }
};

std::vector<std::pair<FlavorType, DragItemRef>> gSent;

OSErr Send(FlavorType inType, void* inData, DragItemRef inItem, DragRef inDrag)
{
    gSent.push_back({ inType, inItem });
    const char* text = static_cast<const char*>(inData);
    return SetDragItemFlavorData(inDrag, inItem, inType, text, (Size)std::strlen(text), 0);
}

OSErr SendNothing(FlavorType, void*, DragItemRef, DragRef)
{
    return noErr;
}

OSErr SendError(FlavorType inType, void* inData, DragItemRef inItem, DragRef inDrag)
{
    Send(inType, inData, inItem, inDrag);
    return ioErr;
}

OSErr SendWhatItAsksFor(FlavorType inType, void*, DragItemRef inItem, DragRef inDrag)
{
    Size size = 0;
    return GetFlavorDataSize(inDrag, inItem, inType, &size);
}

OSErr SendAndDispose(FlavorType inType, void* inData, DragItemRef inItem, DragRef inDrag)
{
    Send(inType, inData, inItem, inDrag);
    return DisposeDrag(inDrag);
}

OSErr SendAndAddMany(FlavorType inType, void* inData, DragItemRef inItem, DragRef inDrag)
{
    for (DragItemRef item = 1000; item < 1100; ++item)
        AddDragItemFlavor(inDrag, item, 'more', "x", 1, 0);
    return Send(inType, inData, inItem, inDrag);
}

} // namespace

TEST_CASE("AddDragItemFlavor: items in the order of their first flavors, flavors in theirs")
{
    Drag drag;
    CHECK(drag.Add(77, 'TEXT', "seventy-seven") == noErr);
    CHECK(drag.Add(5, 'TEXT', "five", flavorSenderOnly) == noErr);
    CHECK(drag.Add(77, 'utf8', "more") == noErr);
    UInt16 count = 0;
    DragItemRef item = 0;
    FlavorType type = 0;
    FlavorFlags flags = 9;
    CHECK(CountDragItems(drag, &count) == noErr);
    CHECK(count == 2);
    CHECK(GetDragItemReferenceNumber(drag, 1, &item) == noErr);
    CHECK(item == 77);
    CHECK(GetDragItemReferenceNumber(drag, 2, &item) == noErr);
    CHECK(item == 5);
    CHECK(CountDragItemFlavors(drag, 77, &count) == noErr);
    CHECK(count == 2);
    CHECK(GetFlavorType(drag, 77, 2, &type) == noErr);
    CHECK(type == 'utf8');
    CHECK(GetFlavorFlags(drag, 77, 'utf8', &flags) == noErr);
    CHECK(flags == 0);
    CHECK(GetFlavorFlags(drag, 5, 'TEXT', &flags) == noErr);
    CHECK(flags == flavorSenderOnly);
    CHECK(drag.Data(5, 'TEXT') == "five");
}

TEST_CASE("AddDragItemFlavor: a flavor twice is refused and the first one stays")
{
    Drag drag;
    drag.Add(1, 'TEXT', "first");
    CHECK(drag.Add(1, 'TEXT', "second") == duplicateFlavorErr);
    CHECK(drag.Data(1, 'TEXT') == "first");
    CHECK(drag.Add(2, 'TEXT', "other item") == noErr);
}

TEST_CASE("AddDragItemFlavor: bad sizes")
{
    Drag drag;
    UInt16 count = 9;
    CHECK(AddDragItemFlavor(drag, 1, 'TEXT', "abc", -1, 0) == paramErr);
    CHECK(AddDragItemFlavor(drag, 1, 'TEXT', nullptr, -1, 0) == paramErr);
    CHECK(AddDragItemFlavor(drag, 1, 'TEXT', "abc", Size(1) << 40, 0) == memFullErr);
    CHECK(CountDragItems(drag, &count) == noErr);
    CHECK(count == 0);
}

TEST_CASE("GetFlavorData: from an offset, into the room there is, never behind the end")
{
    Drag drag;
    drag.Add(1, 'TEXT', "abcdef");
    CHECK(drag.Data(1, 'TEXT') == "abcdef");
    CHECK(drag.Data(1, 'TEXT', 2) == "ab");
    CHECK(drag.Data(1, 'TEXT', 2, 3) == "de");
    CHECK(drag.Data(1, 'TEXT', 100, 4) == "ef");
    CHECK(drag.Data(1, 'TEXT', 100, 6) == "");
    CHECK(drag.Data(1, 'TEXT', 100, 0xFFFFFFFF) == "");
    CHECK(drag.Data(1, 'TEXT', 0) == "");
    char out[] = "####";
    Size size = 2;
    GetFlavorData(drag, 1, 'TEXT', out, &size, 0);
    CHECK(std::string(out) == "ab##");
}

TEST_CASE("GetFlavorData: without room it says how much there would be; GetFlavorDataSize says all")
{
    Drag drag;
    drag.Add(1, 'TEXT', "abcdef");
    Size size = 1;
    CHECK(GetFlavorData(drag, 1, 'TEXT', nullptr, &size, 2) == noErr);
    CHECK(size == 4);
    CHECK(GetFlavorDataSize(drag, 1, 'TEXT', &size) == noErr);
    CHECK(size == 6);
    CHECK(GetFlavorData(drag, 1, 'TEXT', nullptr, nullptr, 0) == paramErr);
    size = -1;
    CHECK(GetFlavorData(drag, 1, 'TEXT', nullptr, &size, 0) == paramErr);
}

TEST_CASE("SetDragSendProc: a promise is kept once, when it is wanted")
{
    Drag drag;
    char text[] = "delivered";
    FlavorFlags flags = 0;
    gSent.clear();
    drag.Add(3, 'TEXT', nullptr);
    CHECK(SetDragSendProc(drag, NewDragSendDataUPP(Send), text) == noErr);
    GetFlavorFlags(drag, 3, 'TEXT', &flags);
    CHECK(flags == flavorDataPromised);
    CHECK(gSent.empty());
    Size size = 0;
    CHECK(GetFlavorDataSize(drag, 3, 'TEXT', &size) == noErr);
    CHECK(size == 9);
    CHECK(drag.Data(3, 'TEXT') == "delivered");
    CHECK(gSent == std::vector<std::pair<FlavorType, DragItemRef>>{ { 'TEXT', 3 } });
    GetFlavorFlags(drag, 3, 'TEXT', &flags);
    CHECK(flags == 0);
}

TEST_CASE("SetDragSendProc: a promise that nobody keeps")
{
    Drag drag;
    char text[] = "text";
    drag.Add(1, 'TEXT', nullptr);
    CHECK(drag.Data(1, 'TEXT') == std::to_string(cantGetFlavorErr));
    for (const DragSendDataUPP sender : { SendNothing, SendWhatItAsksFor, SendError }) {
        SetDragSendProc(drag, sender, text);
        CHECK(drag.Data(1, 'TEXT') == std::to_string(cantGetFlavorErr));
    }
    SetDragSendProc(drag, nullptr, nullptr);
    CHECK(SetDragItemFlavorData(drag, 1, 'TEXT', "", 0, 0) == noErr);
    CHECK(drag.Data(1, 'TEXT') == "");
}

TEST_CASE("SetDragSendProc: a sender that changes the drag or disposes of it does no harm")
{
    char text[] = "text";
    Drag drag;
    drag.Add(1, 'TEXT', nullptr);
    SetDragSendProc(drag, SendAndAddMany, text);
    CHECK(drag.Data(1, 'TEXT') == "text");
    Drag gone;
    gone.Add(1, 'TEXT', nullptr);
    SetDragSendProc(gone, SendAndDispose, text);
    CHECK(gone.Data(1, 'TEXT') == std::to_string(badDragRefErr));
}

TEST_CASE("SetDragItemFlavorData: pieces, with zeros where none is")
{
    Drag drag;
    drag.Add(1, 'TEXT', nullptr);
    CHECK(SetDragItemFlavorData(drag, 1, 'TEXT', "cd", 2, 2) == noErr);
    CHECK(drag.Data(1, 'TEXT') == std::string("\0\0cd", 4));
    CHECK(SetDragItemFlavorData(drag, 1, 'TEXT', "ab", 2, 0) == noErr);
    CHECK(drag.Data(1, 'TEXT') == "abcd");
    CHECK(SetDragItemFlavorData(drag, 1, 'TEXT', nullptr, 2, 0) == paramErr);
    CHECK(SetDragItemFlavorData(drag, 1, 'TEXT', "x", -1, 0) == paramErr);
    CHECK(SetDragItemFlavorData(drag, 1, 'TEXT', "x", 1, 0xFFFFFFFF) == memFullErr);
    CHECK(SetDragItemFlavorData(drag, 1, 'none', "x", 1, 0) == badDragFlavorErr);
}

TEST_CASE("HFSFlavor, PromiseHFSFlavor: a promised file as a receiver reads it")
{
    Drag drag;
    FSSpec spec = {};
    spec.vRefNum = -1;
    spec.parID = 2;
    std::memcpy(spec.name, "\4File", 5);
    const PromiseHFSFlavor promise = { 'TEXT', 'ttxt', 0, kDragPromisedFlavorFindFile };
    AddDragItemFlavor(drag, 1, kDragFlavorTypePromiseHFS, &promise, sizeof promise, flavorNotSaved);
    AddDragItemFlavor(drag, 1, kDragPromisedFlavorFindFile, &spec, sizeof spec, flavorNotSaved);
    PromiseHFSFlavor read = {};
    FSSpec readSpec = {};
    Size size = sizeof read;
    CHECK(GetFlavorData(drag, 1, 'phfs', &read, &size, 0) == noErr);
    CHECK(size == 14);
    size = sizeof readSpec;
    CHECK(GetFlavorData(drag, 1, read.promisedFlavor, &readSpec, &size, 0) == noErr);
    CHECK(size == 70);
    CHECK(+readSpec.parID == 2);
    CHECK(readSpec.name[4] == 'e');
}

TEST_CASE("Bounds of items: empty until they are set")
{
    Drag drag;
    drag.Add(1, 'TEXT', "a");
    Rect bounds = { 1, 1, 1, 1 };
    CHECK(GetDragItemBounds(drag, 1, &bounds) == noErr);
    CHECK((bounds.top == 0 && bounds.left == 0 && bounds.bottom == 0 && bounds.right == 0));
    const Rect wanted = { 10, 20, 30, 40 };
    CHECK(SetDragItemBounds(drag, 1, &wanted) == noErr);
    CHECK(GetDragItemBounds(drag, 1, &bounds) == noErr);
    CHECK(std::memcmp(&bounds, &wanted, sizeof bounds) == 0);
}

TEST_CASE("GetDropLocation: null before, then a copy of its own")
{
    Drag drag;
    AEDesc place, back;
    CHECK(GetDropLocation(drag, &back) == noErr);
    CHECK(back.descriptorType == typeNull);
    AECreateDesc(typeAlias, "alias", 5, &place);
    CHECK(SetDropLocation(drag, &place) == noErr);
    AEDisposeDesc(&place);
    CHECK(SetDropLocation(drag, &place) == noErr); // a null one again
    AECreateDesc(typeAlias, "alias", 5, &place);
    SetDropLocation(drag, &place);
    const AEDesc stale = place;
    AEDisposeDesc(&place);
    CHECK(SetDropLocation(drag, &stale) == errAENotAEDesc);
    CHECK(GetDropLocation(drag, &back) == noErr);
    CHECK(back.descriptorType == typeAlias);
    CHECK(AEGetDescDataSize(&back) == 5);
    AEDisposeDesc(&back);
    CHECK(GetDropLocation(drag, nullptr) == paramErr);
}

TEST_CASE("Drags: items, flavors and indices that are not there")
{
    Drag drag;
    drag.Add(1, 'TEXT', "a");
    UInt16 count = 0;
    DragItemRef item = 0;
    FlavorType type = 0;
    FlavorFlags flags = 0;
    Size size = 0;
    Rect bounds = {};
    CHECK(GetDragItemReferenceNumber(drag, 0, &item) == badDragItemErr);
    CHECK(GetDragItemReferenceNumber(drag, 2, &item) == badDragItemErr);
    CHECK(CountDragItemFlavors(drag, 2, &count) == badDragItemErr);
    CHECK(GetFlavorType(drag, 2, 1, &type) == badDragItemErr);
    CHECK(GetFlavorType(drag, 1, 0, &type) == badDragFlavorErr);
    CHECK(GetFlavorType(drag, 1, 2, &type) == badDragFlavorErr);
    CHECK(GetFlavorFlags(drag, 1, 'phfs', &flags) == badDragFlavorErr);
    CHECK(GetFlavorFlags(drag, 2, 'TEXT', &flags) == badDragItemErr);
    CHECK(GetFlavorDataSize(drag, 1, 'phfs', &size) == badDragFlavorErr);
    CHECK(GetFlavorData(drag, 2, 'TEXT', nullptr, &size, 0) == badDragItemErr);
    CHECK(GetDragItemBounds(drag, 2, &bounds) == badDragItemErr);
    CHECK(SetDragItemBounds(drag, 2, &bounds) == badDragItemErr);
}

TEST_CASE("Drags: null, disposed and foreign ones")
{
    DragRef disposed = nullptr;
    NewDrag(&disposed);
    DisposeDrag(disposed);
    static int foreign[64];
    for (const DragRef bad :
         { static_cast<DragRef>(nullptr), disposed, reinterpret_cast<DragRef>(foreign) }) {
        UInt16 count = 9;
        DragItemRef item = 0;
        FlavorType type = 0;
        FlavorFlags flags = 0;
        Size size = 0;
        Rect bounds = {};
        AEDesc desc;
        CHECK(DisposeDrag(bad) == badDragRefErr);
        CHECK(AddDragItemFlavor(bad, 1, 'TEXT', "a", 1, 0) == badDragRefErr);
        CHECK(SetDragItemFlavorData(bad, 1, 'TEXT', "a", 1, 0) == badDragRefErr);
        CHECK(SetDragSendProc(bad, Send, nullptr) == badDragRefErr);
        CHECK(CountDragItems(bad, &count) == badDragRefErr);
        CHECK(count == 0);
        CHECK(GetDragItemReferenceNumber(bad, 1, &item) == badDragRefErr);
        CHECK(CountDragItemFlavors(bad, 1, &count) == badDragRefErr);
        CHECK(GetFlavorType(bad, 1, 1, &type) == badDragRefErr);
        CHECK(GetFlavorFlags(bad, 1, 'TEXT', &flags) == badDragRefErr);
        CHECK(GetFlavorDataSize(bad, 1, 'TEXT', &size) == badDragRefErr);
        CHECK(GetFlavorData(bad, 1, 'TEXT', nullptr, &size, 0) == badDragRefErr);
        CHECK(GetDragItemBounds(bad, 1, &bounds) == badDragRefErr);
        CHECK(SetDragItemBounds(bad, 1, &bounds) == badDragRefErr);
        CHECK(GetDropLocation(bad, &desc) == badDragRefErr);
        CHECK(SetDropLocation(bad, &desc) == badDragRefErr);
    }
    CHECK(NewDrag(nullptr) == paramErr);
}
