// What the fuzz targets of the containers share: whatever was read is written in every form and must read the
// same.
#ifndef LAMPBLACK_FILES_CONTAINERROUNDTRIP_H
#define LAMPBLACK_FILES_CONTAINERROUNDTRIP_H

#include "ContainerWriter.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace lampblack::files {

inline void Require(bool inHolds)
{
    if (!inHolds)
        std::abort();
}

// A form that carries all of the Finder information carries every byte of it.
inline void RequireSame(const FileParts& inParts, const Container& inRead, bool inKeepsAllInfo)
{
    Require(inRead.problems.empty());
    Require(std::ranges::equal(inRead.resourceFork, inParts.resourceFork));
    uint8_t written[32], read[32];
    FinderInfoToBytes(inParts.finderInfo, written);
    ExtendedInfoToBytes(inParts.extendedFinderInfo, written + 16);
    FinderInfoToBytes(inRead.finderInfo, read);
    ExtendedInfoToBytes(inRead.extendedFinderInfo, read + 16);
    Require(std::memcmp(written, read, inKeepsAllInfo ? 32 : 10) == 0);
}

inline FileParts PartsOf(const Container& inContainer)
{
    FileParts parts;
    parts.name = inContainer.name;
    parts.finderInfo = inContainer.finderInfo;
    parts.extendedFinderInfo = inContainer.extendedFinderInfo;
    parts.dataFork = inContainer.dataFork;
    parts.resourceFork = inContainer.resourceFork;
    parts.dates = inContainer.dates;
    return parts;
}

inline void CheckEveryForm(const Container& inContainer)
{
    const FileParts parts = PartsOf(inContainer);
    const auto twin = WriteAppleDouble(parts);
    RequireSame(parts, ReadContainer(twin), true);
    const std::vector<uint8_t> forms[] = { WriteAppleSingle(parts), WriteMacBinary(parts),
                                           WriteBinHex(parts) };
    for (const std::vector<uint8_t>& bytes : forms) {
        const Container read = ReadContainer(bytes);
        Require(read.form != Form::None);
        RequireSame(parts, read, &bytes == &forms[0]);
        Require(std::ranges::equal(read.dataFork, parts.dataFork));
    }
}

} // namespace lampblack::files

#endif
