// Reads the bytes of a resource by its type and makes the values that a `resource` statement would give: the
// ValueEncoder's work, backwards. What it answers need not make the same bytes again; whoever wants to rely
// on that encodes it and compares.
#ifndef LAMPBLACK_RSRC_VALUEDECODER_H
#define LAMPBLACK_RSRC_VALUEDECODER_H

#include "Layout.h"
#include "ValueText.h"

#include <span>
#include <stdexcept>

namespace lampblack::rsrc {

// Why the bytes are no resource of the type.
struct DecodeError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class ValueDecoder {
public:
    // A number in the byte order of the machine that reads it, and where it lies.
    struct NativeNumber {
        uint64_t at;
        int bits;
    };

    // The bytes must stay. inNames may be null. Native numbers are read big-endian if told so.
    ValueDecoder(Bytes inBytes, const ResourceFacts& inFacts, const Names* inNames, bool inNativeIsBig)
        : fBytes(inBytes),
          fEnd((uint64_t)inBytes.size() * 8),
          fFacts(inFacts),
          fNames(inNames),
          fNativeIsBig(inNativeIsBig)
    {
    }

    // Throws DecodeError.
    std::vector<ShownValue> Decode(const Fields&);

    const std::vector<NativeNumber>& NativeNumbers() const { return fNatives; }

private:
    using Values = std::vector<ShownValue>;
    using Rest = std::span<const Field>;

    void Every(Rest, Values* ioValues);
    void One(const Field&, Rest inBehind, Values* ioValues);
    void Fixed(const Field&);
    void SolveCount(const Field&, uint64_t inRaw);
    void Array(const Field&, Rest inBehind, Values* ioValues);
    void Switch(const Field&, Values* ioValues);
    bool KeysMatch(const Case&) const;
    bool EndsHere(Rest inBehind);
    std::string Value(const Field&, bool* outExplains);
    std::string Character(const Field&, bool* outExplains);
    std::string Numbers(const Field&, int inCount);
    std::vector<std::string> String(const Field&);
    std::string_view TakeText(const Field&);

    uint64_t Take(int inBits);
    uint64_t TakeNumber(const Field&);
    void Skip(uint64_t inBits);
    void Align(const Field&);
    void Add(const Field&, ShownValue, Values* ioValues);
    std::optional<int64_t> CountOf(const Field&);
    std::optional<int64_t> Evaluate(const Field&, const std::vector<Token>&, const int64_t* inTrial) const;
    [[noreturn]] void Fail(const std::string& inMessage) const;

    Bytes fBytes;
    uint64_t fEnd, fAt = 0;
    ResourceFacts fFacts;
    const Names* fNames;
    bool fNativeIsBig;
    std::unique_ptr<Layout> fLayout;
    std::vector<NativeNumber> fNatives;
    size_t fCount = 0;
};

} // namespace lampblack::rsrc

#endif
