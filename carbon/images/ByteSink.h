// Bytes that grow while a library writes them; no memory is an answer, not an exception, since it is C that
// asks.
#ifndef LAMPBLACK_IMAGES_BYTESINK_H
#define LAMPBLACK_IMAGES_BYTESINK_H

#include <foundation/BigEndian.h>

#include <cstdlib>

namespace lampblack::images {

class ByteSink {
public:
    ByteSink() = default;
    ~ByteSink() { std::free(fBytes); }
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;

    // False when there is no memory; what is there stays.
    bool Reserve(size_t inCapacity)
    {
        void* bytes = inCapacity > kMost ? nullptr : std::realloc(fBytes, inCapacity);
        if (!bytes)
            return false;
        fBytes = static_cast<uint8_t*>(bytes);
        fCapacity = inCapacity;
        return true;
    }
    bool Append(const void* inBytes, size_t inCount)
    {
        if (inCount > fCapacity - fSize && !Reserve(2 * fCapacity + inCount))
            return false;
        std::memcpy(fBytes + fSize, inBytes, inCount);
        fSize += inCount;
        return true;
    }

    uint8_t* Data() { return fBytes; }
    size_t Capacity() const { return fCapacity; }
    void SetSize(size_t inSize) { fSize = inSize; }
    foundation::Bytes All() const { return { fBytes, fSize }; }

private:
    static constexpr size_t kMost = size_t(1) << 31; // no handle is larger

    uint8_t* fBytes = nullptr;
    size_t fSize = 0, fCapacity = 0;
};

} // namespace lampblack::images

#endif
