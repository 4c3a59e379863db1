// The Component Manager: finding and opening what does a kind of work, and closing it. Begin with
// OpenADefaultComponent. The components here are the importers ('grip') and exporters ('grex') of pictures,
// whose calls are in ImageCompression.h.
#ifndef LAMPBLACK_CARBON_COMPONENTS_H
#define LAMPBLACK_CARBON_COMPONENTS_H

#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

typedef struct OpaqueComponent* Component;                 // what can be opened
typedef struct OpaqueComponentInstance* ComponentInstance; // one that is open
typedef SInt32 ComponentResult;

enum {
    kAnyComponentType = 0,
    kAnyComponentSubType = 0,
    kAnyComponentManufacturer = 0,
    kAnyComponentFlagsMask = 0
};

struct ComponentDescription {
    OSType componentType;
    OSType componentSubType;
    OSType componentManufacturer;
    UInt32 componentFlags;
    UInt32 componentFlagsMask; // the flags that a search looks at
};
typedef struct ComponentDescription ComponentDescription;
static_assert(sizeof(ComponentDescription) == 20, "the published size");

LAMPBLACK_BEGIN_C

// FindNextComponent
//
// The component after aComponent (NULL: the first) that fits the description, whose fields may be 0 for
// anything. NULL when there is none, and for a component that is none.
Component FindNextComponent(Component aComponent, const ComponentDescription* looking);
long CountComponents(const ComponentDescription* looking);

// GetComponentInfo
//
// What a component is. cd, and the handles, may be NULL; the handles get the name as a Pascal string, and
// nothing, since no component here has an information string or an icon.
//
// Errors:     invalidComponentID  no component; memFullErr; those of a handle that is none.
OSErr GetComponentInfo(Component aComponent, ComponentDescription* cd, Handle componentName,
                       Handle componentInfo, Handle componentIcon);

// OpenComponent, OpenAComponent, OpenDefaultComponent, OpenADefaultComponent
//
// Open a component; the default one is the first of a type and subtype, which may be 0 for any.
//
// Ownership:  the caller's; release it with CloseComponent.
// Errors:     invalidComponentID  no such component; paramErr  a NULL result; memFullErr. *ci is NULL then,
//             and so is the result of the two calls that answer an instance.
ComponentInstance OpenComponent(Component aComponent);
OSErr OpenAComponent(Component aComponent, ComponentInstance* ci);
ComponentInstance OpenDefaultComponent(OSType componentType, OSType componentSubType);
OSErr OpenADefaultComponent(OSType componentType, OSType componentSubType, ComponentInstance* ci);

// Errors:     invalidComponentID  NULL, closed, or never an instance.
OSErr CloseComponent(ComponentInstance aComponentInstance);

LAMPBLACK_END_C

#endif
