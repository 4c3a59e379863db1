// The bytes of 'MENU' and 'xmnu' resources.
#include "MenuFormat.h"

#include <foundation/BigEndian.h>

namespace lampblack::menus {

namespace {

using foundation::BigEndianReader;

constexpr UInt16 kFirstSpecialKey = 0x1B, kLastSpecialKey = 0x1F; // keys that say something else of the item

std::string ReadPascal(BigEndianReader& ioReader)
{
    const size_t length = ioReader.U8();
    std::string text;
    for (size_t i = 0; i < length && ioReader.Ok(); ++i)
        text += (char)ioReader.U8();
    return text;
}

void ReadKeyAndMark(BigEndianReader& ioReader, MenuItem& outItem)
{
    outItem.key = ioReader.U8();
    outItem.mark = ioReader.U8();
    if (outItem.key == hMenuCmd) {
        outItem.submenuID = (MenuID)outItem.mark;
        outItem.mark = 0;
    }
    if (outItem.key >= kFirstSpecialKey && outItem.key <= kLastSpecialKey)
        outItem.key = 0;
}

// Items follow one another until one has no text. Each has a bit in the flags, the first 31 that is.
bool ReadItems(BigEndianReader& ioReader, UInt32 inEnabled, std::vector<MenuItem>* outItems)
{
    for (int number = 1; ioReader.Ok(); ++number) {
        MenuItem item;
        item.text = ReadPascal(ioReader);
        if (item.text.empty())
            return ioReader.Ok();
        item.icon = ioReader.U8();
        ReadKeyAndMark(ioReader, item);
        item.style = ioReader.U8();
        if (number < 32 && !(inEnabled & (1U << number)))
            item.attributes |= kMenuItemAttrDisabled;
        outItems->push_back(std::move(item));
    }
    return false;
}

} // namespace

bool ReadMenu(const void* inBytes, size_t inSize, MenuRecord& outMenu)
{
    BigEndianReader reader(inBytes, inSize);
    outMenu.id = reader.S16();
    reader.Skip(8); // width, height, definition, filler
    const UInt32 enabled = reader.U32();
    outMenu.title = ReadPascal(reader);
    outMenu.enabled = enabled & 1;
    return ReadItems(reader, enabled, &outMenu.items);
}

// What 'MENU' has no room for: a version, a count, then per item whether there is more and what.
void ReadExtensions(const void* inBytes, size_t inSize, MenuRecord& ioMenu)
{
    BigEndianReader reader(inBytes, inSize);
    if (reader.U16() != 0)
        return;
    const size_t count = reader.U16();
    for (size_t i = 0; i < count && i < ioMenu.items.size() && reader.Ok(); ++i) {
        if (reader.U16() != 1)
            continue;
        MenuItem& item = ioMenu.items[i];
        item.command = reader.U32();
        item.modifiers = reader.U8();
        reader.Skip(9); // icon, its handle, text encoding
        item.refCon = reader.U32();
        reader.Skip(4);
        const MenuID submenu = reader.S16();
        item.submenuID = submenu ? submenu : item.submenuID;
        reader.Skip(4); // font, key glyph
    }
}

} // namespace lampblack::menus
