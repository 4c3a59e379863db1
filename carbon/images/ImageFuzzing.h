// What the fuzz targets of the importers share: any bytes are opened as one format, and every row is read
// that comes, within a bound on the work.
#ifndef LAMPBLACK_IMAGES_IMAGEFUZZING_H
#define LAMPBLACK_IMAGES_IMAGEFUZZING_H

#include "ImageReader.h"

#include <array>
#include <cstdlib>
#include <vector>

namespace lampblack::images {

inline constexpr int64_t kFuzzedPixels = 1 << 20; // larger images take long and find nothing else

inline void ReadWhole(ImageReader& ioReader)
{
    const ImageFacts& facts = ioReader.Facts();
    if (CheckSize(facts.width, facts.height))
        std::abort(); // a reader must refuse it
    if ((int64_t)facts.width * facts.height > kFuzzedPixels)
        return;
    std::vector<uint32_t> pixels((size_t)facts.width * 4);
    std::array<uint32_t*, 4> rows;
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i] = pixels.data() + i * (size_t)facts.width;
    int done = 0;
    for (int count = 1; count > 0; done += count)
        count = ioReader.Read(rows.data(), (int)rows.size());
    if (done > facts.height || (done < facts.height) != (ioReader.Error() != noErr && done < facts.height))
        std::abort();
}

inline int FuzzImage(OSType inSubType, const uint8_t* inData, size_t inSize)
{
    ImageReaderPtr reader;
    const Bytes bytes(inData, inSize);
    IdentifyImage(bytes);
    if (OpenImage(inSubType, bytes, inSize & 1 ? codecNormalQuality : codecMinQuality, &reader) == noErr)
        ReadWhole(*reader);
    return 0;
}

} // namespace lampblack::images

#endif
