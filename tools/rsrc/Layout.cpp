#include "Layout.h"

#include "Expression.h"

namespace lampblack::rsrc {

namespace {

constexpr int kDeepest = 30; // subscripts and arguments within one another

const std::string& NameOf(const Field& inArray)
{
    return inArray.name.empty() ? inArray.label : inArray.name;
}

} // namespace

void Layout::Mark(const std::string& inLabel, uint64_t inBit)
{
    const std::string label = SmallLetters(inLabel);
    if (fMentioned.contains(label))
        fLabels[label][fHere.elements] = (int64_t)inBit;
}

void Layout::BeginArray(const Field& inArray)
{
    fHere.elements.push_back(0);
    fHere.arrays.push_back(&inArray);
}

void Layout::SetCount(const Field& inArray, int64_t inCount)
{
    SetCount(NameOf(inArray), inCount);
}

void Layout::SetCount(const std::string& inArrayName, int64_t inCount)
{
    const std::string name = SmallLetters(inArrayName);
    if (fMentioned.contains(name))
        fCounts[name][fHere.elements] = inCount;
}

std::optional<int64_t> Layout::CountOf(const Field& inArray) const
{
    const auto named = fCounts.find(SmallLetters(NameOf(inArray)));
    return named == fCounts.end() ? std::nullopt : Nearest(named->second, fHere.elements);
}

void Layout::EndArray()
{
    fHere.elements.pop_back();
    fHere.arrays.pop_back();
}

std::optional<int64_t> Layout::Resolve(const Token& inName, TokenCursor& ioTokens, const ArrayPath& inFrom,
                                       Bytes inData) const
{
    if (inName.kind == Token::Kind::Function)
        return Function(inName, ioTokens, inFrom, inData);
    return Named(fLabels, inName, ioTokens, inFrom, inData);
}

std::optional<int64_t> Layout::Function(const Token& inName, TokenCursor& ioTokens, const ArrayPath& inFrom,
                                        Bytes inData) const
{
    if (const std::optional<int64_t> fact = Fact(inName, inData))
        return fact;
    const struct {
        const char* word;
        int bits;
    } reads[] = { { "Byte", 8 }, { "Word", 16 }, { "Long", 32 }, { "BitField", 0 } };
    ioTokens.Expect('(', "'(' after $$" + inName.text);
    const Token name = ioTokens.Next();
    std::optional<int64_t> value;
    if (SameWord(inName.text, "CountOf"))
        value = Named(fCounts, name, ioTokens, inFrom, inData);
    else if (SameWord(inName.text, "ArrayIndex"))
        value = IndexOf(name, inFrom);
    else
        value = Named(fLabels, name, ioTokens, inFrom, inData);
    if (value && SameWord(inName.text, "Offset"))
        value = *value / 8;
    for (const auto& read : reads) {
        if (!SameWord(inName.text, read.word))
            continue;
        int64_t bits = read.bits, start = 0;
        if (bits == 0) {
            ioTokens.Expect(',', "',' and the first bit");
            start = Argument(ioTokens, inFrom, inData);
            ioTokens.Expect(',', "',' and the number of bits");
            bits = Argument(ioTokens, inFrom, inData);
        }
        const int64_t end = (int64_t)inData.size() * 8;
        if (value && bits >= 1 && bits <= 32 && start >= -end && start <= end && *value + start >= 0)
            value = (int64_t)BitsAt(inData, (uint64_t)(*value + start), (int)bits);
        else
            value = std::nullopt;
    }
    ioTokens.Expect(')', "')'");
    return value;
}

std::optional<int64_t> Layout::Fact(const Token& inName, Bytes inData) const
{
    if (SameWord(inName.text, "ID"))
        return fFacts.id;
    if (SameWord(inName.text, "Type"))
        return fFacts.type;
    if (SameWord(inName.text, "Attributes"))
        return fFacts.attributes;
    if (SameWord(inName.text, "ResourceSize"))
        return (int64_t)inData.size();
    return std::nullopt;
}

// With subscripts the entry of just that element; without, the one in the nearest element around the place.
std::optional<int64_t> Layout::Named(const std::map<std::string, Entries>& inEntries, const Token& inName,
                                     TokenCursor& ioTokens, const ArrayPath& inFrom, Bytes inData) const
{
    std::vector<uint32_t> path = inFrom.elements;
    const bool hasSubscripts = ioTokens.Peek().Is('[');
    if (hasSubscripts) {
        path.clear();
        ioTokens.Next();
        do
            path.push_back((uint32_t)Argument(ioTokens, inFrom, inData));
        while (ioTokens.Accept(','));
        ioTokens.Expect(']', "',' or ']' after the subscript");
    }
    const auto named = inEntries.find(SmallLetters(inName.text));
    if (named == inEntries.end())
        return std::nullopt;
    if (!hasSubscripts)
        return Nearest(named->second, std::move(path));
    const auto entry = named->second.find(path);
    return entry == named->second.end() ? std::nullopt : std::optional(entry->second);
}

std::optional<int64_t> Layout::Nearest(const Entries& inEntries, std::vector<uint32_t> inPath)
{
    for (;;) {
        const auto entry = inEntries.find(inPath);
        if (entry != inEntries.end())
            return entry->second;
        if (inPath.empty())
            return std::nullopt;
        inPath.pop_back();
    }
}

std::optional<int64_t> Layout::IndexOf(const Token& inName, const ArrayPath& inFrom) const
{
    for (size_t i = inFrom.arrays.size(); i-- > 0;)
        if (SameWord(NameOf(*inFrom.arrays[i]), inName.text))
            return inFrom.elements[i];
    return std::nullopt;
}

int64_t Layout::Argument(TokenCursor& ioTokens, const ArrayPath& inFrom, Bytes inData) const
{
    if (++fDepth > kDeepest)
        throw RezError(ioTokens.Peek().place, "this expression is nested too deeply");
    const NameResolver resolve = [&](const Token& inName, TokenCursor& ioArguments) {
        return Resolve(inName, ioArguments, inFrom, inData);
    };
    const int64_t value = ReadExpression(ioTokens, resolve, "a number");
    --fDepth;
    return value;
}

} // namespace lampblack::rsrc
