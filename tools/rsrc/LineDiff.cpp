#include "LineDiff.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <vector>

namespace lampblack::rsrc {

namespace {

constexpr size_t kMostCells = 16'000'000;

using Lines = std::vector<std::string>;

Lines LinesOf(const std::string& inText)
{
    Lines lines;
    std::istringstream stream(inText);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string Marked(const Lines& inLines, const char* inMark)
{
    std::string text;
    for (const std::string& line : inLines)
        text += inMark + line + "\n";
    return text;
}

// The length of the longest common subsequence of what is behind each pair of lines.
std::string ShortestDiff(const Lines& inOld, const Lines& inNew)
{
    const size_t width = inNew.size() + 1;
    std::vector<uint32_t> common((inOld.size() + 1) * width);
    for (size_t i = inOld.size(); i-- > 0;)
        for (size_t j = inNew.size(); j-- > 0;)
            common[i * width + j] = inOld[i] == inNew[j]
                                        ? common[(i + 1) * width + j + 1] + 1
                                        : std::max(common[(i + 1) * width + j], common[i * width + j + 1]);
    std::string text;
    for (size_t i = 0, j = 0; i < inOld.size() || j < inNew.size();) {
        if (i < inOld.size() && j < inNew.size() && inOld[i] == inNew[j]) {
            ++i;
            ++j;
        } else if (j == inNew.size() ||
                   (i < inOld.size() && common[(i + 1) * width + j] >= common[i * width + j + 1])) {
            text += "- " + inOld[i++] + "\n";
        } else {
            text += "+ " + inNew[j++] + "\n";
        }
    }
    return text;
}

} // namespace

std::string LineDiff(const std::string& inOld, const std::string& inNew)
{
    Lines before = LinesOf(inOld), after = LinesOf(inNew);
    while (!before.empty() && !after.empty() && before.back() == after.back()) {
        before.pop_back();
        after.pop_back();
    }
    size_t same = 0;
    while (same < before.size() && same < after.size() && before[same] == after[same])
        ++same;
    before.erase(before.begin(), before.begin() + (ptrdiff_t)same);
    after.erase(after.begin(), after.begin() + (ptrdiff_t)same);
    if ((before.size() + 1) * (after.size() + 1) > kMostCells)
        return Marked(before, "- ") + Marked(after, "+ ");
    return ShortestDiff(before, after);
}

} // namespace lampblack::rsrc
