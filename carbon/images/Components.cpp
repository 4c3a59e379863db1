// The Component Manager's calls.
#include "Instances.h"

#include <Carbon/MacMemory.h>
#include <memory/ReferenceTable.h>

#include <cstring>
#include <iterator>
#include <new>

using namespace lampblack;
using namespace lampblack::images;

namespace lampblack::images {

namespace {

constexpr OSType kImport = GraphicsImporterComponentType, kExport = GraphicsExporterComponentType;
constexpr OSType kManufacturer = 'Lamp';

constexpr ComponentEntry kComponents[] = {
    { kImport, kQTFileTypeJPEG, "JPEG Importer" },    { kImport, kQTFileTypePNG, "PNG Importer" },
    { kImport, kQTFileTypeGIF, "GIF Importer" },      { kImport, kQTFileTypeTIFF, "TIFF Importer" },
    { kImport, kQTFileTypeBMP, "BMP Importer" },      { kImport, kQTFileTypeTargaImage, "Targa Importer" },
    { kImport, kQTFileTypePicture, "PICT Importer" }, { kExport, kQTFileTypeJPEG, "JPEG Exporter" },
    { kExport, kQTFileTypePNG, "PNG Exporter" },
};

memory::ReferenceTable<InstanceRecord>& Instances()
{
    static memory::ReferenceTable<InstanceRecord> table;
    return table;
}

// Null for what is no component.
const ComponentEntry* EntryOf(Component inComponent)
{
    for (const ComponentEntry& entry : kComponents)
        if (reinterpret_cast<const void*>(inComponent) == &entry)
            return &entry;
    return nullptr;
}

Component ReferenceOf(const ComponentEntry* inEntry)
{
    return reinterpret_cast<Component>(const_cast<ComponentEntry*>(inEntry));
}

bool Fits(OSType inWanted, OSType inHas)
{
    return inWanted == 0 || inWanted == inHas;
}

bool IsWanted(const ComponentEntry& inEntry, const ComponentDescription& inWanted)
{
    return Fits(inWanted.componentType, inEntry.type) && Fits(inWanted.componentSubType, inEntry.subType) &&
           Fits(inWanted.componentManufacturer, kManufacturer) &&
           (inWanted.componentFlags & inWanted.componentFlagsMask) == 0;
}

ComponentInstance Open(const ComponentEntry& inEntry)
{
    try {
        InstanceRecord* record = Instances().New();
        record->component = &inEntry;
        if (inEntry.type == kImport)
            record->importer = std::make_unique<Importer>(inEntry.subType);
        else
            record->exporter = std::make_unique<Exporter>(inEntry.subType);
        return reinterpret_cast<ComponentInstance>(record);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

OSErr PutBytes(Handle ioHandle, const void* inBytes, size_t inSize)
{
    return ioHandle ? PtrToXHand(inBytes, ioHandle, (long)inSize) : (OSErr)noErr;
}

} // namespace

ComponentInstance OpenInstance(OSType inType, OSType inSubType)
{
    return OpenDefaultComponent(inType, inSubType);
}

Importer* FindImporter(ComponentInstance inInstance, ComponentResult* outError)
{
    const InstanceRecord* record = Instances().Find(inInstance);
    *outError = !record ? badComponentInstance : record->importer ? noErr : badComponentSelector;
    return record ? record->importer.get() : nullptr;
}

Exporter* FindExporter(ComponentInstance inInstance, ComponentResult* outError)
{
    const InstanceRecord* record = Instances().Find(inInstance);
    *outError = !record ? badComponentInstance : record->exporter ? noErr : badComponentSelector;
    return record ? record->exporter.get() : nullptr;
}

} // namespace lampblack::images

Component FindNextComponent(Component aComponent, const ComponentDescription* looking)
{
    const ComponentEntry* entry = EntryOf(aComponent);
    if (!looking || (aComponent && !entry))
        return nullptr;
    for (entry = entry ? entry + 1 : kComponents; entry != std::end(kComponents); ++entry)
        if (IsWanted(*entry, *looking))
            return ReferenceOf(entry);
    return nullptr;
}

long CountComponents(const ComponentDescription* looking)
{
    long count = 0;
    for (const ComponentEntry& entry : kComponents)
        count += looking && IsWanted(entry, *looking);
    return count;
}

OSErr GetComponentInfo(Component aComponent, ComponentDescription* cd, Handle componentName,
                       Handle componentInfo, Handle componentIcon)
{
    const ComponentEntry* entry = EntryOf(aComponent);
    if (!entry)
        return invalidComponentID;
    if (cd)
        *cd = { entry->type, entry->subType, kManufacturer, 0, 0 };
    Str63 name;
    name[0] = (unsigned char)entry->name.size();
    std::memcpy(name + 1, entry->name.data(), entry->name.size());
    OSErr error = PutBytes(componentName, name, entry->name.size() + 1);
    if (!error)
        error = PutBytes(componentInfo, name, 0);
    return error ? error : PutBytes(componentIcon, name, 0);
}

ComponentInstance OpenComponent(Component aComponent)
{
    const ComponentEntry* entry = EntryOf(aComponent);
    return entry ? Open(*entry) : nullptr;
}

OSErr OpenAComponent(Component aComponent, ComponentInstance* ci)
{
    if (!ci)
        return paramErr;
    *ci = OpenComponent(aComponent);
    return *ci ? noErr : EntryOf(aComponent) ? memFullErr : invalidComponentID;
}

ComponentInstance OpenDefaultComponent(OSType componentType, OSType componentSubType)
{
    const ComponentDescription wanted = { componentType, componentSubType, 0, 0, 0 };
    return OpenComponent(FindNextComponent(nullptr, &wanted));
}

OSErr OpenADefaultComponent(OSType componentType, OSType componentSubType, ComponentInstance* ci)
{
    const ComponentDescription wanted = { componentType, componentSubType, 0, 0, 0 };
    return OpenAComponent(FindNextComponent(nullptr, &wanted), ci);
}

OSErr CloseComponent(ComponentInstance aComponentInstance)
{
    InstanceRecord* record = Instances().Find(aComponentInstance);
    if (!record)
        return invalidComponentID;
    Instances().Delete(record);
    return noErr;
}
