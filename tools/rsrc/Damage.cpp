#include "Damage.h"

#include "MacText.h"

#include <resources/ResourceFork.h>

#include <algorithm>
#include <string_view>

namespace lampblack::rsrc {

namespace {

using files::Bytes;
using files::Container;
using files::Form;
using foundation::ReadBE32;
using foundation::ReadBE8;

constexpr uint16_t kHasCustomIcon = 0x0400, kHasBundle = 0x2000, kIsAlias = 0x8000;
constexpr SInt16 kCustomIconID = -16455;

// Files of these types keep what they are in the resource fork.
constexpr OSType kForkTypes[] = { 'rsrc', 'RSRC', 'APPL', 'FFIL', 'DFIL', 'ffil', 'tfil',
                                  'sfil', 'INIT', 'cdev', 'dfil', 'rsrC', 'RSED', 'appe' };

std::string_view TextOf(Bytes inBytes)
{
    return { (const char*)inBytes.data(), inBytes.size() };
}

// Binary data of some size have returns by chance, all values being about as frequent. None among many line
// feeds means that somebody converted the line ends of a text that was none.
bool HasConvertedLineEnds(Bytes inBytes)
{
    const auto returns = std::count(inBytes.begin(), inBytes.end(), 0x0D);
    const auto feeds = std::count(inBytes.begin(), inBytes.end(), 0x0A);
    return returns == 0 && feeds > 0;
}

// Every return with a line feed behind it, and no other return.
bool HasDoubledLineEnds(Bytes inBytes)
{
    size_t pairs = 0, returns = 0;
    for (size_t i = 0; i < inBytes.size(); ++i)
        if (inBytes[i] == 0x0D) {
            ++returns;
            pairs += i + 1 < inBytes.size() && inBytes[i + 1] == 0x0A;
        }
    return returns > 8 && pairs == returns;
}

bool HasReplacementCharacters(Bytes inBytes)
{
    return TextOf(inBytes).find("\xEF\xBF\xBD") != std::string_view::npos;
}

// The likely reason of damage, as the end of a sentence.
std::string Reason(Bytes inBytes)
{
    if (HasReplacementCharacters(inBytes))
        return ": a conversion of text has replaced its bytes";
    if (HasDoubledLineEnds(inBytes))
        return ": a conversion has put line feeds behind its returns";
    if (HasConvertedLineEnds(inBytes))
        return ": a conversion has turned its returns into line feeds";
    return "";
}

// Whether bytes are missing. Turned returns leave the size as it is, and the other conversions make more.
bool IsCut(Bytes inBytes, uint64_t inExpected)
{
    return inBytes.size() < inExpected && !HasReplacementCharacters(inBytes) && !HasDoubledLineEnds(inBytes);
}

uint32_t WithoutReturns(uint32_t inValue)
{
    for (int shift = 0; shift < 32; shift += 8)
        if ((inValue >> shift & 0xFF) == 0x0D)
            inValue ^= 0x07u << shift; // 0x0A
    return inValue;
}

// Whether the first bytes are those of a fork as every program wrote it: data behind 256 bytes, then the map.
bool BeginsLikeFork(Bytes inBytes)
{
    const uint32_t dataOffset = ReadBE32(inBytes, 0), mapOffset = ReadBE32(inBytes, 4);
    const uint32_t dataLength = ReadBE32(inBytes, 8), mapLength = ReadBE32(inBytes, 12);
    return inBytes.size() >= 64 && dataOffset == 256 && mapOffset >= 256 && mapOffset < (1u << 24) + 256 &&
           mapLength >= 28 && mapLength < (1u << 24) &&
           WithoutReturns(mapOffset) == WithoutReturns(dataOffset + dataLength);
}

bool BeginsLikeMacBinary(Bytes inBytes)
{
    const bool hasSignature = inBytes.size() >= 128 && TextOf(inBytes).substr(102, 4) == "mBIN";
    return hasSignature && inBytes[0] == 0 && inBytes[1] >= 1 && inBytes[1] <= 63;
}

bool BeginsLikeApple(Bytes inBytes)
{
    return inBytes.size() >= 4 && ReadBE8(inBytes, 0) == 0 && ReadBE8(inBytes, 1) == 5 &&
           ReadBE8(inBytes, 2) == 0x16;
}

// Of bytes that no reader takes for a container.
std::string FindLostForm(Bytes inBytes)
{
    if (BeginsLikeFork(inBytes)) {
        const uint64_t expected = (uint64_t)ReadBE32(inBytes, 4) + ReadBE32(inBytes, 12);
        if (IsCut(inBytes, expected))
            return "a resource fork of " + std::to_string(expected) + " bytes, cut off after " +
                   std::to_string(inBytes.size());
        return "a resource fork that cannot be read" + Reason(inBytes);
    }
    if (BeginsLikeMacBinary(inBytes)) {
        const uint64_t forks = (uint64_t)ReadBE32(inBytes, 83) + ReadBE32(inBytes, 87);
        return IsCut(inBytes, forks + 128) ? "MacBinary, cut off"
                                           : "MacBinary with a damaged header" + Reason(inBytes);
    }
    if (BeginsLikeApple(inBytes))
        return "AppleSingle or AppleDouble with a damaged header" + Reason(inBytes);
    return "";
}

bool HasCustomIcon(const resources::ResourceFork& inFork)
{
    constexpr OSType kIcons[] = { 'icns', 'ICN#', 'icl8', 'icl4', 'ics#', 'ics8', 'ics4' };
    return std::any_of(std::begin(kIcons), std::end(kIcons),
                       [&](OSType type) { return (bool)inFork.Find(type, kCustomIconID); });
}

} // namespace

std::vector<std::string> FindDamage(Bytes inBytes)
{
    const Container container = files::ReadContainer(inBytes);
    std::vector<std::string> problems;
    for (const std::string& problem : container.problems)
        problems.push_back(std::string(files::FormName(container.form)) + ": " + problem);
    if (container.form == Form::None)
        if (const std::string lost = FindLostForm(inBytes); !lost.empty())
            problems.push_back(lost);
    resources::ResourceFork fork;
    if (!container.resourceFork.empty()) {
        if (const char* problem = fork.Open(container.resourceFork))
            problems.push_back(std::string("the resource fork: ") + problem);
        else
            for (const std::string& problem : fork.Check())
                problems.push_back("the resource fork: " + problem);
    }
    const bool isBinary = container.form != Form::None && container.form != Form::BinHex;
    if (!problems.empty() && isBinary)
        problems.front() += Reason(inBytes);
    return problems;
}

std::vector<std::string> FindBrokenPromises(const FInfo& inInfo, Bytes inResourceFork)
{
    resources::ResourceFork fork;
    if (!inResourceFork.empty() && fork.Open(inResourceFork))
        return {}; // damage is told elsewhere
    std::vector<std::string> problems;
    const std::string missing = inResourceFork.empty() ? "there is no resource fork" : "the fork has none";
    const OSType type = inInfo.fdType; // the record is packed; a reference to its field would be misaligned
    const bool isForkType =
        std::find(std::begin(kForkTypes), std::end(kForkTypes), type) != std::end(kForkTypes);
    if (isForkType && fork.ResourceCount() == 0)
        problems.push_back("the Finder information says " + QuotedCode(inInfo.fdType) +
                           ", which lives in its resource fork, and " +
                           (inResourceFork.empty() ? "there is none" : "that is empty"));
    if (inInfo.fdFlags & kHasBundle && fork.CountOf('BNDL') == 0)
        problems.push_back("the Finder information promises a bundle, and " + missing);
    if (inInfo.fdFlags & kHasCustomIcon && !HasCustomIcon(fork))
        problems.push_back("the Finder information promises an icon of its own, and " + missing);
    if (inInfo.fdFlags & kIsAlias && fork.CountOf('alis') == 0)
        problems.push_back("the Finder information says that this is an alias, and " + missing);
    return problems;
}

} // namespace lampblack::rsrc
