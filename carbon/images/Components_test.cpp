// The Component Manager's calls.
#include "TestImages.h"

using namespace lampblack::images;

namespace {

ComponentDescription Description(OSType inType, OSType inSubType)
{
    return { inType, inSubType, 0, 0, 0 };
}

} // namespace

TEST_CASE("CountComponents: seven importers and two exporters, and all that FindNextComponent walks")
{
    const ComponentDescription importers = Description('grip', 0), exporters = Description('grex', 0);
    CHECK(CountComponents(&importers) == 7);
    CHECK(CountComponents(&exporters) == 2);
    long count = 0;
    for (Component each = FindNextComponent(nullptr, &importers); each;
         each = FindNextComponent(each, &importers))
        ++count;
    CHECK(count == 7);
}

TEST_CASE("FindNextComponent: subtype, manufacturer and flags are asked for")
{
    ComponentDescription wanted = Description('grip', 'JPEG');
    const Component jpeg = FindNextComponent(nullptr, &wanted);
    REQUIRE(jpeg);
    CHECK(FindNextComponent(jpeg, &wanted) == nullptr);
    wanted.componentManufacturer = 'none';
    CHECK(FindNextComponent(nullptr, &wanted) == nullptr);
    wanted = Description('grip', 'JPEG');
    wanted.componentFlags = 1;
    CHECK(FindNextComponent(nullptr, &wanted) == jpeg);
    wanted.componentFlagsMask = 1;
    CHECK(FindNextComponent(nullptr, &wanted) == nullptr);
    CHECK(FindNextComponent(nullptr, nullptr) == nullptr);
    CHECK(CountComponents(nullptr) == 0);
}

TEST_CASE("FindNextComponent: after what is no component there is none")
{
    int foreign = 0;
    const ComponentDescription any = Description(0, 0);
    CHECK(FindNextComponent(reinterpret_cast<Component>(&foreign), &any) == nullptr);
}

TEST_CASE("GetComponentInfo: description and name; no information and no icon")
{
    const ComponentDescription wanted = Description('grex', 'JPEG');
    const Component component = FindNextComponent(nullptr, &wanted);
    ComponentDescription found = {};
    const TestHandle name("x"), info("x"), icon("x");
    CHECK(GetComponentInfo(component, &found, name, info, icon) == noErr);
    CHECK(found.componentType == (OSType)'grex');
    CHECK(found.componentSubType == (OSType)'JPEG');
    CHECK(name.Bytes() == "\x0DJPEG Exporter");
    CHECK(info.Bytes().empty());
    CHECK(icon.Bytes().empty());
    CHECK(GetComponentInfo(component, nullptr, nullptr, nullptr, nullptr) == noErr);
    CHECK(GetComponentInfo(nullptr, &found, nullptr, nullptr, nullptr) == invalidComponentID);
}

TEST_CASE("OpenADefaultComponent: what there is opens, what there is not is invalidComponentID")
{
    ComponentInstance instance = nullptr;
    CHECK(OpenADefaultComponent('grip', 'JPEG', &instance) == noErr);
    CHECK(instance != nullptr);
    CHECK(CloseComponent(instance) == noErr);
    CHECK(OpenADefaultComponent('grex', 0, &instance) == noErr);
    CHECK(CloseComponent(instance) == noErr);
    CHECK(OpenADefaultComponent('grip', 'none', &instance) == invalidComponentID);
    CHECK(instance == nullptr);
    CHECK(OpenADefaultComponent('grip', 'JPEG', nullptr) == paramErr);
    CHECK(OpenDefaultComponent('none', 'JPEG') == nullptr);
    CHECK(OpenComponent(nullptr) == nullptr);
}

TEST_CASE("CloseComponent: a closed, null or foreign instance is invalidComponentID")
{
    const ComponentInstance instance = OpenDefaultComponent('grip', 'PNGf');
    REQUIRE(instance);
    CHECK(CloseComponent(instance) == noErr);
    CHECK(CloseComponent(instance) == invalidComponentID);
    CHECK(CloseComponent(nullptr) == invalidComponentID);
    int foreign = 0;
    CHECK(CloseComponent(reinterpret_cast<ComponentInstance>(&foreign)) == invalidComponentID);
}

TEST_CASE("GraphicsImportDraw: a closed instance is badComponentInstance, an exporter badComponentSelector")
{
    const ComponentInstance importer = OpenDefaultComponent('grip', 'PNGf');
    const ComponentInstance exporter = OpenDefaultComponent('grex', 'PNGf');
    CHECK(GraphicsImportDraw(exporter) == badComponentSelector);
    CHECK(GraphicsExportDoExport(importer, nullptr) == badComponentSelector);
    CHECK(CloseComponent(importer) == noErr);
    CHECK(CloseComponent(exporter) == noErr);
    CHECK(GraphicsImportDraw(importer) == badComponentInstance);
    CHECK(GraphicsImportDraw(nullptr) == badComponentInstance);
    CHECK(GraphicsExportDoExport(exporter, nullptr) == badComponentInstance);
}
