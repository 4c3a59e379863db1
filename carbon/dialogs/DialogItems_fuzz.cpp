// Any bytes as an item list and as a dialog template: nothing is read past the end, and every text is whole.
#include "dialogs/ItemList.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::dialogs;
    for (const ItemTemplate& item : ParseItemList({ inData, inSize }))
        if (item.text.size() > 255 || item.box.left > item.box.right || item.box.top > item.box.bottom)
            std::abort();
    DialogTemplate dialog;
    if (ParseDialogTemplate({ inData, inSize }, &dialog) && dialog.title.size() > 255)
        std::abort();
    return 0;
}
