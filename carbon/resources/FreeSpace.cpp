// Gaps between the data.
#include "FreeSpace.h"

#include <algorithm>
#include <new>

namespace lampblack::resources {

FreeSpace::FreeSpace(const ResourceMap::Edits& inEdits, uint32_t inDataLength)
{
    std::vector<std::pair<uint32_t, uint32_t>> used; // offset and end
    used.reserve(inEdits.entries.size());
    for (const MapEntry& entry : inEdits.entries)
        if (entry.data != kNotWritten)
            used.push_back({ entry.data, entry.data + 4 + entry.length });
    std::sort(used.begin(), used.end());
    uint32_t at = 0;
    for (const auto& [offset, end] : used) {
        fIsShared |= offset < at;
        if (offset > at)
            fGaps[at] = offset - at;
        at = std::max(at, end);
    }
    if (at < inDataLength)
        fGaps[at] = inDataLength - at;
}

std::optional<uint32_t> FreeSpace::Take(uint32_t inLength)
{
    const auto found =
        std::find_if(fGaps.begin(), fGaps.end(), [&](const auto& gap) { return gap.second >= inLength; });
    if (found == fGaps.end())
        return {};
    const auto [offset, length] = *found;
    fGaps.erase(found);
    if (length > inLength)
        fGaps[offset + inLength] = length - inLength;
    return offset;
}

void FreeSpace::Give(uint32_t inOffset, uint32_t inLength)
{
    auto next = fGaps.lower_bound(inOffset);
    if (next != fGaps.end() && inOffset + inLength == next->first) {
        inLength += next->second;
        next = fGaps.erase(next);
    }
    if (next != fGaps.begin()) {
        const auto before = std::prev(next);
        if (before->first + before->second == inOffset) {
            before->second += inLength;
            return;
        }
    }
    try {
        fGaps[inOffset] = inLength;
    } catch (const std::bad_alloc&) {
        // Without memory the space stays unused.
    }
}

} // namespace lampblack::resources
