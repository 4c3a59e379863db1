// Pascal and C strings, each from the other.
#include <Carbon/MacMemory.h>
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

StringPtr c2pstr(char* aStr)
{
    CopyCStringToPascal(aStr, reinterpret_cast<StringPtr>(aStr));
    return reinterpret_cast<StringPtr>(aStr);
}

char* p2cstr(StringPtr aStr)
{
    CopyPascalStringToC(aStr, reinterpret_cast<char*>(aStr));
    return reinterpret_cast<char*>(aStr);
}

StringPtr C2PStr(Ptr cString)
{
    return c2pstr(cString);
}

Ptr P2CStr(StringPtr pString)
{
    return p2cstr(pString);
}

StringHandle NewString(ConstStr255Param theString)
{
    Handle string = nullptr;
    if (theString)
        PtrToHand(theString, &string, theString[0] + 1);
    return reinterpret_cast<StringHandle>(string);
}

void SetString(StringHandle theString, ConstStr255Param strNew)
{
    if (strNew)
        PtrToXHand(strNew, reinterpret_cast<Handle>(theString), strNew[0] + 1);
}
