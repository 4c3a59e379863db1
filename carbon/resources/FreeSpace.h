// The parts of a fork's data area in which no data lie. Pure.
#ifndef LAMPBLACK_RESOURCES_FREESPACE_H
#define LAMPBLACK_RESOURCES_FREESPACE_H

#include "ResourceMap.h"

#include <map>
#include <optional>

namespace lampblack::resources {

class FreeSpace {
public:
    FreeSpace(const ResourceMap::Edits&, uint32_t inDataLength);

    std::optional<uint32_t> Take(uint32_t inLength); // the first place that is large enough
    void Give(uint32_t inOffset, uint32_t inLength);

    // Data of two resources share bytes: then what one gives up may still be another's.
    bool IsShared() const { return fIsShared; }

private:
    std::map<uint32_t, uint32_t> fGaps; // offset and length; no two touch
    bool fIsShared = false;
};

} // namespace lampblack::resources

#endif
