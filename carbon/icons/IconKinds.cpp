#include "icons/IconKinds.h"

namespace lampblack::icons {

bool Kind::IsSelectedBy(IconSelectorValue inSelector) const
{
    if (inSelector == kSelectorAllAvailableData || Size().selectorShift < 0)
        return inSelector == kSelectorAllAvailableData;
    return inSelector >> (Size().selectorShift + (int)data) & 1;
}

size_t Kind::Bytes() const
{
    const size_t pixels = (size_t)Size().width * (size_t)Size().height;
    switch (data) {
    case Data::Bits: return pixels / 8 * 2;
    case Data::Four: return pixels / 2;
    case Data::Eight:
    case Data::Alpha: break;
    case Data::Direct: return pixels * 4;
    }
    return pixels;
}

bool FindKind(OSType inType, Kind* out)
{
    bool isFound = false;
    ForEachKind([&](Kind kind) {
        if (kind.Type() != inType)
            return;
        *out = kind;
        isFound = true;
    });
    return isFound;
}

} // namespace lampblack::icons
