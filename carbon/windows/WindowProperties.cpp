// Properties of windows.
#include "WindowRecord.h"

using namespace lampblack::windows;

namespace {

// The creator that the system keeps for itself.
constexpr PropertyCreator kSystemCreator = 'appl';

OSStatus Check(WindowRef inWindow, PropertyCreator inCreator, WindowRecord** outWindow)
{
    *outWindow = Find(inWindow);
    if (!*outWindow)
        return errInvalidWindowRef;
    return inCreator == kSystemCreator ? (OSStatus)errInvalidWindowProperty : (OSStatus)noErr;
}

} // namespace

OSStatus SetWindowProperty(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag, ByteCount inSize,
                           const void* inData)
{
    WindowRecord* window;
    const OSStatus status = Check(inWindow, inCreator, &window);
    return status ? status : window->properties.Set(inCreator, inTag, inSize, inData);
}

OSStatus GetWindowProperty(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                           ByteCount inBufferSize, ByteCount* outActualSize, void* outBuffer)
{
    WindowRecord* window;
    const OSStatus status = Check(inWindow, inCreator, &window);
    return status ? status : window->properties.Get(inCreator, inTag, inBufferSize, outActualSize, outBuffer);
}

OSStatus GetWindowPropertySize(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                               ByteCount* outSize)
{
    WindowRecord* window;
    const OSStatus status = Check(inWindow, inCreator, &window);
    return status ? status : window->properties.GetSize(inCreator, inTag, outSize);
}

OSStatus RemoveWindowProperty(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag)
{
    WindowRecord* window;
    const OSStatus status = Check(inWindow, inCreator, &window);
    return status ? status : window->properties.Remove(inCreator, inTag);
}

OSStatus GetWindowPropertyAttributes(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                                     OptionBits* outAttributes)
{
    WindowRecord* window;
    const OSStatus status = Check(inWindow, inCreator, &window);
    return status ? status : window->properties.GetAttributes(inCreator, inTag, outAttributes);
}

OSStatus ChangeWindowPropertyAttributes(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                                        OptionBits inSet, OptionBits inClear)
{
    WindowRecord* window;
    const OSStatus status = Check(inWindow, inCreator, &window);
    return status ? status : window->properties.ChangeAttributes(inCreator, inTag, inSet, inClear);
}
