// Making, embedding and counting controls, and the text file that shows a window's hierarchy.
#include "controls/ControlEvents.h"
#include "controls/ControlRecord.h"
#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "controls/Kind.h"
#include "foundation/MacRoman.h"

#include <Carbon/Files.h>
#include <Carbon/MacWindows.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace lampblack::controls {

namespace {

bool TakesChildren(const Control& inControl)
{
    return inControl.kind->Features() & kControlSupportsEmbedding;
}

OSErr Embed(Control& ioControl, Control& ioContainer)
{
    if (ioControl.owner != ioContainer.owner || ioControl.owner->root == nullptr)
        return errNoRootControl;
    if (&ioControl == ioControl.owner->root)
        return errCantEmbedRoot;
    if (IsInside(ioContainer, ioControl))
        return errCantEmbedIntoSelf;
    if (!TakesChildren(ioContainer))
        return errControlIsNotEmbedder;
    std::vector<Control*>& from = ioControl.parent->children;
    from.erase(std::remove(from.begin(), from.end(), &ioControl), from.end());
    ioContainer.children.push_back(&ioControl);
    ioControl.parent = &ioContainer;
    ioControl.kind->StateChanged();
    LeaveIfUnfit(ioControl);
    Notify(ioContainer, kEventControlAddedSubControl);
    return noErr;
}

bool Encloses(const Rect& inOuter, const Rect& inInner)
{
    return inOuter.left <= inInner.left && inOuter.top <= inInner.top && inOuter.right >= inInner.right &&
           inOuter.bottom >= inInner.bottom;
}

// The innermost container whose bounds hold those of the control.
Control* ContainerFor(Control& inWithin, const Control& inControl)
{
    for (auto child = inWithin.children.rbegin(); child != inWithin.children.rend(); ++child)
        if (*child != &inControl && TakesChildren(**child) && Encloses((*child)->bounds, inControl.bounds))
            return ContainerFor(**child, inControl);
    return &inWithin;
}

std::string FourCharacters(OSType inCode)
{
    const char bytes[] = { (char)(inCode >> 24), (char)(inCode >> 16), (char)(inCode >> 8), (char)inCode };
    return foundation::Utf8FromMacRoman({ bytes, 4 });
}

void Describe(const Control& inControl, int inDepth, std::string& ioText)
{
    char line[512];
    const Rect& b = inControl.bounds;
    std::snprintf(
        line, sizeof line, "%*s'%s' id %d  \"%s\"  value %d [%d, %d]  bounds (%d, %d, %d, %d)%s%s%s%s\r",
        inDepth * 4, "", FourCharacters(inControl.kind->Code()).c_str(), (int)inControl.id.id,
        foundation::Utf8FromMacRoman(inControl.title).c_str(), (int)inControl.value, (int)inControl.minimum,
        (int)inControl.maximum, b.left, b.top, b.right, b.bottom, inControl.visible ? "" : "  hidden",
        inControl.enabled ? "" : "  disabled", inControl.active ? "" : "  inactive",
        inControl.owner->focus == &inControl ? "  focus" : "");
    ioText += line;
    for (const Control* child : inControl.children)
        Describe(*child, inDepth + 1, ioText);
}

// The host's path of a file that may not be there yet.
OSErr HostPath(const FSSpec& inFile, std::string* outPath)
{
    FSSpec folder;
    const unsigned char itself[] = { 0 };
    OSErr status = FSMakeFSSpec(inFile.vRefNum, inFile.parID, itself, &folder);
    FSRef reference;
    if (status == noErr)
        status = FSpMakeFSRef(&folder, &reference);
    UInt8 path[4096];
    if (status == noErr)
        status = (OSErr)FSRefMakePath(&reference, path, sizeof path);
    if (status != noErr)
        return status;
    std::string name = foundation::Utf8FromPascal(inFile.name);
    std::replace(name.begin(), name.end(), '/', ':'); // the two separators change places
    *outPath = std::string((const char*)path) + "/" + name;
    return noErr;
}

OSErr WriteText(const FSSpec& inFile, const std::string& inText)
{
    if (inFile.name[0] == 0)
        return bdNamErr;
    std::string path;
    const OSErr status = HostPath(inFile, &path);
    if (status != noErr)
        return status;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(inText.data(), (std::streamsize)inText.size());
    file.close();
    return file ? (OSErr)noErr : (OSErr)ioErr;
}

} // namespace

} // namespace lampblack::controls

using namespace lampblack::controls;

LAMPBLACK_BEGIN_C

ControlRef NewControl(WindowRef inWindow, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                      SInt16 inValue, SInt16 inMinimum, SInt16 inMaximum, SInt16 inProcID, long inReference)
{
    if (!inBounds)
        return nullptr;
    NewControlInfo info;
    info.window = inWindow;
    info.bounds = *inBounds;
    if (inTitle)
        info.title.assign((const char*)inTitle + 1, inTitle[0]);
    info.visible = inVisible;
    info.value = inValue;
    info.minimum = inMinimum;
    info.maximum = inMaximum;
    info.procID = inProcID;
    info.reference = inReference;
    Control* control = MakeControl(info);
    if (!control)
        return nullptr;
    RedrawErased(*control);
    return control->Ref();
}

void DisposeControl(ControlRef inControl)
{
    Control* control = Find(inControl);
    if (!control)
        return;
    StPin pin(control);
    SetControlVisibility(inControl, false, true);
    if (pin.Alive())
        Destroy(control);
}

void KillControls(WindowRef inWindow)
{
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls)
        return;
    if (controls->root) {
        DisposeControl(controls->root->Ref());
        return;
    }
    while (!controls->flat.empty())
        DisposeControl(controls->flat.back()->Ref());
}

Boolean IsValidControlHandle(ControlRef inControl)
{
    return Find(inControl) != nullptr;
}

OSErr CreateRootControl(WindowRef inWindow, ControlRef* outControl)
{
    if (!inWindow || !outControl)
        return paramErr;
    WindowControls* controls = WindowControlsFor(inWindow);
    if (!controls)
        return errInvalidWindowRef;
    if (controls->root)
        return errRootAlreadyExists;
    if (!controls->flat.empty())
        return errControlsAlreadyExist;
    *outControl = MakeRoot(*controls)->Ref();
    return noErr;
}

OSErr GetRootControl(WindowRef inWindow, ControlRef* outControl)
{
    if (!inWindow || !outControl)
        return paramErr;
    if (!IsValidWindowPtr(inWindow))
        return errInvalidWindowRef;
    WindowControls* controls = FindWindowControls(inWindow);
    *outControl = controls && controls->root ? controls->root->Ref() : nullptr;
    return *outControl ? (OSErr)noErr : (OSErr)errNoRootControl;
}

OSErr EmbedControl(ControlRef inControl, ControlRef inContainer)
{
    Control* control = Find(inControl);
    Control* container = Find(inContainer);
    if (!control)
        return InvalidControl(inControl);
    if (!container)
        return InvalidControl(inContainer);
    return Embed(*control, *container);
}

OSErr AutoEmbedControl(ControlRef inControl, WindowRef inWindow)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls || controls != control->owner)
        return inWindow ? (OSErr)errInvalidWindowRef : (OSErr)paramErr;
    if (!controls->root)
        return errNoRootControl;
    return Embed(*control, *ContainerFor(*controls->root, *control));
}

OSErr GetSuperControl(ControlRef inControl, ControlRef* outParent)
{
    Control* control = Find(inControl);
    if (!control || !outParent)
        return control ? (OSErr)paramErr : InvalidControl(inControl);
    *outParent = control->parent ? control->parent->Ref() : nullptr;
    return control->owner->root ? (OSErr)noErr : (OSErr)errNoRootControl;
}

OSErr CountSubControls(ControlRef inControl, UInt16* outCount)
{
    Control* control = Find(inControl);
    if (!control || !outCount)
        return control ? (OSErr)paramErr : InvalidControl(inControl);
    *outCount = (UInt16)control->children.size();
    return TakesChildren(*control) ? (OSErr)noErr : (OSErr)errControlIsNotEmbedder;
}

OSErr GetIndexedSubControl(ControlRef inControl, UInt16 inIndex, ControlRef* outSubControl)
{
    Control* control = Find(inControl);
    if (!control || !outSubControl)
        return control ? (OSErr)paramErr : InvalidControl(inControl);
    if (inIndex < 1 || inIndex > control->children.size())
        return paramErr;
    *outSubControl = control->children[(size_t)inIndex - 1]->Ref();
    return noErr;
}

OSErr SetControlSupervisor(ControlRef inControl, ControlRef inBoss)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    Control* boss = Find(inBoss);
    if (inBoss && (!boss || boss->owner != control->owner))
        return boss ? (OSErr)paramErr : InvalidControl(inBoss);
    control->supervisor = boss;
    return noErr;
}

OSErr DumpControlHierarchy(WindowRef inWindow, const FSSpec* inDumpFile)
{
    if (!inWindow || !inDumpFile)
        return paramErr;
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls || !controls->root)
        return errNoRootControl;
    std::string text;
    Describe(*controls->root, 0, text);
    return WriteText(*inDumpFile, text);
}

OSStatus CreateScrollBarControl(WindowRef inWindow, const Rect* inBounds, SInt32 inValue, SInt32 inMinimum,
                                SInt32 inMaximum, SInt32 inViewSize, Boolean inLiveTracking,
                                ControlActionUPP inLiveTrackingProc, ControlRef* outControl)
{
    if (!inWindow || !inBounds || !outControl)
        return paramErr;
    NewControlInfo info;
    info.window = inWindow;
    info.bounds = *inBounds;
    info.value = inValue;
    info.minimum = inMinimum;
    info.maximum = inMaximum;
    info.procID = inLiveTracking ? kControlScrollBarLiveProc : kControlScrollBarProc;
    OSStatus why = noErr;
    Control* control = MakeControl(info, &why);
    if (!control)
        return why;
    control->viewSize = inViewSize;
    control->action = inLiveTrackingProc;
    RedrawErased(*control);
    *outControl = control->Ref();
    return noErr;
}

OSStatus CreateSeparatorControl(WindowRef inWindow, const Rect* inBounds, ControlRef* outControl)
{
    if (!inWindow || !inBounds || !outControl)
        return paramErr;
    *outControl = NewControl(inWindow, inBounds, nullptr, true, 0, 0, 0, kControlSeparatorLineProc, 0);
    return *outControl ? (OSStatus)noErr : (OSStatus)errInvalidWindowRef;
}

OSStatus CreateUserPaneControl(WindowRef inWindow, const Rect* inBounds, UInt32 inFeatures,
                               ControlRef* outControl)
{
    if (!inWindow || !inBounds || !outControl)
        return paramErr;
    NewControlInfo info;
    info.window = inWindow;
    info.bounds = *inBounds;
    info.procID = kControlUserPaneProc;
    info.features = inFeatures;
    OSStatus why = noErr;
    Control* control = MakeControl(info, &why);
    if (!control)
        return why;
    *outControl = control->Ref();
    return noErr;
}

OSStatus CreateProgressBarControl(WindowRef inWindow, const Rect* inBounds, SInt32 inValue, SInt32 inMinimum,
                                  SInt32 inMaximum, Boolean inIndeterminate, ControlRef* outControl)
{
    if (!inWindow || !inBounds || !outControl)
        return paramErr;
    NewControlInfo info;
    info.window = inWindow;
    info.bounds = *inBounds;
    info.value = inValue;
    info.minimum = inMinimum;
    info.maximum = inMaximum;
    info.procID = kControlProgressBarProc;
    OSStatus why = noErr;
    Control* control = MakeControl(info, &why);
    if (!control)
        return why;
    *outControl = control->Ref();
    return SetControlData(*outControl, kControlEntireControl, kControlProgressBarIndeterminateTag,
                          sizeof inIndeterminate, &inIndeterminate);
}

LAMPBLACK_END_C
