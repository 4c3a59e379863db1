// Controls from 'CNTL' resources, which the Resource Manager hands out in native byte order.
#include <Carbon/Controls.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <algorithm>
#include <cstring>

namespace {

// bounds 8, value 2, visible 2, maximum 2, minimum 2, definition ID 2, reference constant 4, title
struct Template {
    Rect bounds;
    SInt16 value, visible, maximum, minimum, procID;
    SInt32 reference;
    Str255 title;
};
constexpr Size kFixedPart = 22;

template <class T>
T Read(const uint8_t* inBytes)
{
    T value;
    std::memcpy(&value, inBytes, sizeof value);
    return value;
}

// A title that runs past the end is cut there; a record without all its fixed fields is none.
bool ReadTemplate(const uint8_t* inBytes, Size inSize, Template* outTemplate)
{
    if (inSize < kFixedPart)
        return false;
    outTemplate->bounds = Read<Rect>(inBytes);
    outTemplate->value = Read<SInt16>(inBytes + 8);
    outTemplate->visible = Read<SInt16>(inBytes + 10);
    outTemplate->maximum = Read<SInt16>(inBytes + 12);
    outTemplate->minimum = Read<SInt16>(inBytes + 14);
    outTemplate->procID = Read<SInt16>(inBytes + 16);
    outTemplate->reference = Read<SInt32>(inBytes + 18);
    const Size room = inSize - kFixedPart - 1;
    const Size length = room < 0 ? 0 : std::min<Size>(inBytes[kFixedPart], room);
    outTemplate->title[0] = (unsigned char)length;
    if (length > 0)
        std::memcpy(outTemplate->title + 1, inBytes + kFixedPart + 1, (size_t)length);
    return true;
}

} // namespace

LAMPBLACK_BEGIN_C

ControlRef GetNewControl(SInt16 inResourceID, WindowRef inWindow)
{
    const Handle resource = GetResource('CNTL', inResourceID);
    if (!resource || !*resource)
        return nullptr;
    Template t;
    if (!ReadTemplate((const uint8_t*)*resource, GetHandleSize(resource), &t))
        return nullptr;
    return NewControl(inWindow, &t.bounds, t.title, t.visible != 0, t.value, t.minimum, t.maximum, t.procID,
                      t.reference);
}

LAMPBLACK_END_C
