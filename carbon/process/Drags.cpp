// The items of a drag and their flavors.
#include "Descriptors.h"

#include "memory/HandleBlock.h"
#include "memory/ReferenceTable.h"

#include <Carbon/Drag.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace lampblack::process {

namespace {

struct FlavorRecord {
    FlavorType type;
    FlavorFlags flags;
    bool isPromise;
    bool isBeingSent; // its sender runs: asking for it once more finds nothing
    std::string data;
};

struct ItemRecord {
    DragItemRef reference;
    Rect bounds;
    std::vector<FlavorRecord> flavors;
};

struct DragRecord {
    std::vector<ItemRecord> items;
    DragSendDataUPP sender = nullptr;
    void* senderData = nullptr;
    Typed dropLocation;
};

constexpr size_t kMostIndices = std::numeric_limits<UInt16>::max();

memory::ReferenceTable<DragRecord>& Drags()
{
    static auto* table = new memory::ReferenceTable<DragRecord>; // left alive for exit handlers
    return *table;
}

template <class Record, class Matches>
Record* FindIn(std::vector<Record>& inRecords, Matches inMatches)
{
    const auto found = std::find_if(inRecords.begin(), inRecords.end(), inMatches);
    return found == inRecords.end() ? nullptr : &*found;
}

ItemRecord* FindItem(DragRecord& inDrag, DragItemRef inItem)
{
    return FindIn(inDrag.items, [&](const ItemRecord& item) { return item.reference == inItem; });
}

FlavorRecord* FindFlavor(ItemRecord& inItem, FlavorType inType)
{
    return FindIn(inItem.flavors, [&](const FlavorRecord& flavor) { return flavor.type == inType; });
}

OSErr Find(DragRef inDrag, DragRecord** outDrag)
{
    *outDrag = Drags().Find(inDrag);
    return *outDrag ? OSErr{ noErr } : OSErr{ badDragRefErr };
}

OSErr Find(DragRef inDrag, DragItemRef inItem, ItemRecord** outItem)
{
    DragRecord* drag = nullptr;
    if (const OSErr err = Find(inDrag, &drag); err != noErr)
        return err;
    *outItem = FindItem(*drag, inItem);
    return *outItem ? OSErr{ noErr } : OSErr{ badDragItemErr };
}

OSErr Find(DragRef inDrag, DragItemRef inItem, FlavorType inType, FlavorRecord** outFlavor)
{
    ItemRecord* item = nullptr;
    if (const OSErr err = Find(inDrag, inItem, &item); err != noErr)
        return err;
    *outFlavor = FindFlavor(*item, inType);
    return *outFlavor ? OSErr{ noErr } : OSErr{ badDragFlavorErr };
}

OSErr Add(DragRecord& ioDrag, DragItemRef inItem, FlavorRecord inFlavor)
{
    ItemRecord* item = FindItem(ioDrag, inItem);
    if (item && FindFlavor(*item, inFlavor.type))
        return duplicateFlavorErr;
    if (item ? item->flavors.size() >= kMostIndices : ioDrag.items.size() >= kMostIndices)
        return memFullErr;
    if (item) {
        item->flavors.push_back(std::move(inFlavor));
        return noErr;
    }
    ItemRecord made{ inItem, {}, {} };
    made.flavors.push_back(std::move(inFlavor));
    ioDrag.items.push_back(std::move(made));
    return noErr;
}

// Has a promised flavor sent. The sender may change the drag or dispose of it, so everything is found anew.
OSErr Deliver(DragRef inDrag, DragItemRef inItem, FlavorType inType)
{
    DragRecord* drag = nullptr;
    FlavorRecord* flavor = nullptr;
    OSErr err = Find(inDrag, inItem, inType, &flavor);
    if (err != noErr || !flavor->isPromise)
        return err;
    err = Find(inDrag, &drag);
    if (err != noErr || !drag->sender || flavor->isBeingSent)
        return cantGetFlavorErr;
    flavor->isBeingSent = true;
    const OSErr sent = drag->sender(inType, drag->senderData, inItem, inDrag);
    err = Find(inDrag, inItem, inType, &flavor);
    if (err != noErr)
        return err;
    flavor->isBeingSent = false;
    if (sent != noErr) { // what came before the error does not count
        flavor->isPromise = true;
        flavor->data.clear();
    }
    return sent != noErr || flavor->isPromise ? OSErr{ cantGetFlavorErr } : OSErr{ noErr };
}

// A flavor whose bytes are there.
OSErr Fetch(DragRef inDrag, DragItemRef inItem, FlavorType inType, FlavorRecord** outFlavor)
{
    const OSErr err = Deliver(inDrag, inItem, inType);
    return err == noErr ? Find(inDrag, inItem, inType, outFlavor) : err;
}

} // namespace

} // namespace lampblack::process

using namespace lampblack::process;

DragSendDataUPP NewDragSendDataUPP(DragSendDataProcPtr userRoutine)
{
    return userRoutine;
}

void DisposeDragSendDataUPP(DragSendDataUPP) {}

OSErr InvokeDragSendDataUPP(FlavorType theType, void* dragSendRefCon, DragItemRef theItemRef, DragRef theDrag,
                            DragSendDataUPP userUPP)
{
    return userUPP ? userUPP(theType, dragSendRefCon, theItemRef, theDrag) : OSErr{ paramErr };
}

OSErr NewDrag(DragRef* theDrag)
{
    if (!theDrag)
        return paramErr;
    *theDrag = nullptr;
    return WithMemory([&] {
        *theDrag = reinterpret_cast<DragRef>(Drags().New());
        return OSErr{ noErr };
    });
}

OSErr DisposeDrag(DragRef theDrag)
{
    DragRecord* drag = nullptr;
    const OSErr err = Find(theDrag, &drag);
    Drags().Delete(drag);
    return err;
}

OSErr AddDragItemFlavor(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, const void* dataPtr,
                        Size dataSize, FlavorFlags theFlags)
{
    DragRecord* drag = nullptr;
    OSErr err = Find(theDrag, &drag);
    if (err == noErr)
        err = CheckBytes(dataPtr ? dataPtr : "", dataSize);
    if (err != noErr)
        return err;
    return WithMemory([&] {
        FlavorRecord flavor{ theType, theFlags & ~FlavorFlags{ flavorDataPromised }, !dataPtr, false, {} };
        if (dataPtr)
            flavor.data.assign(static_cast<const char*>(dataPtr), static_cast<size_t>(dataSize));
        return Add(*drag, theItemRef, std::move(flavor));
    });
}

OSErr SetDragItemFlavorData(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, const void* dataPtr,
                            Size dataSize, UInt32 dataOffset)
{
    FlavorRecord* flavor = nullptr;
    OSErr err = Find(theDrag, theItemRef, theType, &flavor);
    if (err == noErr)
        err = CheckBytes(dataPtr, dataSize);
    if (err == noErr && Size{ dataOffset } + dataSize > lampblack::memory::kLargestBlock)
        err = memFullErr;
    if (err != noErr)
        return err;
    return WithMemory([&] {
        const auto size = static_cast<size_t>(dataSize);
        if (flavor->data.size() < dataOffset + size)
            flavor->data.resize(dataOffset + size);
        if (size > 0)
            std::memcpy(flavor->data.data() + dataOffset, dataPtr, size);
        flavor->isPromise = false;
        return OSErr{ noErr };
    });
}

OSErr SetDragSendProc(DragRef theDrag, DragSendDataUPP sendProc, void* dragSendRefCon)
{
    DragRecord* drag = nullptr;
    if (const OSErr err = Find(theDrag, &drag); err != noErr)
        return err;
    drag->sender = sendProc;
    drag->senderData = dragSendRefCon;
    return noErr;
}

OSErr CountDragItems(DragRef theDrag, UInt16* numItems)
{
    DragRecord* drag = nullptr;
    if (!numItems)
        return paramErr;
    *numItems = 0;
    const OSErr err = Find(theDrag, &drag);
    if (err == noErr)
        *numItems = static_cast<UInt16>(drag->items.size());
    return err;
}

OSErr GetDragItemReferenceNumber(DragRef theDrag, UInt16 index, DragItemRef* theItemRef)
{
    DragRecord* drag = nullptr;
    if (!theItemRef)
        return paramErr;
    if (const OSErr err = Find(theDrag, &drag); err != noErr)
        return err;
    if (index == 0 || index > drag->items.size())
        return badDragItemErr;
    *theItemRef = drag->items[index - 1u].reference;
    return noErr;
}

OSErr CountDragItemFlavors(DragRef theDrag, DragItemRef theItemRef, UInt16* numFlavors)
{
    ItemRecord* item = nullptr;
    if (!numFlavors)
        return paramErr;
    *numFlavors = 0;
    const OSErr err = Find(theDrag, theItemRef, &item);
    if (err == noErr)
        *numFlavors = static_cast<UInt16>(item->flavors.size());
    return err;
}

OSErr GetFlavorType(DragRef theDrag, DragItemRef theItemRef, UInt16 index, FlavorType* theType)
{
    ItemRecord* item = nullptr;
    if (!theType)
        return paramErr;
    if (const OSErr err = Find(theDrag, theItemRef, &item); err != noErr)
        return err;
    if (index == 0 || index > item->flavors.size())
        return badDragFlavorErr;
    *theType = item->flavors[index - 1u].type;
    return noErr;
}

OSErr GetFlavorFlags(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, FlavorFlags* theFlags)
{
    FlavorRecord* flavor = nullptr;
    if (!theFlags)
        return paramErr;
    const OSErr err = Find(theDrag, theItemRef, theType, &flavor);
    if (err == noErr)
        *theFlags = flavor->flags | (flavor->isPromise ? FlavorFlags{ flavorDataPromised } : 0);
    return err;
}

OSErr GetFlavorDataSize(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, Size* dataSize)
{
    FlavorRecord* flavor = nullptr;
    if (!dataSize)
        return paramErr;
    *dataSize = 0;
    const OSErr err = Fetch(theDrag, theItemRef, theType, &flavor);
    if (err == noErr)
        *dataSize = static_cast<Size>(flavor->data.size());
    return err;
}

OSErr GetFlavorData(DragRef theDrag, DragItemRef theItemRef, FlavorType theType, void* dataPtr,
                    Size* dataSize, UInt32 dataOffset)
{
    FlavorRecord* flavor = nullptr;
    if (!dataSize || *dataSize < 0)
        return paramErr;
    const auto room = dataPtr ? static_cast<size_t>(*dataSize) : std::numeric_limits<size_t>::max();
    *dataSize = 0;
    if (const OSErr err = Fetch(theDrag, theItemRef, theType, &flavor); err != noErr)
        return err;
    const std::string_view rest =
        std::string_view(flavor->data).substr(std::min<size_t>(dataOffset, flavor->data.size()), room);
    if (dataPtr && !rest.empty())
        std::memcpy(dataPtr, rest.data(), rest.size());
    *dataSize = static_cast<Size>(rest.size());
    return noErr;
}

OSErr GetDragItemBounds(DragRef theDrag, DragItemRef theItemRef, Rect* itemBounds)
{
    ItemRecord* item = nullptr;
    if (!itemBounds)
        return paramErr;
    const OSErr err = Find(theDrag, theItemRef, &item);
    if (err == noErr)
        *itemBounds = item->bounds;
    return err;
}

OSErr SetDragItemBounds(DragRef theDrag, DragItemRef theItemRef, const Rect* itemBounds)
{
    ItemRecord* item = nullptr;
    if (!itemBounds)
        return paramErr;
    const OSErr err = Find(theDrag, theItemRef, &item);
    if (err == noErr)
        item->bounds = *itemBounds;
    return err;
}

OSErr GetDropLocation(DragRef theDrag, AEDesc* dropLocation)
{
    DragRecord* drag = nullptr;
    if (!dropLocation)
        return paramErr;
    AEInitializeDesc(dropLocation);
    const OSErr err = Find(theDrag, &drag);
    return err == noErr ? MakeDesc(drag->dropLocation, dropLocation) : err;
}

OSErr SetDropLocation(DragRef theDrag, const AEDesc* dropLocation)
{
    DragRecord* drag = nullptr;
    if (const OSErr err = Find(theDrag, &drag); err != noErr)
        return err;
    return ValueOf(dropLocation, &drag->dropLocation);
}
