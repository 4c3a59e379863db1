// Handles: what each call leaves in the block and in MemError.
#include <Carbon/MacMemory.h>

#include <cstring>
#include <doctest/doctest.h>
#include <memory/HandleBlock.h>
#include <string>
#include <vector>

namespace {

Handle HandleOf(std::string_view inText)
{
    Handle handle = nullptr;
    PtrToHand(inText.data(), &handle, (long)inText.size());
    return handle;
}

std::string TextOf(Handle inHandle)
{
    return std::string(*inHandle, (size_t)GetHandleSize(inHandle));
}

// A handle that was one until now.
Handle DisposedHandle()
{
    const Handle handle = NewHandle(8);
    DisposeHandle(handle);
    return handle;
}

} // namespace

TEST_CASE("NewHandle: a block of no bytes has data, an empty handle has none")
{
    const Handle none = NewHandle(0), empty = NewEmptyHandle();
    CHECK(*none != nullptr);
    CHECK(GetHandleSize(none) == 0);
    CHECK(*empty == nullptr);
    CHECK(GetHandleSize(empty) == 0);
    CHECK(MemError() == noErr);
    DisposeHandle(none);
    DisposeHandle(empty);
}

TEST_CASE("NewHandle: a negative or absurd size is refused with memFullErr")
{
    for (const Size size : { (Size)-1, (Size)0x80000000, (Size)1 << 50 }) {
        CHECK(NewHandle(size) == nullptr);
        CHECK(MemError() == memFullErr);
        CHECK(NewPtr(size) == nullptr);
        CHECK(MemError() == memFullErr);
    }
    OSErr error = noErr;
    CHECK(TempNewHandle(-5, &error) == nullptr);
    CHECK(error == memFullErr);
}

TEST_CASE("NewHandleClear: every byte is zero")
{
    const Handle handle = NewHandleClear(1000);
    CHECK(TextOf(handle) == std::string(1000, '\0'));
    DisposeHandle(handle);
}

TEST_CASE("Every handle call: null, disposed and foreign handles are errors and never faults")
{
    Ptr foreignData = nullptr;
    const struct {
        Handle handle;
        OSErr error;
    } cases[] = { { nullptr, nilHandleErr }, { DisposedHandle(), memWZErr }, { &foreignData, memWZErr } };
    void (*const calls[])(Handle) = { HLock,
                                      HUnlock,
                                      HPurge,
                                      HNoPurge,
                                      HSetRBit,
                                      HClrRBit,
                                      MoveHHi,
                                      HLockHi,
                                      EmptyHandle,
                                      DisposeHandle,
                                      [](Handle h) { GetHandleSize(h); },
                                      [](Handle h) { SetHandleSize(h, 4); },
                                      [](Handle h) { HGetState(h); },
                                      [](Handle h) { HSetState(h, 0); },
                                      [](Handle h) { ReallocateHandle(h, 4); },
                                      [](Handle h) { HandToHand(&h); },
                                      [](Handle h) { PtrToXHand("", h, 0); },
                                      [](Handle h) { HandAndHand(h, h); },
                                      [](Handle h) { PtrAndHand("", h, 0); },
                                      [](Handle h) { Munger(h, 0, "a", 1, "b", 1); } };
    for (const auto& [handle, error] : cases)
        for (const auto call : calls) {
            LMSetMemErr(noErr);
            call(handle);
            CHECK(MemError() == error);
        }
}

TEST_CASE("SetHandleSize: what fits is kept through growing and shrinking")
{
    const Handle handle = HandleOf("abcdef");
    SetHandleSize(handle, 100000);
    CHECK(MemError() == noErr);
    CHECK(GetHandleSize(handle) == 100000);
    SetHandleSize(handle, 3);
    CHECK(TextOf(handle) == "abc");
    SetHandleSize(handle, -1);
    CHECK(MemError() == memFullErr);
    CHECK(TextOf(handle) == "abc");
    DisposeHandle(handle);
}

TEST_CASE("SetHandleSize: a locked block does not move")
{
    const Handle handle = HandleOf("abcdef");
    const Ptr before = *handle;
    HLock(handle);
    SetHandleSize(handle, 100000);
    CHECK(MemError() == memLockedErr);
    SetHandleSize(handle, 2);
    CHECK(MemError() == noErr);
    CHECK(*handle == before);
    CHECK(TextOf(handle) == "ab");
    DisposeHandle(handle);
}

TEST_CASE("HGetState, HSetState: the three bits travel together")
{
    const Handle handle = NewHandle(4);
    HLock(handle);
    HPurge(handle);
    const SInt8 state = HGetState(handle);
    CHECK((UInt8)state == (kHandleLockedMask | kHandlePurgeableMask));
    HUnlock(handle);
    HNoPurge(handle);
    HSetRBit(handle);
    CHECK((UInt8)HGetState(handle) == kHandleIsResourceMask);
    HSetState(handle, state);
    CHECK(HGetState(handle) == state);
    DisposeHandle(handle);
}

TEST_CASE("EmptyHandle, ReallocateHandle: the handle outlives its data")
{
    const Handle handle = HandleOf("abc");
    HLock(handle);
    EmptyHandle(handle);
    CHECK(MemError() == memPurErr);
    HUnlock(handle);
    EmptyHandle(handle);
    CHECK(*handle == nullptr);
    Handle copy = handle;
    CHECK(HandToHand(&copy) == nilHandleErr);
    ReallocateHandle(handle, 7);
    CHECK(GetHandleSize(handle) == 7);
    CHECK(*handle != nullptr);
    DisposeHandle(handle);
}

TEST_CASE("PurgeMem: what is purgeable and unlocked goes, and nothing else")
{
    const Handle purgeable = NewHandle(10), locked = NewHandle(10), kept = NewHandle(10);
    HPurge(purgeable);
    HPurge(locked);
    HLock(locked);
    PurgeMem(1);
    CHECK(*purgeable == nullptr);
    CHECK(*locked != nullptr);
    CHECK(*kept != nullptr);
    for (const Handle handle : { purgeable, locked, kept })
        DisposeHandle(handle);
}

TEST_CASE("RecoverHandle: by its data, and memBCErr for other addresses")
{
    const Handle handle = HandleOf("abc");
    CHECK(RecoverHandle(*handle) == handle);
    CHECK(RecoverHandle(*handle + 1) == nullptr);
    CHECK(MemError() == memBCErr);
    CHECK(IsHandleValid(handle));
    DisposeHandle(handle);
    CHECK_FALSE(IsHandleValid(handle));
    CHECK_FALSE(IsHandleValid(nullptr));
}

TEST_CASE("HandToHand: the copy is another block, neither locked nor purgeable")
{
    const Handle original = HandleOf("abc");
    HLock(original);
    HPurge(original);
    Handle copy = original;
    CHECK(HandToHand(&copy) == noErr);
    CHECK(copy != original);
    CHECK(TextOf(copy) == "abc");
    CHECK(HGetState(copy) == 0);
    DisposeHandle(original);
    DisposeHandle(copy);
}

TEST_CASE("HandAndHand, PtrAndHand: append, also a block to itself")
{
    const Handle handle = HandleOf("ab");
    CHECK(HandAndHand(handle, handle) == noErr);
    CHECK(PtrAndHand("!", handle, 1) == noErr);
    CHECK(PtrAndHand(*handle, handle, 4) == noErr);
    CHECK(TextOf(handle) == "abab!abab");
    CHECK(PtrAndHand("x", handle, -1) == memFullErr);
    CHECK(PtrAndHand(nullptr, handle, 3) == paramErr);
    CHECK(TextOf(handle) == "abab!abab");
    DisposeHandle(handle);
}

TEST_CASE("PtrToXHand: the bytes may come from the block itself")
{
    const Handle handle = HandleOf("abcdef");
    CHECK(PtrToXHand(*handle + 2, handle, 3) == noErr);
    CHECK(TextOf(handle) == "cde");
    HLock(handle);
    const std::string longer(100, 'x');
    CHECK(PtrToXHand(longer.data(), handle, (long)longer.size()) == memLockedErr);
    CHECK(PtrToXHand("xy", handle, 2) == noErr);
    CHECK(TextOf(handle) == "xy");
    DisposeHandle(handle);
}

TEST_CASE("NewHandle: a disposed address stays recognisable while others come and go")
{
    const Handle stale = DisposedHandle();
    for (int i = 0; i < 200; ++i)
        DisposeHandle(NewHandle(1));
    CHECK_FALSE(IsHandleValid(stale));
}

TEST_CASE("NewPtr: size, growth within the slack, and foreign pointers")
{
    const Ptr pointer = NewPtrClear(10);
    CHECK(GetPtrSize(pointer) == 10);
    CHECK(std::string(pointer, 10) == std::string(10, '\0'));
    SetPtrSize(pointer, 12);
    CHECK(GetPtrSize(pointer) == 12);
    SetPtrSize(pointer, 1000);
    CHECK(MemError() == memFullErr);
    CHECK(IsPointerValid(pointer));
    DisposePtr(pointer);
    CHECK_FALSE(IsPointerValid(pointer));
    DisposePtr(pointer);
    CHECK(MemError() == memWZErr);
    CHECK(GetPtrSize(nullptr) == 0);
    CHECK(MemError() == memWZErr);
}

TEST_CASE("BlockMove: overlapping bytes are moved whole; null and negative do nothing")
{
    char text[] = "abcdef";
    BlockMove(text, text + 2, 4);
    CHECK(std::string(text) == "ababcd");
    BlockMoveData(nullptr, text, 3);
    BlockZero(nullptr, 3);
    BlockMove("xxx", text, -3);
    BlockZero(text, -1);
    CHECK(std::string(text) == "ababcd");
    BlockZero(text, 2);
    CHECK(std::memcmp(text, "\0\0abcd", 7) == 0);
}

TEST_CASE("PurgeSpace, FreeMem: something is free, and no block is larger than 2 GB")
{
    long total = 0, block = 0;
    PurgeSpace(&total, &block);
    CHECK(total > 0);
    CHECK(block <= lampblack::memory::kLargestBlock);
    PurgeSpace(nullptr, nullptr);
    Size grow = 1;
    CHECK(MaxMem(&grow) > 0);
    CHECK(grow == 0);
    CHECK(FreeMem() > 0);
}

TEST_CASE("Munger: replaces, inserts, deletes and finds")
{
    const Handle handle = HandleOf("one two three");
    CHECK(Munger(handle, 0, "two", 3, "2", 1) == 5);
    CHECK(TextOf(handle) == "one 2 three");
    CHECK(Munger(handle, 0, "2 ", 2, nullptr, 0) == 4);
    CHECK(Munger(handle, 4, "x", 0, "and ", 4) == 8);
    CHECK(TextOf(handle) == "one and 2 three");
    CHECK(Munger(handle, 0, "and ", 4, "", 0) == 4);
    CHECK(TextOf(handle) == "one 2 three");
    CHECK(Munger(handle, 0, nullptr, 3, "ONE!", 4) == 4);
    CHECK(Munger(handle, 4, nullptr, -1, ".", 1) == 5);
    CHECK(TextOf(handle) == "ONE!.");
    CHECK(Munger(handle, 0, "absent", 6, "x", 1) < 0);
    DisposeHandle(handle);
}

TEST_CASE("Munger: the end of the text that begins the target is replaced")
{
    const Handle handle = HandleOf("abcde");
    CHECK(Munger(handle, 3, "def", 3, "X", 1) == 4);
    CHECK(TextOf(handle) == "abcX");
    DisposeHandle(handle);
}

TEST_CASE("Munger: bytes of the block itself, and offsets outside it")
{
    const Handle handle = HandleOf("abc");
    CHECK(Munger(handle, 3, "x", 0, *handle, 3) == 6);
    CHECK(TextOf(handle) == "abcabc");
    CHECK(Munger(handle, 7, "a", 1, "b", 1) < 0);
    CHECK(MemError() == paramErr);
    CHECK(Munger(handle, -1, "a", 1, "b", 1) < 0);
    CHECK(TextOf(handle) == "abcabc");
    DisposeHandle(handle);
}

TEST_CASE("IsHandleValid: addresses within and behind the records are no handles")
{
    const Handle handle = NewHandle(4);
    for (const ptrdiff_t distance : { 1, 4, 8, 32, 63 })
        CHECK_FALSE(IsHandleValid((Handle)((char*)handle + distance)));
    CHECK_FALSE(IsHandleValid((Handle)((char*)handle + (ptrdiff_t)100000 * 64)));
    CHECK_FALSE(IsHandleValid((Handle)((char*)handle - (ptrdiff_t)100000 * 64)));
    CHECK_FALSE(IsHandleValid((Handle)(uintptr_t)-8));
    CHECK(IsHandleValid(handle));
    DisposeHandle(handle);
}

TEST_CASE("NewHandle: a hundred thousand are alive at once and each keeps its own")
{
    constexpr size_t kMany = 100000;
    std::vector<Handle> handles(kMany);
    for (size_t i = 0; i < kMany; ++i) {
        handles[i] = NewHandle(4);
        REQUIRE(handles[i] != nullptr);
        std::memcpy(*handles[i], &i, 4);
    }
    for (size_t i = 0; i < kMany; i += 2)
        DisposeHandle(handles[i]);
    for (size_t i = 0; i < kMany; ++i) {
        REQUIRE(IsHandleValid(handles[i]) == (i % 2 == 1));
        REQUIRE((i % 2 == 0 || std::memcmp(*handles[i], &i, 4) == 0));
    }
    const size_t count = lampblack::memory::gHandles.Count();
    for (size_t i = 1; i < kMany; i += 2)
        DisposeHandle(handles[i]);
    CHECK(lampblack::memory::gHandles.Count() == count - kMany / 2);
}
