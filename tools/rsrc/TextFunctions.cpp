#include "TextFunctions.h"

#include "TypeParser.h"

#include <foundation/MacRoman.h>
#include <resources/Container.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace lampblack::rsrc {

namespace {

constexpr const char* kTextFunctions[] = { "Read", "Resource", "Format", "Name", "Date", "Time", "Version" };

// A build that is to be the same every time sets SOURCE_DATE_EPOCH; the clock counts otherwise.
std::string TimeText(const char* inFormat)
{
    const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
    const time_t now = fixed ? (time_t)std::strtoll(fixed, nullptr, 10) : std::time(nullptr);
    struct tm parts = {};
    if (fixed)
        gmtime_r(&now, &parts);
    else
        localtime_r(&now, &parts);
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, inFormat, &parts));
}

// One conversion of $$Format with its flags; %ld is %d.
struct Conversion {
    std::string flags;
    char letter = 0;
};

Conversion ReadConversion(const std::string& inFormat, size_t* ioAt)
{
    Conversion conversion;
    while (*ioAt < inFormat.size()) {
        const char letter = inFormat[(*ioAt)++];
        if (letter == 'l' || letter == 'h')
            continue;
        if (std::string_view("0123456789-+ #.").find(letter) == std::string_view::npos) {
            conversion.letter = letter;
            break;
        }
        conversion.flags += letter;
    }
    return conversion;
}

std::string NumberFormatted(const Conversion& inConversion, int64_t inValue)
{
    char text[128];
    const std::string format = "%" + inConversion.flags + "ll" + inConversion.letter;
    const int length = std::snprintf(text, sizeof text, format.c_str(), (long long)inValue);
    return std::string(text, std::min<size_t>((size_t)std::max(length, 0), sizeof text - 1));
}

} // namespace

bool TextFunctions::AtText(const TokenCursor& inTokens)
{
    const Token& token = inTokens.Peek();
    return token.kind == Token::Kind::String ||
           (token.kind == Token::Kind::Function &&
            std::any_of(std::begin(kTextFunctions), std::end(kTextFunctions),
                        [&](const char* name) { return SameWord(name, token.text); }));
}

std::string TextFunctions::ReadText(TokenCursor& ioTokens, std::string_view inWhat) const
{
    if (!AtText(ioTokens))
        ioTokens.Fail(inWhat);
    std::string text;
    while (AtText(ioTokens)) {
        const Token token = ioTokens.Next();
        text += token.kind == Token::Kind::String ? token.text : Evaluate(token, ioTokens).value_or("");
    }
    return text;
}

std::optional<std::string> TextFunctions::Evaluate(const Token& inName, TokenCursor& ioTokens) const
{
    if (SameWord(inName.text, "Read"))
        return Read(ioTokens);
    if (SameWord(inName.text, "Resource"))
        return ResourceData(ioTokens);
    if (SameWord(inName.text, "Format"))
        return Format(ioTokens);
    if (SameWord(inName.text, "Name"))
        return fResource.name;
    if (SameWord(inName.text, "Date"))
        return TimeText("%A, %B %e, %Y");
    if (SameWord(inName.text, "Time"))
        return TimeText("%H:%M:%S");
    if (SameWord(inName.text, "Version"))
        return "1.0";
    return std::nullopt;
}

std::string TextFunctions::Read(TokenCursor& ioTokens) const
{
    ioTokens.Expect('(', "'(' and a file name");
    const Place place = ioTokens.Peek().place;
    const std::string path = foundation::Utf8FromMacRoman(ReadText(ioTokens, "a file name in quotes"));
    ioTokens.Expect(')', "')' after the file name");
    return fLoad(place, path);
}

// $$Resource("file", 'TYPE', ID), or a name instead of the ID.
std::string TextFunctions::ResourceData(TokenCursor& ioTokens) const
{
    ioTokens.Expect('(', "'(' and a file name");
    const Place place = ioTokens.Peek().place;
    const std::string path = foundation::Utf8FromMacRoman(ReadText(ioTokens, "a file name in quotes"));
    ioTokens.Expect(',', "',' and a type");
    const OSType type = ReadTypeCode(ioTokens);
    ioTokens.Expect(',', "',' and an ID or a name");
    const bool isNamed = AtText(ioTokens);
    const std::string name = isNamed ? ReadText(ioTokens, "a name") : std::string();
    const int64_t id = isNamed ? 0 : ReadExpression(ioTokens, fNumbers, "an ID");
    ioTokens.Expect(')', "')'");
    for (const Resource& resource : ForkOf(fLoad(place, path), place))
        if (resource.type == type && (isNamed ? resource.name == name : resource.id == id))
            return std::string(resource.data.begin(), resource.data.end());
    throw RezError(place, "'" + path + "' has no such resource");
}

std::string TextFunctions::Format(TokenCursor& ioTokens) const
{
    constexpr size_t kLongest = 65536;
    ioTokens.Expect('(', "'(' and a format");
    const std::string format = ReadText(ioTokens, "a format in quotes");
    std::string text;
    for (size_t at = 0; at < format.size() && text.size() < kLongest;) {
        if (format[at] != '%') {
            text += format[at++];
            continue;
        }
        const Conversion conversion = ReadConversion(format, &++at);
        if (conversion.letter == '%') {
            text += '%';
            continue;
        }
        const Place place = ioTokens.Peek().place;
        ioTokens.Expect(',', "',' and a value for the format");
        if (conversion.letter == 's')
            text += ReadText(ioTokens, "a string for %s");
        else if (conversion.letter &&
                 std::string_view("diuxXo").find(conversion.letter) != std::string::npos &&
                 conversion.flags.size() < 8)
            text += NumberFormatted(conversion, ReadExpression(ioTokens, fNumbers, "a number"));
        else
            throw RezError(place, "a format knows %d, %u, %x, %X, %o, %s and %%");
    }
    ioTokens.Expect(')', "')' after the format");
    return text;
}

std::vector<Resource> ForkOf(const std::string& inFileBytes, Place inPlace)
{
    const auto container =
        resources::ReadContainer({ (const uint8_t*)inFileBytes.data(), inFileBytes.size() });
    std::vector<Resource> included;
    std::vector<std::string> problems = container.problems;
    if (!container.hasResourceFork || !ReadFork(container.resourceFork, &included, &problems))
        problems.push_back("not a resource file");
    if (!problems.empty())
        throw RezError(inPlace, "cannot include this file: " + problems.front());
    return included;
}

} // namespace lampblack::rsrc
