// Where the labels of a resource lie, how many elements its arrays have and which one is being written or
// read: what the expressions of a type declaration ask for. Begin at Layout::Resolve.
#ifndef LAMPBLACK_RSRC_LAYOUT_H
#define LAMPBLACK_RSRC_LAYOUT_H

#include "BitReader.h"
#include "TypeModel.h"

#include <optional>

namespace lampblack::rsrc {

// A place within arrays: the element of each that is open, from the outermost on, counted from 1.
struct ArrayPath {
    std::vector<uint32_t> elements;
    std::vector<const Field*> arrays;
};

// What an expression may ask of the resource that it belongs to.
struct ResourceFacts {
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0;
};

class Layout {
public:
    Layout(const Fields& inFields, const ResourceFacts& inFacts)
        : fFacts(inFacts), fMentioned(MentionedNames(inFields))
    {
    }

    void Mark(const std::string& inLabel, uint64_t inBit);
    void BeginArray(const Field&);
    void NextElement() { ++fHere.elements.back(); }
    // Tells how many elements an array has, or will have; outside of it.
    void SetCount(const Field& inArray, int64_t inCount);
    void SetCount(const std::string& inArrayName, int64_t inCount);
    // The count of an array that is about to begin here; nothing when nobody told it.
    std::optional<int64_t> CountOf(const Field& inArray) const;
    void EndArray();
    const ArrayPath& Here() const { return fHere; }

    // Resolve
    //
    // What a label or a $$Function stands for at a place: labels are distances from the start in bits. May
    // read subscripts and arguments behind the name. Nothing when the name is unknown, or not known yet.
    std::optional<int64_t> Resolve(const Token& inName, TokenCursor& ioTokens, const ArrayPath& inFrom,
                                   Bytes inData) const;

private:
    using Entries = std::map<std::vector<uint32_t>, int64_t>;

    std::optional<int64_t> Function(const Token&, TokenCursor&, const ArrayPath&, Bytes) const;
    std::optional<int64_t> Fact(const Token&, Bytes) const;
    std::optional<int64_t> Named(const std::map<std::string, Entries>&, const Token& inName, TokenCursor&,
                                 const ArrayPath&, Bytes) const;
    static std::optional<int64_t> Nearest(const Entries&, std::vector<uint32_t> inPath);
    std::optional<int64_t> IndexOf(const Token& inName, const ArrayPath&) const;
    int64_t Argument(TokenCursor&, const ArrayPath&, Bytes) const;

    ResourceFacts fFacts;
    std::set<std::string> fMentioned;
    std::map<std::string, Entries> fLabels, fCounts;
    ArrayPath fHere;
    mutable int fDepth = 0;
};

} // namespace lampblack::rsrc

#endif
