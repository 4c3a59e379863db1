// Icon families in handles.
#include "icons/Family.h"
#include "icons/Suites.h"

#include <Carbon/MacMemory.h>

#include <cstring>

using namespace lampblack::icons;

namespace lampblack::icons {

static OSErr Store(Bytes inBytes, Handle outHandle)
{
    SetHandleSize(outHandle, (Size)inBytes.size());
    if (const OSErr error = MemError())
        return error;
    if (!inBytes.empty())
        std::memcpy(*outHandle, inBytes.data(), inBytes.size());
    return noErr;
}

static Handle HandleOf(IconFamilyHandle inFamily)
{
    return reinterpret_cast<Handle>(inFamily);
}

static bool IsFamily(IconFamilyHandle inFamily)
{
    return ForEachElement(BytesOf(HandleOf(inFamily)), [](OSType, Bytes) { return true; });
}

// What of a member a family gets, or nothing for a wrong size. Bits may come without a mask.
static std::vector<uint8_t> ElementOf(OSType inType, Bytes inData)
{
    Kind kind;
    if (!FindKind(inType, &kind))
        return { inData.begin(), inData.end() };
    const bool isHalf = kind.data == Data::Bits && inData.size() == kind.Bytes() / 2;
    if (inData.size() != kind.Bytes() && !isHalf)
        return {};
    return PackElement(kind, inData);
}

static Bytes FindElement(IconFamilyHandle inFamily, OSType inType)
{
    Bytes found;
    ForEachElement(BytesOf(HandleOf(inFamily)), [&](OSType type, Bytes bytes) {
        if (type == inType)
            found = bytes;
        return type != inType;
    });
    return found;
}

static Members MembersOf(const Suite& inSuite, IconSelectorValue inSelector)
{
    Members members;
    ForEachKind([&](Kind kind) {
        if (kind.IsSelectedBy(inSelector))
            members.data[kind.Place()] = UnpackElement(kind, BytesOf(inSuite.data[kind.Place()]));
    });
    return members;
}

static bool FillSuite(const Members& inMembers, IconSelectorValue inSelector, Suite& ioSuite)
{
    bool isFull = true;
    ForEachKind([&](Kind kind) {
        const Bytes bytes = inMembers.At(kind);
        Handle& data = ioSuite.data[kind.Place()];
        if (kind.IsSelectedBy(inSelector) && !bytes.empty())
            isFull = PtrToHand(bytes.data(), &data, (Size)bytes.size()) == noErr && isFull;
    });
    return isFull;
}

} // namespace lampblack::icons

OSErr SetIconFamilyData(IconFamilyHandle iconFamily, OSType iconType, Handle h)
{
    if (!IsFamily(iconFamily) || (h && !IsHandleValid(h)))
        return paramErr;
    const std::vector<uint8_t> element = ElementOf(iconType, BytesOf(h));
    if (element.empty() && !BytesOf(h).empty())
        return paramErr;
    return Store(WithElement(BytesOf(HandleOf(iconFamily)), iconType, element), HandleOf(iconFamily));
}

OSErr GetIconFamilyData(IconFamilyHandle iconFamily, OSType iconType, Handle h)
{
    if (!IsFamily(iconFamily) || !IsHandleValid(h))
        return paramErr;
    const Bytes element = FindElement(iconFamily, iconType);
    Kind kind;
    const std::vector<uint8_t> data = FindKind(iconType, &kind)
                                          ? UnpackElement(kind, element)
                                          : std::vector<uint8_t>(element.begin(), element.end());
    return data.empty() ? (OSErr)noIconDataAvailableErr : Store(data, h);
}

OSErr IconSuiteToIconFamily(IconSuiteRef iconSuite, IconSelectorValue whichIcons,
                            IconFamilyHandle* iconFamily)
{
    const Suite* suite = FindSuite(iconSuite);
    if (!suite || !iconFamily)
        return paramErr;
    const std::vector<uint8_t> bytes = FamilyOf(MembersOf(*suite, whichIcons));
    Handle handle = nullptr;
    const OSErr error = PtrToHand(bytes.data(), &handle, (Size)bytes.size());
    *iconFamily = reinterpret_cast<IconFamilyHandle>(handle);
    return error;
}

OSErr IconFamilyToIconSuite(IconFamilyHandle iconFamily, IconSelectorValue whichIcons,
                            IconSuiteRef* iconSuite)
{
    if (!iconSuite)
        return paramErr;
    *iconSuite = nullptr;
    const std::optional<Members> members = ReadFamily(BytesOf(HandleOf(iconFamily)));
    if (!members)
        return paramErr;
    Suite* suite = NewSuite();
    const bool isFull = FillSuite(*members, whichIcons, *suite);
    *iconSuite = ReferenceOf(suite);
    if (isFull)
        return noErr;
    DisposeIconSuite(*iconSuite, true);
    *iconSuite = nullptr;
    return memFullErr;
}
