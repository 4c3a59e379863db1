// Bytes of any kind as text of every encoding: what can be read is written, searched, folded and compared.
#include <Carbon/CFString.h>

namespace {

constexpr CFStringEncoding kEncodings[] = { kCFStringEncodingMacRoman, kCFStringEncodingWindowsLatin1,
                                            kCFStringEncodingUTF8,     kCFStringEncodingUTF16,
                                            kCFStringEncodingUTF16BE,  kCFStringEncodingUTF32 };

void Use(CFStringRef inString, UInt8 inOptions)
{
    const CFIndex length = CFStringGetLength(inString);
    const CFRange half = CFRangeMake(length / 2, length - length / 2);
    CFStringRef part = CFStringCreateWithSubstring(nullptr, inString, half);
    CFMutableStringRef text = CFStringCreateMutableCopy(nullptr, 0, inString);
    for (const CFStringEncoding encoding : kEncodings)
        CFStringGetBytes(inString, half, encoding, inOptions, inOptions & 1, nullptr, 0, nullptr);
    CFStringCompare(inString, part, inOptions);
    CFStringFindAndReplace(text, part, CFSTR("*"), CFRangeMake(0, length), inOptions);
    CFStringGetDoubleValue(part);
    CFStringGetIntValue(part);
    CFStringUppercase(text, nullptr);
    CFStringCapitalize(text, nullptr);
    CFRelease(text);
    CFRelease(part);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    if (!inSize)
        return 0;
    for (const CFStringEncoding encoding : kEncodings) {
        CFStringRef string =
            CFStringCreateWithBytes(nullptr, inData + 1, (CFIndex)inSize - 1, encoding, inData[0] & 0x80);
        if (!string)
            continue;
        Use(string, inData[0] & 0x7F);
        CFRelease(string);
    }
    return 0;
}
