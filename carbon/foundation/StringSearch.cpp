// Comparing strings and finding one in another.
#include "FoldedText.h"
#include "StringObject.h"

#include <Carbon/CFString.h>

#include <algorithm>
#include <clocale>
#include <cwchar>

using namespace lampblack::foundation;

namespace {

CFComparisonResult Result(long inDifference)
{
    return inDifference < 0   ? kCFCompareLessThan
           : inDifference > 0 ? kCFCompareGreaterThan
                              : kCFCompareEqualTo;
}

bool IsDigit(char32_t inCharacter)
{
    return inCharacter >= '0' && inCharacter <= '9';
}

// A zero would end the text there; it counts as the character after it.
std::wstring WideOf(std::u32string_view inText)
{
    std::wstring text(inText.begin(), inText.end());
    std::replace(text.begin(), text.end(), L'\0', L'\1');
    return text;
}

long Collate(std::u32string_view inA, std::u32string_view inB)
{
    static const locale_t user = newlocale(LC_COLLATE_MASK | LC_CTYPE_MASK, "", (locale_t)0);
    if (!user)
        return inA.compare(inB);
    return wcscoll_l(WideOf(inA).c_str(), WideOf(inB).c_str(), user);
}

long CompareTexts(std::u32string_view inA, std::u32string_view inB, CFOptionFlags inOptions)
{
    return inOptions & kCFCompareLocalized ? Collate(inA, inB) : inA.compare(inB);
}

long CompareNumbers(std::u32string_view inA, std::u32string_view inB)
{
    inA.remove_prefix(std::min(inA.find_first_not_of(U'0'), inA.size()));
    inB.remove_prefix(std::min(inB.find_first_not_of(U'0'), inB.size()));
    return inA.size() != inB.size() ? (long)inA.size() - (long)inB.size() : inA.compare(inB);
}

// Takes the characters up to where digits begin or end.
std::u32string_view TakeRun(std::u32string_view& ioText)
{
    const bool isNumber = IsDigit(ioText.front());
    const auto end =
        std::find_if(ioText.begin(), ioText.end(), [&](char32_t c) { return IsDigit(c) != isNumber; });
    const std::u32string_view run = ioText.substr(0, (size_t)(end - ioText.begin()));
    ioText.remove_prefix(run.size());
    return run;
}

long CompareRuns(std::u32string_view inA, std::u32string_view inB, CFOptionFlags inOptions)
{
    while (!inA.empty() && !inB.empty()) {
        const bool areNumbers = IsDigit(inA.front()) && IsDigit(inB.front());
        const std::u32string_view a = TakeRun(inA), b = TakeRun(inB);
        const long difference = areNumbers ? CompareNumbers(a, b) : CompareTexts(a, b, inOptions);
        if (difference)
            return difference;
    }
    return (long)inA.size() - (long)inB.size();
}

CFComparisonResult Compare(std::u16string_view inA, std::u16string_view inB, CFOptionFlags inOptions)
{
    if (IsLiteral(inOptions) && !(inOptions & (kCFCompareLocalized | kCFCompareNumerically)))
        return Result(inA.compare(inB));
    const FoldedText a(inA, inOptions), b(inB, inOptions);
    return Result(inOptions & kCFCompareNumerically ? CompareRuns(a.Text(), b.Text(), inOptions)
                                                    : CompareTexts(a.Text(), b.Text(), inOptions));
}

// Of a text where another may stand; inAccept answers the range of a place, or none when it does not count.
template <class View, class Accept>
std::vector<CFRange> Search(View inText, View inWanted, CFOptionFlags inOptions, size_t inMost,
                            Accept inAccept)
{
    std::vector<CFRange> found;
    const bool isBackwards = inOptions & kCFCompareBackwards;
    if (inWanted.empty() || inWanted.size() > inText.size())
        return found;
    size_t at = isBackwards ? inText.size() - inWanted.size() : 0;
    if (inOptions & kCFCompareAnchored) {
        inText = inText.substr(0, at + inWanted.size());
        inMost = 1;
        if (inText.substr(at) != inWanted)
            return found;
    }
    while (found.size() < inMost) {
        const size_t place = isBackwards ? inText.rfind(inWanted, at) : inText.find(inWanted, at);
        if (place == View::npos)
            break;
        const std::optional<CFRange> range = inAccept(place);
        if (range)
            found.push_back(*range);
        const size_t step = range ? inWanted.size() : 1;
        if ((inOptions & kCFCompareAnchored) || (isBackwards && place < step))
            break;
        at = isBackwards ? place - step : place + step;
    }
    return found;
}

std::vector<CFRange> FindAll(std::u16string_view inText, std::u16string_view inWanted,
                             CFOptionFlags inOptions, size_t inMost)
{
    if (IsLiteral(inOptions))
        return Search(inText, inWanted, inOptions, inMost, [&](size_t place) {
            return std::optional(CFRangeMake((CFIndex)place, (CFIndex)inWanted.size()));
        });
    const FoldedText text(inText, inOptions), wanted(inWanted, inOptions);
    const std::u32string_view folded = text.Text(), part = wanted.Text();
    return Search(folded, part, inOptions, inMost, [&](size_t place) { return text.Match(place, part); });
}

// Answers the text with each range, which may come from the last to the first, replaced.
std::u16string Replaced(std::u16string_view inText, std::vector<CFRange> inRanges,
                        std::u16string_view inReplacement)
{
    std::sort(inRanges.begin(), inRanges.end(), [](CFRange a, CFRange b) { return a.location < b.location; });
    std::u16string text;
    size_t kept = 0;
    for (const CFRange& range : inRanges) {
        text += inText.substr(kept, (size_t)range.location - kept);
        text += inReplacement;
        kept = (size_t)(range.location + range.length);
    }
    return text += inText.substr(kept);
}

bool IsAtEnd(CFStringRef inString, CFStringRef inPart, CFOptionFlags inOptions)
{
    const CFRange whole = CFRangeMake(0, CFStringGetLength(inString));
    return CFStringFindWithOptions(inString, inPart, whole, inOptions | kCFCompareAnchored, nullptr);
}

} // namespace

CFComparisonResult CFStringCompare(CFStringRef theString1, CFStringRef theString2,
                                   CFOptionFlags compareOptions)
{
    return CFStringCompareWithOptions(theString1, theString2, CFRangeMake(0, CFStringGetLength(theString1)),
                                      compareOptions);
}

CFComparisonResult CFStringCompareWithOptions(CFStringRef theString1, CFStringRef theString2,
                                              CFRange rangeToCompare, CFOptionFlags compareOptions)
{
    const auto a = TextOf(theString1), b = TextOf(theString2);
    if (!a || !b || !Within(rangeToCompare, a->size()))
        return Result((long)a.has_value() - (long)b.has_value());
    return Compare(Part(*a, rangeToCompare), *b, compareOptions);
}

CFRange CFStringFind(CFStringRef theString, CFStringRef stringToFind, CFOptionFlags compareOptions)
{
    CFRange found = CFRangeMake(kCFNotFound, 0);
    CFStringFindWithOptions(theString, stringToFind, CFRangeMake(0, CFStringGetLength(theString)),
                            compareOptions, &found);
    return found;
}

Boolean CFStringFindWithOptions(CFStringRef theString, CFStringRef stringToFind, CFRange rangeToSearch,
                                CFOptionFlags searchOptions, CFRange* result)
{
    const auto text = TextOf(theString), wanted = TextOf(stringToFind);
    if (!text || !wanted || !Within(rangeToSearch, text->size()))
        return false;
    const std::vector<CFRange> found = FindAll(Part(*text, rangeToSearch), *wanted, searchOptions, 1);
    if (!found.empty() && result)
        *result = CFRangeMake(found[0].location + rangeToSearch.location, found[0].length);
    return !found.empty();
}

Boolean CFStringHasPrefix(CFStringRef theString, CFStringRef prefix)
{
    return IsAtEnd(theString, prefix, 0);
}

Boolean CFStringHasSuffix(CFStringRef theString, CFStringRef suffix)
{
    return IsAtEnd(theString, suffix, kCFCompareBackwards);
}

CFIndex CFStringFindAndReplace(CFMutableStringRef theString, CFStringRef stringToFind,
                               CFStringRef replacementString, CFRange rangeToSearch,
                               CFOptionFlags compareOptions)
{
    StringObject* string = Changeable(theString);
    const auto wanted = TextOf(stringToFind), replacement = TextOf(replacementString);
    if (!string || !wanted || !replacement || !Within(rangeToSearch, string->Text().size()))
        return 0;
    std::vector<CFRange> found =
        FindAll(Part(string->Text(), rangeToSearch), *wanted, compareOptions, std::u16string::npos);
    for (CFRange& range : found)
        range.location += rangeToSearch.location;
    if (!found.empty())
        string->SetText(Replaced(string->Text(), found, *replacement));
    return (CFIndex)found.size();
}
