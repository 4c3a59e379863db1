// Icon references: counted icons, of the system, or registered under a creator and a type.
#include "icons/Family.h"
#include "icons/Suites.h"
#include "icons/SystemIcons.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>
#include <memory/ReferenceTable.h>

#include <algorithm>
#include <map>

using namespace lampblack::icons;
using lampblack::quickdraw::FindRegion;
using lampblack::quickdraw::Region;

namespace lampblack::icons {

// An icon lives while somebody owns it or it is registered.
struct Icon {
    const SystemIcon* system = nullptr; // else its members
    Members members;
    UInt32 owners = 0;
    bool isRegistered = false;
};

using Name = std::pair<OSType, OSType>; // creator and type

static memory::ReferenceTable<Icon>& Icons()
{
    static memory::ReferenceTable<Icon> table;
    return table;
}

static std::map<Name, Icon*>& Registry()
{
    static std::map<Name, Icon*> registry;
    return registry;
}

// Those of the system that are in use now.
static std::map<OSType, Icon*>& SystemIconsInUse()
{
    static std::map<OSType, Icon*> icons;
    return icons;
}

static IconRef ReferenceOf(Icon* inIcon)
{
    return reinterpret_cast<IconRef>(inIcon);
}

static void DeleteIfUnused(Icon* inIcon)
{
    if (inIcon->owners > 0 || inIcon->isRegistered)
        return;
    if (inIcon->system)
        SystemIconsInUse().erase(inIcon->system->type);
    Icons().Delete(inIcon);
}

static void Unregister(Name inName)
{
    const auto found = Registry().find(inName);
    if (found == Registry().end())
        return;
    Icon* icon = found->second;
    Registry().erase(found);
    icon->isRegistered = false;
    DeleteIfUnused(icon);
}

static IconRef Register(Name inName, Members inMembers)
{
    Icon* icon = Icons().New();
    icon->members = std::move(inMembers);
    icon->owners = 1;
    icon->isRegistered = true;
    Unregister(inName);
    Registry()[inName] = icon;
    return ReferenceOf(icon);
}

static Icon* FindSystemsOwn(OSType inType)
{
    const SystemIcon* system = FindSystemIcon(inType);
    if (!system)
        return nullptr;
    Icon*& icon = SystemIconsInUse()[inType];
    if (!icon) {
        icon = Icons().New();
        icon->system = system;
    }
    return icon;
}

static Icon* FindNamed(Name inName)
{
    const auto found = Registry().find(inName);
    if (found != Registry().end())
        return found->second;
    return inName.first == kSystemIconsCreator ? FindSystemsOwn(inName.second) : nullptr;
}

static Getter GetterOf(const Icon& inIcon)
{
    return [&inIcon](Kind kind) { return inIcon.members.At(kind); };
}

static OSErr MaskOfIcon(IconRef inReference, const Rect* inRect, IconAlignmentType inAlignment, Region* out)
{
    const Icon* icon = Icons().Find(inReference);
    if (!icon)
        return invalidIconRefErr;
    if (!inRect)
        return paramErr;
    if (icon->system)
        return FindMask(PaintSystemIcon(*icon->system, *inRect, inAlignment), inRect, inAlignment, out);
    return FindMask(GetterOf(*icon), inRect, inAlignment, noMaskFoundErr, out);
}

// The members of a suite of resources in the current file, or of its family.
static Members MembersInCurrentFile(SInt16 inID)
{
    if (const std::optional<Members> family = ReadFamily(BytesOf(Get1Resource(kIconFamilyType, inID))))
        return *family;
    Members members;
    ForEachKind([&](Kind kind) {
        members.data[kind.Place()] = UnpackElement(kind, BytesOf(Get1Resource(kind.Type(), inID)));
    });
    return members;
}

// A file that is open already may answer the same number, and stays open then.
static bool IsInChain(SInt16 inFile, const std::vector<SInt16>& inChain)
{
    return std::find(inChain.begin(), inChain.end(), inFile) != inChain.end();
}

static std::vector<SInt16> OpenResourceFiles()
{
    std::vector<SInt16> chain;
    SInt16 file = 0;
    for (OSErr error = GetTopResourceFile(&file); error == noErr && file != 0;
         error = GetNextResourceFile(file, &file))
        chain.push_back(file);
    return chain;
}

static OSErr ReadMembers(const FSSpec& inFile, SInt16 inID, Members* out)
{
    const SInt16 before = CurResFile();
    const std::vector<SInt16> chain = OpenResourceFiles();
    const SInt16 file = FSpOpenResFile(&inFile, fsRdPerm);
    if (file == -1)
        return ResError();
    UseResFile(file);
    *out = MembersInCurrentFile(inID);
    UseResFile(before);
    if (!IsInChain(file, chain))
        CloseResFile(file);
    return out->IsEmpty() ? resNotFound : noErr;
}

} // namespace lampblack::icons

OSErr GetIconRef(SInt16, OSType creator, OSType iconType, IconRef* theIconRef)
{
    if (!theIconRef)
        return paramErr;
    Icon* icon = FindNamed({ creator, iconType });
    *theIconRef = ReferenceOf(icon);
    if (!icon)
        return noSuchIconErr;
    ++icon->owners;
    return noErr;
}

OSErr AcquireIconRef(IconRef theIconRef)
{
    Icon* icon = Icons().Find(theIconRef);
    if (!icon)
        return invalidIconRefErr;
    ++icon->owners;
    return noErr;
}

OSErr ReleaseIconRef(IconRef theIconRef)
{
    Icon* icon = Icons().Find(theIconRef);
    if (!icon || icon->owners == 0)
        return invalidIconRefErr;
    --icon->owners;
    DeleteIfUnused(icon);
    return noErr;
}

OSErr GetIconRefOwners(IconRef theIconRef, UInt16* owners)
{
    const Icon* icon = Icons().Find(theIconRef);
    if (!owners)
        return paramErr;
    *owners = icon ? (UInt16)std::min<UInt32>(icon->owners, 0xFFFF) : (UInt16)0;
    return icon ? (OSErr)noErr : (OSErr)invalidIconRefErr;
}

Boolean IsValidIconRef(IconRef theIconRef)
{
    return Icons().Find(theIconRef) != nullptr;
}

OSErr RegisterIconRefFromIconFamily(OSType creator, OSType iconType, IconFamilyHandle iconFamily,
                                    IconRef* theIconRef)
{
    if (!theIconRef)
        return paramErr;
    *theIconRef = nullptr;
    std::optional<Members> members = ReadFamily(BytesOf(reinterpret_cast<Handle>(iconFamily)));
    if (!members || members->IsEmpty())
        return paramErr;
    *theIconRef = Register({ creator, iconType }, std::move(*members));
    return noErr;
}

OSErr RegisterIconRefFromResource(OSType creator, OSType iconType, const FSSpec* resourceFile,
                                  SInt16 resourceID, IconRef* theIconRef)
{
    if (!theIconRef)
        return paramErr;
    *theIconRef = nullptr;
    Members members;
    const OSErr error = resourceFile ? ReadMembers(*resourceFile, resourceID, &members) : (OSErr)paramErr;
    if (error == noErr)
        *theIconRef = Register({ creator, iconType }, std::move(members));
    return error;
}

OSErr UnregisterIconRef(OSType creator, OSType iconType)
{
    if (Registry().count({ creator, iconType }) == 0)
        return noSuchIconErr;
    Unregister({ creator, iconType });
    return noErr;
}

OSErr PlotIconRef(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                  IconServicesUsageFlags, IconRef theIconRef)
{
    const Icon* icon = Icons().Find(theIconRef);
    if (!icon)
        return invalidIconRefErr;
    if (!theRect)
        return paramErr;
    if (icon->system)
        return PlotPicture(PaintSystemIcon(*icon->system, *theRect, align), theRect, align, transform);
    return PlotMembers(GetterOf(*icon), theRect, align, transform, noIconDataAvailableErr);
}

OSErr IconRefToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align, IconServicesUsageFlags,
                   IconRef theIconRef)
{
    Region mask;
    const OSErr error = MaskOfIcon(theIconRef, iconRect, align, &mask);
    Region* region = FindRegion(theRgn);
    if (error)
        return error;
    if (!region)
        return paramErr;
    *region = mask;
    return noErr;
}

Boolean PtInIconRef(const Point* testPt, const Rect* iconRect, IconAlignmentType align,
                    IconServicesUsageFlags, IconRef theIconRef)
{
    Region mask;
    return testPt && MaskOfIcon(theIconRef, iconRect, align, &mask) == noErr &&
           mask.Contains(testPt->h, testPt->v);
}

Boolean RectInIconRef(const Rect* testRect, const Rect* iconRect, IconAlignmentType align,
                      IconServicesUsageFlags, IconRef theIconRef)
{
    Region mask;
    return testRect && MaskOfIcon(theIconRef, iconRect, align, &mask) == noErr &&
           mask.Touches(lampblack::quickdraw::BoxOf(*testRect));
}
