// Names in Unicode: what the host's names look like, and which of them is meant.
#include "UnicodeNames.h"

#include "FileReferences.h"
#include "Listing.h"

#include <Carbon/CFString.h>
#include <foundation/MacRoman.h>

#include <algorithm>
#include <new>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr size_t kLongestName = 255;

// A ':' of the host is a '/' here.
std::u16string UnicodeOfHostName(std::string_view inHostName)
{
    std::u16string name = foundation::Utf16FromUtf8(inHostName);
    std::replace(name.begin(), name.end(), u':', u'/');
    return name;
}

bool TakeName(const ListedName& inName, Item* ioItem)
{
    Item item = { ioItem->parent, std::string(inName.hostName), std::string(inName.macName) };
    if (!LookAtHost(&item))
        return false;
    *ioItem = item;
    return true;
}

class Text {
public:
    explicit Text(std::u16string_view inText)
        : fText(CFStringCreateWithCharacters(nullptr, (const UniChar*)inText.data(), (CFIndex)inText.size()))
    {
    }
    ~Text()
    {
        if (fText)
            CFRelease(fText);
    }
    Text(const Text&) = delete;

    bool Is(const Text& inOther, CFOptionFlags inHow) const
    {
        return CFStringCompare(fText, inOther.fText, inHow) == kCFCompareEqualTo;
    }

private:
    CFStringRef fText;
};

// Of the names that have only a short form in Mac Roman, the one that is meant; null when none is.
const ListedName* FindAmongShort(const Listing& inListing, std::u16string_view inWanted)
{
    const Text wanted(inWanted);
    const ListedName* inCapitals = nullptr;
    for (const ListedName& name : inListing.Names()) {
        if (!name.isShort)
            continue;
        const Text text(UnicodeOfHostName(name.hostName));
        if (text.Is(wanted, kCFCompareNonliteral))
            return &name;
        if (!inCapitals && text.Is(wanted, kCFCompareNonliteral | kCFCompareCaseInsensitive))
            inCapitals = &name;
    }
    return inCapitals;
}

// The name in Mac Roman, when it has one in full.
bool MacNameOfUnicode(const std::string& inHostName, std::string* outMacName)
{
    bool isShort = false;
    *outMacName = MacNameOf(inHostName, &isShort);
    return !isShort;
}

bool SearchFolder(const path& inFolder, std::u16string_view inWanted, Item* ioItem)
{
    const auto listing = ListingOf(inFolder);
    std::string macName;
    if (!MacNameOfUnicode(ioItem->hostName, &macName)) {
        const ListedName* found = FindAmongShort(*listing, inWanted);
        return found && TakeName(*found, ioItem);
    }
    const auto named = listing->Named(macName);
    const auto isExact = [&](const ListedName& name) { return !name.isShort && name.macName == macName; };
    const auto exact = std::find_if(named.begin(), named.end(), isExact);
    if (exact != named.end() && TakeName(*exact, ioItem))
        return true;
    return std::any_of(named.begin(), named.end(),
                       [&](const ListedName& name) { return !name.isShort && TakeName(name, ioItem); });
}

} // namespace

HFSUniStr255 UnicodeNameOf(const Item& inItem)
{
    const std::u16string text = inItem.hostName.empty()
                                    ? foundation::Utf16FromUtf8(foundation::Utf8FromMacRoman(inItem.macName))
                                    : UnicodeOfHostName(inItem.hostName);
    HFSUniStr255 name = {};
    name.length = (UInt16)std::min(text.size(), kLongestName);
    std::copy_n(text.begin(), name.length, name.unicode);
    return name;
}

OSErr HostNameOfUnicode(UniCharCount inLength, const UniChar* inName, std::string* outHostName)
{
    if (inLength == 0 || !inName)
        return errFSMissingName;
    if (inLength > kLongestName)
        return errFSNameTooLong;
    const std::u16string text(inName, inName + inLength);
    if (text.find(u':') != text.npos || text.find(u'\0') != text.npos || text == u"." || text == u"..")
        return bdNamErr;
    *outHostName = foundation::Utf8FromUtf16(text);
    std::replace(outHostName->begin(), outHostName->end(), '/', ':');
    return noErr;
}

OSErr LookUpUnicode(Folder inFolder, UniCharCount inLength, const UniChar* inName, Item* outItem)
{
    *outItem = { inFolder, "", "" };
    const OSErr error = HostNameOfUnicode(inLength, inName, &outItem->hostName);
    if (error != noErr)
        return error;
    outItem->macName = MacNameOf(outItem->hostName);
    if (LookAtHost(outItem))
        return noErr;
    const std::u16string wanted(inName, inName + inLength);
    return SearchFolder(PathOf(inFolder), wanted, outItem) ? noErr : fnfErr;
}

} // namespace lampblack::files

using namespace lampblack::files;

OSErr FSMakeFSRefUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name, TextEncoding,
                         FSRef* newRef)
try {
    if (!newRef)
        return paramErr;
    Item parent, item;
    OSErr error = FolderOfRef(parentRef, &parent);
    if (error == noErr)
        error = LookUpUnicode(NodeOf(parent), nameLength, name, &item);
    if (error == noErr)
        MakeRef(item, newRef);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
