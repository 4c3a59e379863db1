#include "dialogs/ItemList.h"

#include <Carbon/Dialogs.h>

#include <algorithm>
#include <cstring>

namespace lampblack::dialogs {

namespace {

// Reads from the front of the bytes; what is not there reads as zero and leaves the reader empty.
class Reader {
public:
    explicit Reader(std::span<const uint8_t> inBytes) : fBytes(inBytes) {}

    bool Has(size_t inCount) const { return fBytes.size() >= inCount; }
    bool Empty() const { return fBytes.empty(); }

    template <class T>
    T Next()
    {
        T value = {};
        if (Has(sizeof value))
            std::memcpy(&value, fBytes.data(), sizeof value);
        Skip(sizeof value);
        return value;
    }
    std::string Text(size_t inLength)
    {
        const size_t length = std::min(inLength, fBytes.size());
        std::string text((const char*)fBytes.data(), length);
        Skip(length);
        return text;
    }
    void Skip(size_t inCount) { fBytes = fBytes.subspan(std::min(inCount, fBytes.size())); }

private:
    std::span<const uint8_t> fBytes;
};

constexpr size_t kItemHead = 14; // up to and with the length of the data

// Edges that were given the wrong way round are turned, so that nobody draws or hits a negative area.
Rect Upright(Rect inRect)
{
    return { std::min(inRect.top, inRect.bottom), std::min(inRect.left, inRect.right),
             std::max(inRect.top, inRect.bottom), std::max(inRect.left, inRect.right) };
}

bool NamesResource(UInt8 inType)
{
    const int kind = inType & ~kItemDisableBit;
    return kind == kResourceControlDialogItem || kind == kIconDialogItem || kind == kPictureDialogItem;
}

} // namespace

std::vector<ItemTemplate> ParseItemList(std::span<const uint8_t> inBytes)
{
    std::vector<ItemTemplate> items;
    Reader reader(inBytes);
    if (!reader.Has(sizeof(UInt16)))
        return items;
    const int count = (UInt16)(reader.Next<UInt16>() + 1);
    while ((int)items.size() < count && reader.Has(kItemHead)) {
        ItemTemplate item;
        reader.Skip(sizeof(UInt32));
        item.box = Upright(reader.Next<Rect>());
        item.type = reader.Next<UInt8>();
        const UInt8 length = reader.Next<UInt8>();
        std::string data = reader.Text(length);
        if (length & 1)
            reader.Skip(1);
        if (NamesResource(item.type) && data.size() >= sizeof item.resourceID)
            std::memcpy(&item.resourceID, data.data(), sizeof item.resourceID);
        else if (!NamesResource(item.type))
            item.text = std::move(data);
        items.push_back(std::move(item));
    }
    return items;
}

bool ParseDialogTemplate(std::span<const uint8_t> inBytes, DialogTemplate* outTemplate)
{
    constexpr size_t kFixedPart = 20;
    Reader reader(inBytes);
    if (!reader.Has(kFixedPart))
        return false;
    outTemplate->bounds = Upright(reader.Next<Rect>());
    outTemplate->procID = reader.Next<SInt16>();
    outTemplate->visible = reader.Next<UInt16>() != 0;
    outTemplate->goAway = reader.Next<UInt16>() != 0;
    outTemplate->reference = reader.Next<SInt32>();
    outTemplate->itemsID = reader.Next<SInt16>();
    const UInt8 length = reader.Next<UInt8>();
    outTemplate->title = reader.Text(length);
    if ((length & 1) == 0) // the length byte and the text come to an even count
        reader.Skip(1);
    outTemplate->position = reader.Next<UInt16>();
    return true;
}

} // namespace lampblack::dialogs
