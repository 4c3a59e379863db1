// Icon suites: the calls that make and fill them.
#include "icons/Suites.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>
#include <memory/ReferenceTable.h>

using namespace lampblack::icons;

namespace lampblack::icons {

static memory::ReferenceTable<Suite>& AllSuites()
{
    static memory::ReferenceTable<Suite> table;
    return table;
}

Suite* FindSuite(IconSuiteRef inSuite)
{
    return AllSuites().Find(inSuite);
}

Suite* NewSuite()
{
    return AllSuites().New();
}

IconSuiteRef ReferenceOf(Suite* inSuite)
{
    return reinterpret_cast<IconSuiteRef>(inSuite);
}

Bytes BytesOf(Handle inHandle)
{
    if (!inHandle || !IsHandleValid(inHandle) || !*inHandle)
        return {};
    return { reinterpret_cast<const uint8_t*>(*inHandle), (size_t)GetHandleSize(inHandle) };
}

// The suite and a place in it that its type names; null when either is none.
static Handle* FindPlace(IconSuiteRef inSuite, ResType inType)
{
    Suite* suite = FindSuite(inSuite);
    Kind kind;
    return suite && FindKind(inType, &kind) ? &suite->data[kind.Place()] : nullptr;
}

static bool LoadSelected(Suite& ioSuite, SInt16 inID, IconSelectorValue inSelector)
{
    bool isAny = false;
    ForEachKind([&](Kind kind) {
        if (!kind.IsSelectedBy(inSelector))
            return;
        const Handle data = GetResource(kind.Type(), inID);
        ioSuite.data[kind.Place()] = data;
        isAny = isAny || data;
    });
    return isAny;
}

static bool IsResource(Handle inHandle)
{
    return HGetState(inHandle) & kHandleIsResourceMask;
}

static void DisposeData(const Suite& inSuite)
{
    for (const Handle data : inSuite.data)
        if (data && IsHandleValid(data) && !IsResource(data))
            DisposeHandle(data);
}

} // namespace lampblack::icons

OSErr NewIconSuite(IconSuiteRef* theIconSuite)
{
    if (!theIconSuite)
        return paramErr;
    *theIconSuite = ReferenceOf(NewSuite());
    return noErr;
}

OSErr GetIconSuite(IconSuiteRef* theIconSuite, SInt16 theResID, IconSelectorValue selector)
{
    if (!theIconSuite)
        return paramErr;
    *theIconSuite = nullptr;
    Suite suite;
    if (!LoadSelected(suite, theResID, selector))
        return resNotFound;
    Suite* made = NewSuite();
    *made = suite;
    *theIconSuite = ReferenceOf(made);
    return noErr;
}

OSErr DisposeIconSuite(IconSuiteRef theIconSuite, Boolean disposeData)
{
    Suite* suite = FindSuite(theIconSuite);
    if (!suite)
        return paramErr;
    if (disposeData)
        DisposeData(*suite);
    AllSuites().Delete(suite);
    return noErr;
}

OSErr AddIconToSuite(Handle theIconData, IconSuiteRef theSuite, ResType theType)
{
    Handle* place = FindPlace(theSuite, theType);
    if (!place || (theIconData && !IsHandleValid(theIconData)))
        return paramErr;
    *place = theIconData;
    return noErr;
}

OSErr GetIconFromSuite(Handle* theIconData, IconSuiteRef theSuite, ResType theType)
{
    if (!theIconData)
        return paramErr;
    const Handle* place = FindPlace(theSuite, theType);
    *theIconData = place && IsHandleValid(*place) ? *place : nullptr;
    return *theIconData ? noErr : paramErr;
}

OSErr ForEachIconDo(IconSuiteRef theSuite, IconSelectorValue selector, IconActionUPP action,
                    void* yourDataPtr)
{
    if (!action || !FindSuite(theSuite))
        return paramErr;
    OSErr error = noErr;
    ForEachKind([&](Kind kind) {
        Suite* suite = FindSuite(theSuite); // the action may have disposed of it
        if (error || !suite || !kind.IsSelectedBy(selector) || !suite->data[kind.Place()])
            return;
        Handle data = suite->data[kind.Place()];
        error = action(kind.Type(), &data, yourDataPtr);
        if (FindSuite(theSuite))
            suite->data[kind.Place()] = data;
    });
    return error;
}

OSErr SetSuiteLabel(IconSuiteRef theSuite, SInt16 theLabel)
{
    Suite* suite = FindSuite(theSuite);
    if (!suite || theLabel < 0 || theLabel > 7)
        return paramErr;
    suite->label = theLabel;
    return noErr;
}

SInt16 GetSuiteLabel(IconSuiteRef theSuite)
{
    const Suite* suite = FindSuite(theSuite);
    return suite ? suite->label : (SInt16)0;
}

IconActionUPP NewIconActionUPP(IconActionProcPtr userRoutine)
{
    return userRoutine;
}

IconGetterUPP NewIconGetterUPP(IconGetterProcPtr userRoutine)
{
    return userRoutine;
}

void DisposeIconActionUPP(IconActionUPP) {}

void DisposeIconGetterUPP(IconGetterUPP) {}
