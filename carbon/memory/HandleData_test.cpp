// Where the data of handles lie: few bytes in the record, more of them elsewhere, and the way from one to the other.
#include <Carbon/MacMemory.h>

#include <cstring>
#include <doctest/doctest.h>
#include <memory/Blocks.h>
#include <random>
#include <string>
#include <vector>

using lampblack::memory::HandleBlock;

namespace {

constexpr Size kFew = HandleBlock::kFew;

std::string TextOf(Handle inHandle)
{
    return std::string(*inHandle, (size_t)GetHandleSize(inHandle));
}

std::string Pattern(size_t inSize)
{
    std::string text(inSize, 0);
    for (size_t i = 0; i < inSize; ++i)
        text[i] = (char)(i * 7 + inSize);
    return text;
}

Handle HandleOf(const std::string& inText)
{
    Handle handle = nullptr;
    PtrToHand(inText.data(), &handle, (long)inText.size());
    return handle;
}

} // namespace

TEST_CASE("NewHandle: data of any size begin at a multiple of 16 and are found again by RecoverHandle")
{
    for (Size size = 0; size <= 3 * kFew; ++size) {
        const Handle handle = NewHandle(size);
        CHECK((uintptr_t)*handle % 16 == 0);
        CHECK(RecoverHandle(*handle) == handle);
        DisposeHandle(handle);
    }
}

TEST_CASE("SetHandleSize: the bytes survive every way from few to many and back")
{
    const Size sizes[] = { 0, 1, kFew - 1, kFew, kFew + 1, 4 * kFew, 100000 };
    for (const Size from : sizes)
        for (const Size to : sizes) {
            const std::string text = Pattern((size_t)from);
            const Handle handle = HandleOf(text);
            SetHandleSize(handle, to);
            REQUIRE(MemError() == noErr);
            REQUIRE(GetHandleSize(handle) == to);
            const size_t kept = (size_t)std::min(from, to);
            REQUIRE(std::memcmp(*handle, text.data(), kept) == 0);
            std::memset(*handle, 'x', (size_t)to);
            DisposeHandle(handle);
        }
}

TEST_CASE("SetHandleSize: few bytes that are locked, or fit, stay where they are")
{
    const Handle handle = HandleOf("abc");
    const Ptr before = *handle;
    SetHandleSize(handle, kFew);
    CHECK(*handle == before);
    HLock(handle);
    SetHandleSize(handle, kFew + 1);
    CHECK(MemError() == memLockedErr);
    CHECK(*handle == before);
    SetHandleSize(handle, 0);
    CHECK(*handle == before);
    DisposeHandle(handle);
}

TEST_CASE("PtrToXHand: bytes of the block itself, from few and many to few and many")
{
    const size_t few = (size_t)kFew;
    const struct {
        size_t size, from, count;
    } cases[] = { { few, 1, few - 1 }, { few, 0, few }, { 200, 90, few }, { 200, 3, 190 }, { 5, 5, 0 } };
    for (const bool isLocked : { false, true })
        for (const auto& part : cases) {
            const std::string text = Pattern(part.size);
            const Handle handle = HandleOf(text);
            if (isLocked)
                HLock(handle);
            CHECK(PtrToXHand(*handle + part.from, handle, (long)part.count) == noErr);
            CHECK(TextOf(handle) == text.substr(part.from, part.count));
            DisposeHandle(handle);
        }
    const Handle locked = HandleOf("abc");
    HLock(locked);
    CHECK(PtrToXHand("x", locked, -1) == memFullErr);
    CHECK(TextOf(locked) == "abc");
    DisposeHandle(locked);
}

TEST_CASE("ReallocateHandle, EmptyHandle: few and many take turns")
{
    const Handle handle = NewEmptyHandle();
    for (const Size size : { (Size)3, (Size)1000, kFew, (Size)0, kFew + 1 }) {
        ReallocateHandle(handle, size);
        CHECK(MemError() == noErr);
        CHECK(GetHandleSize(handle) == size);
        REQUIRE(*handle != nullptr);
        std::memset(*handle, 'x', (size_t)size);
        ReallocateHandle(handle, -1);
        CHECK(MemError() == memFullErr);
        CHECK(TextOf(handle) == std::string((size_t)size, 'x'));
        EmptyHandle(handle);
        CHECK(*handle == nullptr);
    }
    DisposeHandle(handle);
}

#ifdef LAMPBLACK_POISONS
TEST_CASE("Address sanitizer: few bytes end where the handle's size says, and are gone with the handle")
{
    const Handle handle = NewHandle(5);
    const Ptr data = *handle;
    CHECK_FALSE(__asan_address_is_poisoned(data + 4));
    CHECK(__asan_address_is_poisoned(data + 5));
    SetHandleSize(handle, kFew);
    CHECK_FALSE(__asan_address_is_poisoned(data + kFew - 1));
    SetHandleSize(handle, 1);
    CHECK(__asan_address_is_poisoned(data + 1));
    SetHandleSize(handle, 1000);
    CHECK(__asan_address_is_poisoned(data));
    SetHandleSize(handle, 3);
    CHECK_FALSE(__asan_address_is_poisoned(*handle));
    DisposeHandle(handle);
    CHECK(__asan_address_is_poisoned(data));
}
#endif

namespace {

// Handles beside what they must hold.
class Model {
public:
    explicit Model(unsigned inSeed) : fRandom(inSeed) {}
    ~Model()
    {
        for (const Pair& pair : fPairs)
            DisposeHandle(pair.handle);
    }

    void Step()
    {
        if (fPairs.empty() || fRandom() % 4 == 0)
            Add(HandleOf(Text()));
        else
            Change(fRandom() % fPairs.size());
    }

    bool Agrees() const
    {
        for (const Pair& pair : fPairs)
            if (!*pair.handle || TextOf(pair.handle) != pair.text)
                return false;
        return true;
    }

private:
    struct Pair {
        Handle handle;
        std::string text;
    };

    size_t SomeSize() { return fRandom() % (fRandom() % 2 ? (size_t)kFew + 2 : 300); }

    const std::string& Text() { return fText = Pattern(SomeSize()); }

    void Add(Handle inHandle) { fPairs.push_back({ inHandle, TextOf(inHandle) }); }

    void Change(size_t inIndex)
    {
        Pair& pair = fPairs[inIndex];
        switch (fRandom() % 6) {
        case 0: Resize(pair); break;
        case 1:
            pair.text = Text();
            PtrToXHand(fText.data(), pair.handle, (long)fText.size());
            break;
        case 2:
            HandAndHand(fPairs.front().handle, pair.handle);
            pair.text += std::string(fPairs.front().text);
            break;
        case 3: Copy(pair); break;
        case 4: Replace(pair); break;
        case 5:
            DisposeHandle(pair.handle);
            fPairs.erase(fPairs.begin() + (ptrdiff_t)inIndex);
            break;
        }
        if (inIndex < fPairs.size() && fPairs[inIndex].text.size() > 2000)
            Cut(fPairs[inIndex]);
    }

    void Resize(Pair& ioPair)
    {
        const size_t before = ioPair.text.size(), size = SomeSize();
        SetHandleSize(ioPair.handle, (Size)size);
        ioPair.text.resize(size, 'r');
        if (size > before)
            std::memset(*ioPair.handle + before, 'r', size - before);
    }

    void Cut(Pair& ioPair)
    {
        SetHandleSize(ioPair.handle, 7);
        ioPair.text.resize(7);
    }

    void Copy(const Pair& inPair)
    {
        Handle copy = inPair.handle;
        HandToHand(&copy);
        fPairs.push_back({ copy, std::string(inPair.text) });
    }

    void Replace(Pair& ioPair)
    {
        const size_t at = ioPair.text.empty() ? 0 : fRandom() % ioPair.text.size();
        const size_t count = std::min<size_t>(fRandom() % 20, ioPair.text.size() - at);
        Text();
        Munger(ioPair.handle, (long)at, nullptr, (long)count, fText.data(), (long)fText.size());
        ioPair.text.replace(at, count, fText);
    }

    std::mt19937 fRandom;
    std::string fText;
    std::vector<Pair> fPairs;
};

} // namespace

TEST_CASE("Handles: through random calls each holds its own bytes and no other's")
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        Model model(seed);
        for (int i = 0; i < 3000; ++i) {
            model.Step();
            if (i % 100 == 0)
                REQUIRE(model.Agrees());
        }
        CHECK(model.Agrees());
    }
}
