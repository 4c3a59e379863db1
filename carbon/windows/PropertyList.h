// The tagged data that an application hangs on a window or on a menu item.
#ifndef LAMPBLACK_WINDOWS_PROPERTYLIST_H
#define LAMPBLACK_WINDOWS_PROPERTYLIST_H

#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

#include <cstring>
#include <vector>

namespace lampblack::windows {

class PropertyList {
public:
    // The published codes for an absent property and for a bad request are the same numbers in all managers.
    static constexpr OSStatus kInvalid = errInvalidWindowProperty;
    static constexpr OSStatus kAbsent = errWindowPropertyNotFound;

    OSStatus Set(OSType inCreator, OSType inTag, ByteCount inSize, const void* inData)
    {
        if (!inData && inSize)
            return paramErr;
        Property* property = Find(inCreator, inTag);
        if (!property)
            property = &fProperties.emplace_back(Property{ inCreator, inTag, 0, {} });
        const auto* bytes = static_cast<const uint8_t*>(inData);
        property->data.assign(bytes, bytes + inSize);
        return noErr;
    }

    // Copies no more than the buffer holds; the size answered is that of the whole property.
    OSStatus Get(OSType inCreator, OSType inTag, ByteCount inBufferSize, ByteCount* outSize,
                 void* outBuffer) const
    {
        const Property* property = Find(inCreator, inTag);
        if (!property)
            return kAbsent;
        if (!outBuffer && inBufferSize)
            return paramErr;
        const ByteCount size = property->data.size();
        if (outSize)
            *outSize = size;
        if (size && inBufferSize)
            std::memcpy(outBuffer, property->data.data(), size < inBufferSize ? size : inBufferSize);
        return noErr;
    }

    OSStatus GetSize(OSType inCreator, OSType inTag, ByteCount* outSize) const
    {
        return outSize ? Get(inCreator, inTag, 0, outSize, nullptr) : (OSStatus)paramErr;
    }

    OSStatus Remove(OSType inCreator, OSType inTag)
    {
        for (auto property = fProperties.begin(); property != fProperties.end(); ++property) {
            if (property->creator != inCreator || property->tag != inTag)
                continue;
            fProperties.erase(property);
            return noErr;
        }
        return kAbsent;
    }

    OSStatus GetAttributes(OSType inCreator, OSType inTag, OptionBits* outAttributes) const
    {
        const Property* property = Find(inCreator, inTag);
        if (!property || !outAttributes)
            return property ? (OSStatus)paramErr : kAbsent;
        *outAttributes = property->attributes;
        return noErr;
    }

    OSStatus ChangeAttributes(OSType inCreator, OSType inTag, OptionBits inSet, OptionBits inClear)
    {
        Property* property = Find(inCreator, inTag);
        if (!property)
            return kAbsent;
        property->attributes = (property->attributes | inSet) & ~inClear;
        return noErr;
    }

private:
    struct Property {
        OSType creator, tag;
        OptionBits attributes;
        std::vector<uint8_t> data;
    };

    const Property* Find(OSType inCreator, OSType inTag) const
    {
        for (const Property& property : fProperties)
            if (property.creator == inCreator && property.tag == inTag)
                return &property;
        return nullptr;
    }
    Property* Find(OSType inCreator, OSType inTag)
    {
        return const_cast<Property*>(static_cast<const PropertyList*>(this)->Find(inCreator, inTag));
    }

    std::vector<Property> fProperties;
};

} // namespace lampblack::windows

#endif
