// Pascal and C strings, each from the other.
#include <Carbon/TextUtils.h>

#include <cstring>

void CopyCStringToPascal(const char* src, Str255 dst)
{
    if (!dst)
        return;
    const size_t length = src ? strnlen(src, 255) : 0;
    if (length > 0)
        std::memmove(dst + 1, src, length);
    dst[0] = static_cast<unsigned char>(length);
}

void c2pstrcpy(Str255 dst, const char* src)
{
    CopyCStringToPascal(src, dst);
}

void CopyPascalStringToC(ConstStr255Param src, char* dst)
{
    if (!dst)
        return;
    const size_t length = src ? src[0] : 0;
    if (length > 0)
        std::memmove(dst, src + 1, length);
    dst[length] = 0;
}

void p2cstrcpy(char* dst, ConstStr255Param src)
{
    CopyPascalStringToC(src, dst);
}
