#include "Dump.h"

#include "Lexer.h"
#include "MacText.h"
#include "ValueDecoder.h"
#include "ValueEncoder.h"

#include <algorithm>
#include <set>

namespace lampblack::rsrc {

namespace {

constexpr size_t kBytesPerLine = 16;

constexpr struct {
    UInt8 bit;
    const char* word;
} kAttributes[] = { { 64, "sysheap" },  { 32, "purgeable" }, { 16, "locked" },
                    { 8, "protected" }, { 4, "preload" },    { 2, "changed" } };

std::string AttributesText(UInt8 inAttributes)
{
    std::string text;
    for (const auto& attribute : kAttributes)
        if (inAttributes & attribute.bit)
            text += std::string(", ") + attribute.word;
    if (const int unnamed = inAttributes & 0x81)
        text += ", " + std::to_string(unnamed);
    return text;
}

std::string HeaderText(const char* inWord, const Resource& inResource, bool inRepeats)
{
    std::string text = (inRepeats ? "duplicate " : "") + std::string(inWord) + " " +
                       QuotedCode(inResource.type) + " (" + std::to_string(inResource.id);
    if (inResource.hasName)
        text += ", " + QuotedText(inResource.name);
    return text + AttributesText(inResource.attributes) + ") {";
}

std::string DataText(const Resource& inResource, bool inRepeats)
{
    std::string text = HeaderText("data", inResource, inRepeats);
    if (inResource.data.empty())
        return text + " };\n";
    text += "\n";
    const std::vector<std::string> lines = HexLines(inResource.data, kBytesPerLine);
    for (size_t i = 0; i < lines.size(); ++i) {
        const Bytes bytes = Bytes(inResource.data).subspan(i * kBytesPerLine);
        std::string line = "    " + lines[i];
        line.resize(std::max(line.size(), kBytesPerLine / 2 * 5 + 8), ' ');
        text += line + "// " + PrintableText(bytes.first(std::min(bytes.size(), kBytesPerLine))) + "\n";
    }
    return text + "};\n";
}

ResourceFacts FactsOf(const Resource& inResource)
{
    return { inResource.type, inResource.id, inResource.attributes };
}

struct Encoded {
    std::vector<uint8_t> bytes, fillMask;
};

Encoded Encode(const std::string& inValues, const Fields& inFields, const Resource& inResource,
               const DumpOptions& inOptions)
{
    const SourceText source = { "dump", "{" + inValues + "}" };
    const std::vector<Token> tokens = Tokenize(source);
    TokenCursor cursor(tokens, { &source, source.text.size() });
    cursor.Next();
    const EncodeContext context = { FactsOf(inResource), inOptions.names, {}, inOptions.nativeIsBig };
    ValueEncoder encoder(cursor, context);
    Encoded encoded;
    encoded.bytes = encoder.Encode(inFields);
    encoded.fillMask = encoder.FillMask();
    return encoded;
}

// The bytes in which a resource differs from what its text makes, as a patch; those that lie close together
// as one.
std::string PatchText(const std::vector<uint8_t>& inWanted, const std::vector<uint8_t>& inMade)
{
    constexpr size_t kClose = 4;
    std::string text = " patch {\n";
    for (size_t at = 0; at < inWanted.size();) {
        if (inWanted[at] == inMade[at]) {
            ++at;
            continue;
        }
        size_t end = at + 1;
        for (size_t i = end; i < inWanted.size() && i < end + kClose; ++i)
            end = inWanted[i] == inMade[i] ? end : i + 1;
        std::string bytes;
        for (const std::string& line : HexLines(Bytes(inWanted).subspan(at, end - at), kBytesPerLine))
            bytes += (bytes.empty() ? "" : " ") + line;
        text += "    " + std::to_string(at) + ", " + bytes + ";\n";
        at = end;
    }
    return text + "}";
}

// Whether they differ only where the type fills up, and not much.
bool IsWorthPatching(const std::vector<uint8_t>& inWanted, const Encoded& inMade)
{
    if (inWanted.size() != inMade.bytes.size())
        return false;
    size_t different = 0;
    for (size_t i = 0; i < inWanted.size(); ++i) {
        const uint8_t bits = inWanted[i] ^ inMade.bytes[i];
        different += bits != 0;
        if (bits & ~inMade.fillMask[i])
            return false;
    }
    return different <= 4 + inWanted.size() / 2;
}

// What stands behind the header, from the first line between the braces to the last brace; throws DecodeError
// unless it makes the very same bytes.
std::string BodyText(const Resource& inResource, const Fields& inFields, const DumpOptions& inOptions)
{
    ValueDecoder decoder(inResource.data, FactsOf(inResource), inOptions.names, inOptions.nativeIsBig);
    const std::string text = StatementText(decoder.Decode(inFields));
    Encoded again;
    try {
        again = Encode(text, inFields, inResource, inOptions);
    } catch (const RezError& error) {
        throw DecodeError(std::string("its text would not compile: ") + error.what());
    }
    const std::string body = (text.empty() ? " " : "\n") + text + "}";
    if (again.bytes == inResource.data)
        return body;
    if (IsWorthPatching(inResource.data, again))
        return body + PatchText(inResource.data, again.bytes);
    const auto [there, here] =
        std::mismatch(inResource.data.begin(), inResource.data.end(), again.bytes.begin(), again.bytes.end());
    throw DecodeError("the type leaves out what byte " + std::to_string(there - inResource.data.begin()) +
                      " holds");
}

} // namespace

std::string DumpResource(const Resource& inResource, const DumpOptions& inOptions, bool inRepeats)
{
    const Fields* fields = inOptions.types->Find(inResource.type, inResource.id);
    if (!fields)
        return DataText(inResource, inRepeats);
    try {
        const std::string body = BodyText(inResource, *fields, inOptions);
        return HeaderText("resource", inResource, inRepeats) + body + ";\n";
    } catch (const DecodeError& error) {
        return std::string("// As bytes: ") + error.what() + ".\n" + DataText(inResource, inRepeats);
    }
}

std::string DumpResources(const std::vector<Resource>& inResources, const DumpOptions& inOptions)
{
    std::set<std::pair<OSType, SInt16>> keys;
    std::string text;
    for (const Resource& resource : inResources) {
        const bool repeats = !keys.insert({ resource.type, resource.id }).second;
        text += (text.empty() ? "" : "\n") + DumpResource(resource, inOptions, repeats);
    }
    return text;
}

bool SwapNativeNumbers(const TypeTable& inTypes, const Names& inNames, Resource* ioResource)
{
    const Fields* fields = inTypes.Find(ioResource->type, ioResource->id);
    if (!fields)
        return false;
    ValueDecoder decoder(ioResource->data, FactsOf(*ioResource), &inNames, true);
    try {
        decoder.Decode(*fields);
    } catch (const DecodeError&) {
        if (decoder.NativeNumbers().empty())
            return false; // of no concern here
        throw;
    }
    for (const auto& number : decoder.NativeNumbers()) {
        const auto first = ioResource->data.begin() + (ptrdiff_t)(number.at / 8);
        std::reverse(first, first + number.bits / 8);
    }
    return !decoder.NativeNumbers().empty();
}

} // namespace lampblack::rsrc
