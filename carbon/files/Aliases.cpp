// Entries on alias records: making, resolving, bringing up to date, looking into.
#include <Carbon/Aliases.h>
#include <Carbon/MacMemory.h>

#include "AliasTargets.h"
#include "FileReferences.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <new>
#include <optional>

using namespace lampblack;
using namespace lampblack::files;

namespace {

// The bytes of a record in a handle; none for what is no handle, or is purged.
Bytes BytesOf(AliasHandle inAlias)
{
    const Handle handle = (Handle)inAlias;
    if (!handle || !IsHandleValid(handle) || !*handle)
        return {};
    return { (const UInt8*)*handle, (size_t)GetHandleSize(handle) };
}

OSErr MakeHandle(const AliasContents& inContents, AliasHandle* outAlias)
{
    const std::vector<UInt8> bytes = WriteAlias(inContents);
    return PtrToHand(bytes.data(), (Handle*)outAlias, (long)bytes.size());
}

OSErr ReplaceBytes(AliasHandle ioAlias, const std::vector<UInt8>& inBytes, Boolean* outWasChanged)
{
    const Bytes old = BytesOf(ioAlias);
    if (std::equal(old.begin(), old.end(), inBytes.begin(), inBytes.end()))
        return noErr;
    const OSErr error = PtrToXHand(inBytes.data(), (Handle)ioAlias, (long)inBytes.size());
    if (error == noErr && outWasChanged)
        *outWasChanged = true;
    return error;
}

// Files that may be left out.
using Origin = std::optional<Item>;

OSErr OriginOf(const FSRef* inRef, Origin* outOrigin)
{
    if (!inRef)
        return noErr;
    return ItemOfRef(inRef, &outOrigin->emplace());
}

OSErr OriginOf(const FSSpec* inSpec, Origin* outOrigin)
{
    if (!inSpec)
        return noErr;
    return Resolve(*inSpec, &outOrigin->emplace());
}

OSErr ItemOf(const FSRef* inRef, Item* outItem)
{
    return ItemOfRef(inRef, outItem);
}

OSErr ItemOf(const FSSpec* inSpec, Item* outItem)
{
    return inSpec ? Resolve(*inSpec, outItem) : (OSErr)paramErr;
}

const Item* Pointer(const Origin& inOrigin)
{
    return inOrigin ? &*inOrigin : nullptr;
}

// Place is an FSRef or an FSSpec.
template <class Place>
OSErr Make(const Place* inFrom, const Place* inTarget, bool inIsMinimal, AliasHandle* outAlias)
{
    if (!outAlias)
        return paramErr;
    *outAlias = nullptr;
    Origin from;
    Item target;
    OSErr error = OriginOf(inFrom, &from);
    if (error == noErr)
        error = ItemOf(inTarget, &target);
    if (error != noErr)
        return error;
    return MakeHandle(inIsMinimal ? DescribeMinimally(target) : DescribeTarget(Pointer(from), target),
                      outAlias);
}

template <class Place>
OSErr Update(const Place* inFrom, const Place* inTarget, AliasHandle ioAlias, Boolean* outWasChanged)
{
    if (outWasChanged)
        *outWasChanged = false;
    AliasContents old;
    Origin from;
    Item target;
    if (!ReadAlias(BytesOf(ioAlias), &old))
        return paramErr;
    OSErr error = OriginOf(inFrom, &from);
    if (error == noErr)
        error = ItemOf(inTarget, &target);
    if (error != noErr)
        return error;
    AliasContents fresh = DescribeTarget(Pointer(from), target);
    fresh.userType = old.userType;
    return ReplaceBytes(ioAlias, WriteAlias(fresh), outWasChanged);
}

template <class Place>
OSErr Find(const Place* inFrom, AliasHandle ioAlias, Item* outTarget, Boolean* outWasChanged, UInt32 inFlags)
{
    if (outWasChanged)
        *outWasChanged = false;
    AliasContents contents;
    Origin from;
    if (!ReadAlias(BytesOf(ioAlias), &contents))
        return paramErr;
    OSErr error = OriginOf(inFrom, &from);
    if (error != noErr)
        return error;
    bool isElsewhere = false;
    const bool numbersFirst = inFlags & kResolveAliasTryFileIDFirst;
    error = FindTarget(contents, Pointer(from), numbersFirst, outTarget, &isElsewhere);
    if (error != noErr || !isElsewhere)
        return error;
    AliasContents fresh = DescribeTarget(Pointer(from), *outTarget);
    fresh.userType = contents.userType;
    return ReplaceBytes(ioAlias, WriteAlias(fresh), outWasChanged);
}

std::string NthFolderUp(const AliasContents& inContents, size_t inCount)
{
    const std::vector<std::string> names = NamesOnTheWay(inContents);
    if (inCount < names.size())
        return MacNameOf(names[names.size() - 1 - inCount]);
    if (inCount == names.size() && !names.empty())
        return inContents.volumeName;
    return inCount == 1 ? inContents.parentName : std::string();
}

std::string NameIn(const AliasContents& inContents, AliasInfoType inIndex)
{
    switch (inIndex) {
    case asiZoneName: return inContents.zoneName;
    case asiServerName: return inContents.serverName;
    case asiVolumeName:
        return inContents.volumeName.empty()
                   ? MacNameOf(foundation::Utf8FromUtf16(inContents.unicodeVolumeName))
                   : inContents.volumeName;
    case asiAliasName:
        return inContents.fileName.empty() ? MacNameOf(foundation::Utf8FromUtf16(inContents.unicodeName))
                                           : inContents.fileName;
    default: return NthFolderUp(inContents, (size_t)inIndex);
    }
}

} // namespace

OSErr FSNewAlias(const FSRef* fromFile, const FSRef* target, AliasHandle* inAlias)
try {
    return Make(fromFile, target, false, inAlias);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSNewAliasMinimal(const FSRef* target, AliasHandle* inAlias)
try {
    return Make((const FSRef*)nullptr, target, true, inAlias);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr NewAlias(const FSSpec* fromFile, const FSSpec* target, AliasHandle* alias)
try {
    return Make(fromFile, target, false, alias);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr NewAliasMinimal(const FSSpec* target, AliasHandle* alias)
try {
    return Make((const FSSpec*)nullptr, target, true, alias);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr NewAliasMinimalFromFullPath(SInt16 fullPathLength, const void* fullPath, ConstStr32Param,
                                  ConstStr31Param, AliasHandle* alias)
try {
    if (!fullPath || !alias || fullPathLength < 0)
        return paramErr;
    const std::string path((const char*)fullPath, (size_t)fullPathLength);
    const size_t colon = path.find(':');
    if (colon == path.npos || colon == 0)
        return bdNamErr;
    AliasContents contents;
    const std::string trimmed = path.back() == ':' ? path.substr(0, path.size() - 1) : path;
    contents.volumeName = path.substr(0, colon);
    contents.fileName = trimmed.substr(std::min(trimmed.rfind(':') + 1, trimmed.size()));
    contents.isFolder = path.back() == ':';
    contents.macPath = path;
    return MakeHandle(contents, alias);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSResolveAliasWithMountFlags(const FSRef* fromFile, AliasHandle inAlias, FSRef* outTarget,
                                   Boolean* wasChanged, UInt32 mountFlags)
try {
    if (!outTarget)
        return paramErr;
    Item target;
    const OSErr error = Find(fromFile, inAlias, &target, wasChanged, mountFlags);
    if (error == noErr)
        MakeRef(target, outTarget);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr ResolveAliasWithMountFlags(const FSSpec* fromFile, AliasHandle alias, FSSpec* target,
                                 Boolean* wasChanged, UInt32 mountFlags)
try {
    if (!target)
        return paramErr;
    Item item;
    const OSErr error = Find(fromFile, alias, &item, wasChanged, mountFlags);
    if (error == noErr || (error == fnfErr && !item.macName.empty()))
        MakeSpec(item, target);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSResolveAlias(const FSRef* fromFile, AliasHandle alias, FSRef* target, Boolean* wasChanged)
{
    return FSResolveAliasWithMountFlags(fromFile, alias, target, wasChanged, 0);
}

OSErr ResolveAlias(const FSSpec* fromFile, AliasHandle alias, FSSpec* target, Boolean* wasChanged)
{
    return ResolveAliasWithMountFlags(fromFile, alias, target, wasChanged, 0);
}

OSErr FSUpdateAlias(const FSRef* fromFile, const FSRef* target, AliasHandle alias, Boolean* wasChanged)
try {
    return Update(fromFile, target, alias, wasChanged);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr UpdateAlias(const FSSpec* fromFile, const FSSpec* target, AliasHandle alias, Boolean* wasChanged)
try {
    return Update(fromFile, target, alias, wasChanged);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr GetAliasInfo(AliasHandle alias, AliasInfoType index, Str63 theString)
try {
    AliasContents contents;
    if (!theString || index < asiZoneName || !ReadAlias(BytesOf(alias), &contents))
        return paramErr;
    foundation::PascalFromMacRoman(NameIn(contents, index), theString, sizeof(Str63) - 1);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

Size GetAliasSizeFromPtr(const AliasRecord* alias)
{
    return alias ? foundation::LoadBE16(alias->hidden + 4) : 0;
}

OSType GetAliasUserTypeFromPtr(const AliasRecord* alias)
{
    return alias ? foundation::LoadBE32(alias->hidden) : 0;
}

void SetAliasUserTypeWithPtr(AliasPtr alias, OSType userType)
{
    if (alias)
        foundation::StoreBE32(alias->hidden, userType);
}

Size GetAliasSize(AliasHandle alias)
{
    const Bytes bytes = BytesOf(alias);
    return bytes.size() < sizeof(AliasRecord) ? 0 : GetAliasSizeFromPtr((const AliasRecord*)bytes.data());
}

OSType GetAliasUserType(AliasHandle alias)
{
    const Bytes bytes = BytesOf(alias);
    return bytes.size() < sizeof(AliasRecord) ? 0 : GetAliasUserTypeFromPtr((const AliasRecord*)bytes.data());
}

void SetAliasUserType(AliasHandle alias, OSType userType)
{
    if (BytesOf(alias).size() >= sizeof(AliasRecord))
        SetAliasUserTypeWithPtr(*alias, userType);
}
