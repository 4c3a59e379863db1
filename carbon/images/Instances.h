// What is behind a Component and a ComponentInstance. Begin with FindImporter and FindExporter.
#ifndef LAMPBLACK_IMAGES_INSTANCES_H
#define LAMPBLACK_IMAGES_INSTANCES_H

#include "Exporter.h"
#include "Importer.h"

#include <memory>
#include <string_view>

namespace lampblack::images {

struct ComponentEntry {
    OSType type, subType;
    std::string_view name;
};

struct InstanceRecord {
    const ComponentEntry* component = nullptr;
    std::unique_ptr<Importer> importer; // one of the two
    std::unique_ptr<Exporter> exporter;
};

// Null when there is no such component, or no memory.
ComponentInstance OpenInstance(OSType inType, OSType inSubType);

// The importer or exporter behind an instance; null, and the error, when there is none.
Importer* FindImporter(ComponentInstance, ComponentResult* outError);
Exporter* FindExporter(ComponentInstance, ComponentResult* outError);

} // namespace lampblack::images

#endif
