#include "Listing.h"

#include "Resources.h"

#include <foundation/MacRoman.h>

#include <iomanip>
#include <sstream>

namespace lampblack::rsrc {

namespace {

using resources::ResourceFork;
using resources::ResourceInfo;
using resources::ResourceRef;

constexpr struct {
    UInt8 bit;
    const char* word;
} kAttributes[] = { { 64, "sysheap" },  { 32, "purgeable" }, { 16, "locked" },
                    { 8, "protected" }, { 4, "preload" },    { 1, "compressed" } };

// Control characters become \0xNN, as in a description; type codes keep their width that way but seldom.
std::string Shown(std::string_view inMacRoman)
{
    std::ostringstream shown;
    for (const char byte : inMacRoman) {
        if ((unsigned char)byte < 0x20 || byte == 0x7F)
            shown << "\\0x" << std::hex << std::uppercase << std::setw(2) << std::setfill('0') << (int)byte;
        else
            shown << foundation::Utf8FromMacRoman({ &byte, 1 });
    }
    return shown.str();
}

std::string TypeBytes(OSType inType)
{
    return { (char)(inType >> 24), (char)(inType >> 16), (char)(inType >> 8), (char)inType };
}

std::string AttributeWords(UInt8 inAttributes)
{
    std::string words;
    for (const auto& attribute : kAttributes)
        if (inAttributes & attribute.bit)
            words += (words.empty() ? "" : ",") + std::string(attribute.word);
    return words.empty() ? "-" : words;
}

std::string SizeText(const ResourceFork& inFork, ResourceRef inRef, const char* inCutOff)
{
    Bytes data;
    return inFork.Data(inRef, &data) ? std::to_string(data.size()) : inCutOff;
}

} // namespace

void ListAsText(const ResourceFork& inFork, std::ostream& ioOutput)
{
    inFork.ForEach([&](ResourceRef inRef) {
        const ResourceInfo info = inFork.Info(inRef);
        ioOutput << "'" << Shown(TypeBytes(info.type)) << "' " << std::setw(6) << info.id << " "
                 << std::setw(8) << SizeText(inFork, inRef, "cut off") << "  "
                 << AttributeWords(info.attributes);
        if (info.hasName)
            ioOutput << "  \"" << Shown(info.name) << "\"";
        ioOutput << "\n";
    });
}

std::string JsonString(std::string_view inUtf8)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text = "\"";
    for (const char byte : inUtf8) {
        if (byte == '"' || byte == '\\')
            text += { '\\', byte };
        else if ((unsigned char)byte < 0x20 || byte == 0x7F)
            text += { '\\', 'u', '0', '0', kDigits[byte >> 4], kDigits[byte & 0xF] };
        else
            text += byte;
    }
    return text + "\"";
}

void ListAsJson(const ResourceFork& inFork, std::ostream& ioOutput)
{
    const char* separator = "[\n";
    inFork.ForEach([&](ResourceRef inRef) {
        const ResourceInfo info = inFork.Info(inRef);
        const std::string name = info.hasName ? JsonString(foundation::Utf8FromMacRoman(info.name)) : "null";
        ioOutput << separator << "  {\"type\": " << JsonString(TypeText(info.type)) << ", \"id\": " << info.id
                 << ", \"name\": " << name << ", \"attributes\": " << (int)info.attributes
                 << ", \"size\": " << SizeText(inFork, inRef, "null") << "}";
        separator = ",\n";
    });
    ioOutput << (inFork.ResourceCount() ? "\n]\n" : "[]\n");
}

} // namespace lampblack::rsrc
