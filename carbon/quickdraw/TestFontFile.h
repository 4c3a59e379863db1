// For tests: a resource file in a scratch folder with fonts in it.
#ifndef LAMPBLACK_QUICKDRAW_TESTFONTFILE_H
#define LAMPBLACK_QUICKDRAW_TESTFONTFILE_H

#include "TestFont.h"

#include <Carbon/MacErrors.h>
#include <Carbon/Resources.h>

#include <ScratchFolder.h>
#include <doctest/doctest.h>

#include <cstring>

namespace lampblack::quickdraw {

struct PascalText {
    Str255 text;
    PascalText(const std::string& inText)
    {
        text[0] = (unsigned char)inText.size();
        std::memcpy(text + 1, inText.data(), inText.size());
    }
    operator ConstStr255Param() const { return text; }
};

// A new resource file, open and current while this lives.
class FontFile {
public:
    explicit FontFile(const char* name = "fonts")
    {
        FSRef folder, ref;
        REQUIRE(FSPathMakeRef((const UInt8*)fFolder.Path().c_str(), &folder, nullptr) == noErr);
        const std::u16string wide(name, name + std::strlen(name));
        FSCreateResFile(&folder, wide.size(), (const UniChar*)wide.data(), 0, nullptr, &ref, nullptr);
        REQUIRE(ResError() == noErr);
        fRefNum = FSOpenResFile(&ref, fsRdWrPerm);
        REQUIRE(fRefNum > 0);
    }
    ~FontFile() { Close(); }
    void Close()
    {
        if (fRefNum > 0)
            CloseResFile(fRefNum);
        fRefNum = 0;
    }
    SInt16 RefNum() const { return fRefNum; }

    static void Add(OSType type, SInt16 id, const std::vector<uint8_t>& bytes, const char* name = "")
    {
        Handle handle = nullptr;
        PtrToHand(bytes.data(), &handle, (long)bytes.size());
        AddResource(handle, type, id, PascalText(name));
        REQUIRE(ResError() == noErr);
    }
    static void AddSmallFamily(SInt16 number, const char* name)
    {
        Add('NFNT', 1000, SmallFont().Bytes());
        Add('FOND', number, FamilyBytes({ { 4, normal, 1000 } }), name);
    }

private:
    ScratchFolder fFolder;
    SInt16 fRefNum = 0;
};

} // namespace lampblack::quickdraw

#endif
