#include "Selection.h"

#include "TypeParser.h"

namespace lampblack::rsrc {

namespace {

struct AttributeWord {
    const char* word;
    UInt8 bits;
};
// The second word of a pair says that the attribute is absent, as it is unless said otherwise.
constexpr AttributeWord kAttributes[] = { { "sysheap", 64 },     { "appheap", 0 },     { "purgeable", 32 },
                                          { "nonpurgeable", 0 }, { "locked", 16 },     { "unlocked", 0 },
                                          { "protected", 8 },    { "unprotected", 0 }, { "preload", 4 },
                                          { "nonpreload", 0 },   { "changed", 2 },     { "unchanged", 0 } };

std::optional<int64_t> AttributeValue(const Token& inName, TokenCursor&)
{
    for (const AttributeWord& attribute : kAttributes)
        if (inName.IsWord(attribute.word))
            return attribute.bits;
    return std::nullopt;
}

} // namespace

bool Selection::Matches(const Resource& inResource) const
{
    const bool matches = (!type || inResource.type == type) &&
                         (!hasIDs || (inResource.id >= first && inResource.id <= last)) &&
                         (!name || inResource.name == *name);
    return matches != isInverted;
}

void Renaming::Apply(const Selection& inSelection, Resource* ioResource) const
{
    ioResource->type = type;
    if (id)
        ioResource->id = (SInt16)(*id + (inSelection.hasIDs ? ioResource->id - inSelection.first : 0));
    if (name) {
        ioResource->name = *name;
        ioResource->hasName = true;
    }
    ioResource->attributes = attributes.value_or(ioResource->attributes);
}

SInt16 ReadID(TokenCursor& ioTokens, const NameResolver& inNumbers)
{
    const Place place = ioTokens.Peek().place;
    const int64_t id = ReadExpression(ioTokens, inNumbers, "an ID");
    if (id < -32768 || id > 32767)
        throw RezError(place, "an ID is a number from -32768 to 32767");
    return (SInt16)id;
}

UInt8 ReadAttributes(TokenCursor& ioTokens, const char* inWhat)
{
    const Place place = ioTokens.Peek().place;
    const int64_t bits = ReadExpression(ioTokens, AttributeValue, inWhat);
    if (bits < 0 || bits > 0xFF)
        throw RezError(place, "attributes are a number from 0 to 255");
    return (UInt8)bits;
}

Selection ReadSelection(TokenCursor& ioTokens, const NameResolver& inNumbers, const TextFunctions& inTexts)
{
    Selection selection;
    selection.type = ReadTypeCode(ioTokens);
    if (!ioTokens.Accept('('))
        return selection;
    if (TextFunctions::AtText(ioTokens)) {
        selection.name = inTexts.ReadText(ioTokens, "a name");
    } else {
        selection.hasIDs = true;
        selection.first = selection.last = ReadID(ioTokens, inNumbers);
        if (ioTokens.Accept(':'))
            selection.last = ReadID(ioTokens, inNumbers);
    }
    ioTokens.Expect(')', "')' after the ID");
    return selection;
}

Renaming ReadRenaming(TokenCursor& ioTokens, const NameResolver& inNumbers, const TextFunctions& inTexts)
{
    Renaming renaming;
    renaming.type = ReadTypeCode(ioTokens);
    if (!ioTokens.Accept('('))
        return renaming;
    if (!TextFunctions::AtText(ioTokens))
        renaming.id = ReadID(ioTokens, inNumbers);
    while (ioTokens.Accept(',') || (!renaming.id && !renaming.name)) {
        if (!renaming.name && TextFunctions::AtText(ioTokens))
            renaming.name = inTexts.ReadText(ioTokens, "a name");
        else
            renaming.attributes = (UInt8)(renaming.attributes.value_or(0) |
                                          ReadAttributes(ioTokens, "a name or attributes such as purgeable"));
    }
    ioTokens.Expect(')', "',' or ')'");
    return renaming;
}

} // namespace lampblack::rsrc
