// Coercions among the types that name files: by FSSpec, by FSRef, as an alias record, as a URL.
#include "DescriptorCoercions.h"

#include <Carbon/Aliases.h>
#include <Carbon/FileCatalog.h>
#include <Carbon/MacMemory.h>

#include <cstring>

namespace lampblack::process {

namespace {

constexpr std::string_view kScheme = "file:";
constexpr size_t kLongestPath = 0x10000;

OSErr RefOfPath(const std::string& inPath, FSRef* outRef)
{
    return static_cast<OSErr>(FSPathMakeRef(reinterpret_cast<const UInt8*>(inPath.c_str()), outRef, nullptr));
}

int HexDigit(char inCharacter)
{
    if (inCharacter >= '0' && inCharacter <= '9')
        return inCharacter - '0';
    const char small = static_cast<char>(inCharacter | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

// False for a '%' without two digits, and for a zero byte, with which no path can be said.
bool DecodePercents(std::string_view inText, std::string* outText)
{
    outText->clear();
    for (size_t i = 0; i < inText.size(); ++i) {
        char character = inText[i];
        if (character == '%') {
            if (i + 2 >= inText.size())
                return false;
            const int high = HexDigit(inText[i + 1]);
            const int low = HexDigit(inText[i + 2]);
            if (high < 0 || low < 0)
                return false;
            character = static_cast<char>(high * 16 + low);
            i += 2;
        }
        if (character == 0)
            return false;
        *outText += character;
    }
    return true;
}

std::string EncodePercents(std::string_view inPath)
{
    constexpr std::string_view kPlain = "/-._~!$&'()*+,=:@"; // besides letters and digits (RFC 3986)
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char character : inPath) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isPlain = (byte >= '0' && byte <= '9') || ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z');
        if (isPlain || kPlain.find(character) != std::string_view::npos)
            text += character;
        else
            text += { '%', kDigits[byte >> 4], kDigits[byte & 15] };
    }
    return text;
}

bool BeginsWith(std::string_view inText, std::string_view inSmallLetters)
{
    if (inText.size() < inSmallLetters.size())
        return false;
    for (size_t i = 0; i < inSmallLetters.size(); ++i) {
        const char letter = inText[i];
        if ((letter >= 'A' && letter <= 'Z' ? letter | 0x20 : letter) != inSmallLetters[i])
            return false;
    }
    return true;
}

// The path of "file:///path", "file://localhost/path" or "file:/path"; false for anything else.
bool PathOfURL(std::string_view inURL, std::string* outPath)
{
    if (!BeginsWith(inURL, kScheme))
        return false;
    inURL.remove_prefix(kScheme.size());
    if (BeginsWith(inURL, "//")) {
        inURL.remove_prefix(2);
        if (BeginsWith(inURL, "localhost/"))
            inURL.remove_prefix(inURL.find('/'));
    }
    inURL = inURL.substr(0, inURL.find_first_of("?#"));
    return BeginsWith(inURL, "/") && DecodePercents(inURL, outPath);
}

// The record is read where the Alias Manager wants it, in a handle.
OSErr RefOfAlias(std::string_view inRecord, FSRef* outRef)
{
    Handle alias = nullptr;
    OSErr err = PtrToHand(inRecord.data(), &alias, static_cast<long>(inRecord.size()));
    if (err != noErr)
        return err;
    Boolean wasChanged = false;
    err = FSResolveAlias(nullptr, reinterpret_cast<AliasHandle>(alias), outRef, &wasChanged);
    DisposeHandle(alias);
    return err;
}

template <class Record>
OSErr ReadRecord(const Typed& inValue, Record* outRecord)
{
    if (inValue.Bytes().size() != sizeof *outRecord)
        return errAECoercionFail;
    std::memcpy(outRecord, inValue.Bytes().data(), sizeof *outRecord);
    return noErr;
}

OSErr RefOf(const Typed& inValue, FSRef* outRef)
{
    switch (inValue.type) {
    case typeFSRef: return ReadRecord(inValue, outRef);
    case typeAlias: {
        const auto* alias = reinterpret_cast<const AliasRecord*>(inValue.Bytes().data());
        const auto size = static_cast<Size>(inValue.Bytes().size());
        const Size said = size >= static_cast<Size>(sizeof *alias) ? GetAliasSizeFromPtr(alias) : 0;
        return said > 0 && said <= size ? RefOfAlias(inValue.Bytes(), outRef) : OSErr{ errAECoercionFail };
    }
    case typeFileURL: {
        std::string path;
        return PathOfURL(inValue.Bytes(), &path) ? RefOfPath(path, outRef) : OSErr{ errAECoercionFail };
    }
    default: {
        FSSpec spec;
        const OSErr err = ReadRecord(inValue, &spec);
        return err == noErr ? FSpMakeFSRef(&spec, outRef) : err;
    }
    }
}

template <class Record>
Typed RecordOf(DescType inType, const Record& inRecord)
{
    return DataOf(inType, { reinterpret_cast<const char*>(&inRecord), sizeof inRecord });
}

OSErr MakeSpec(const FSRef& inRef, Typed* outValue)
{
    FSSpec spec;
    const OSErr err = FSGetCatalogInfo(&inRef, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
    if (err == noErr)
        *outValue = RecordOf(typeFSS, spec);
    return err;
}

OSErr MakeAlias(const FSRef& inRef, Typed* outValue)
{
    AliasHandle alias = nullptr;
    const OSErr err = FSNewAlias(nullptr, &inRef, &alias);
    if (err != noErr)
        return err;
    const auto handle = reinterpret_cast<Handle>(alias);
    *outValue = DataOf(typeAlias, { *handle, static_cast<size_t>(GetHandleSize(handle)) });
    DisposeHandle(handle);
    return noErr;
}

// The URL of a folder ends with a '/'.
OSErr MakeURL(const FSRef& inRef, Typed* outValue)
{
    std::string path(kLongestPath, '\0');
    FSCatalogInfo info;
    OSErr err = static_cast<OSErr>(
        FSRefMakePath(&inRef, reinterpret_cast<UInt8*>(path.data()), static_cast<UInt32>(path.size())));
    if (err == noErr)
        err = FSGetCatalogInfo(&inRef, kFSCatInfoNodeFlags, &info, nullptr, nullptr, nullptr);
    if (err != noErr)
        return err;
    path.resize(std::strlen(path.c_str()));
    if ((info.nodeFlags & kFSNodeIsDirectoryMask) && path.back() != '/')
        path += '/';
    *outValue = DataOf(typeFileURL, "file://" + EncodePercents(path));
    return noErr;
}

} // namespace

bool IsFileType(DescType inType)
{
    return inType == typeFSS || inType == typeFSRef || inType == typeAlias || inType == typeFileURL;
}

OSErr CoerceFile(const Typed& inValue, DescType inTo, Typed* outValue)
{
    FSRef ref;
    if (const OSErr err = RefOf(inValue, &ref); err != noErr)
        return err;
    switch (inTo) {
    case typeFSS: return MakeSpec(ref, outValue);
    case typeAlias: return MakeAlias(ref, outValue);
    case typeFileURL: return MakeURL(ref, outValue);
    default: *outValue = RecordOf(typeFSRef, ref); return noErr;
    }
}

} // namespace lampblack::process
