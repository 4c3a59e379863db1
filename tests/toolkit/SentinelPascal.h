// A Pascal string that shows whether anything was written behind it.
#ifndef LAMPBLACK_TESTS_SENTINELPASCAL_H
#define LAMPBLACK_TESTS_SENTINELPASCAL_H

#include <cstring>
#include <string>
#include <string_view>

// With sentinels behind the Str255 that holds it.
struct Pascal {
    unsigned char fBytes[256 + 16];

    Pascal() { std::memset(fBytes, 0xEE, sizeof fBytes); }
    Pascal(std::string_view inText) : Pascal()
    {
        fBytes[0] = static_cast<unsigned char>(inText.size());
        std::memcpy(fBytes + 1, inText.data(), inText.size());
    }
    Pascal(const char* inText) : Pascal(std::string_view(inText)) {}

    operator unsigned char*() { return fBytes; }
    std::string Text() const { return { reinterpret_cast<const char*>(fBytes + 1), fBytes[0] }; }
    bool IsWithin() const
    {
        for (size_t i = 256; i < sizeof fBytes; ++i)
            if (fBytes[i] != 0xEE)
                return false;
        return true;
    }
};

#endif
