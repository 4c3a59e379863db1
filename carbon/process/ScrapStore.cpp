// One scrap at a time. A reference is the number of its generation; it is never followed.
#include "ScrapStore.h"
#include "ScrapText.h"

#include <Carbon/MacErrors.h>
#include <Host.h>

#include <algorithm>

namespace lampblack::process {

namespace {

UInt32 ClipboardSerial()
{
    const auto& machine = host::Machine();
    return machine.clipboardSerial ? machine.clipboardSerial() : 0;
}

std::string ClipboardText()
{
    const auto& machine = host::Machine();
    return machine.clipboardText ? machine.clipboardText() : std::string();
}

void SetClipboardText(std::string_view inText)
{
    const auto& machine = host::Machine();
    if (machine.setClipboardText)
        machine.setClipboardText(inText);
}

bool IsText(ScrapFlavorType inType)
{
    return inType == kScrapFlavorTypeText || inType == kScrapFlavorTypeUnicode;
}

ScrapRef AsReference(uintptr_t inGeneration)
{
    return reinterpret_cast<ScrapRef>(inGeneration << 4);
}

} // namespace

ScrapStore& TheScrap()
{
    static ScrapStore* store = new ScrapStore; // left alive for exit handlers
    return *store;
}

ScrapRef ScrapStore::Current()
{
    const UInt32 serial = ClipboardSerial();
    if (fGeneration == 0 || serial != fClipboardSerial) {
        fClipboardSerial = serial;
        Begin();
        TakeFromClipboard();
    }
    return AsReference(fGeneration);
}

void ScrapStore::Begin()
{
    ++fGeneration;
    fFlavors.clear();
    fKeeper = nullptr;
    fKeeperData = nullptr;
}

void ScrapStore::TakeFromClipboard()
{
    const std::string text = ClipboardText();
    if (text.empty())
        return;
    const auto add = [this](ScrapFlavorType type, std::string data) {
        Flavor flavor;
        flavor.type = type;
        flavor.flags = kScrapFlavorMaskTranslated;
        flavor.data = std::move(data);
        fFlavors.push_back(std::move(flavor));
    };
    add(kScrapFlavorTypeUnicode, UnicodeOfClipboard(text));
    add(kScrapFlavorTypeText, MacRomanOfClipboard(text));
}

void ScrapStore::Clear()
{
    Current();
    Begin();
    SetClipboardText({});
}

Flavor* ScrapStore::Find(ScrapFlavorType inType)
{
    const auto found =
        std::find_if(fFlavors.begin(), fFlavors.end(), [&](const Flavor& f) { return f.type == inType; });
    return found == fFlavors.end() ? nullptr : &*found;
}

// The place for a flavor that is new or still a promise.
OSStatus ScrapStore::Prepare(ScrapFlavorType inType, Flavor** outFlavor)
{
    if (inType == kScrapReservedFlavorType)
        return paramErr;
    Flavor* flavor = Find(inType);
    if (flavor && !flavor->isPromise)
        return duplicateScrapFlavorErr;
    if (!flavor) {
        flavor = &fFlavors.emplace_back();
        flavor->type = inType;
    }
    *outFlavor = flavor;
    return noErr;
}

OSStatus ScrapStore::Put(ScrapFlavorType inType, ScrapFlavorFlags inFlags, std::string_view inData)
{
    std::string data(inData); // the one thing that may not fit, before anything changes
    Flavor* flavor = nullptr;
    if (const OSStatus result = Prepare(inType, &flavor); result != noErr)
        return result;
    flavor->flags = inFlags;
    flavor->isPromise = false;
    flavor->data = std::move(data);
    Publish(inType);
    return noErr;
}

OSStatus ScrapStore::Promise(ScrapFlavorType inType, ScrapFlavorFlags inFlags, Size inSize)
{
    Flavor* flavor = nullptr;
    if (const OSStatus result = Prepare(inType, &flavor); result != noErr)
        return result;
    flavor->flags = inFlags;
    flavor->isPromise = true;
    flavor->promisedSize = inSize;
    return noErr;
}

void ScrapStore::SetKeeper(ScrapPromiseKeeperUPP inKeeper, void* inData)
{
    fKeeper = inKeeper;
    fKeeperData = inData;
}

// Unicode says more than Mac Roman: once it is there it stays what others get.
void ScrapStore::Publish(ScrapFlavorType inChanged)
{
    const Flavor* unicode = Find(kScrapFlavorTypeUnicode);
    const bool unicodeIsThere = unicode && !unicode->isPromise;
    const Flavor* flavor = Find(inChanged);
    if (!IsText(inChanged) || (flavor->flags & kScrapFlavorMaskSenderOnly))
        return;
    if (inChanged == kScrapFlavorTypeUnicode)
        SetClipboardText(ClipboardOfUnicode(flavor->data));
    else if (!unicodeIsThere)
        SetClipboardText(ClipboardOfMacRoman(flavor->data));
}

OSStatus ScrapStore::Keep(Flavor& ioFlavor)
{
    if (!fKeeper || ioFlavor.isBeingKept)
        return noTypeErr;
    const ScrapFlavorType type = ioFlavor.type;
    const uintptr_t generation = fGeneration;
    ioFlavor.isBeingKept = true;
    const OSStatus result = fKeeper(AsReference(fGeneration), type, fKeeperData);
    if (fGeneration != generation)
        return badScrapRefErr; // the keeper cleared the scrap
    Flavor* kept = Find(type);
    kept->isBeingKept = false;
    if (result != noErr)
        return result;
    return kept->isPromise ? OSStatus{ noTypeErr } : OSStatus{ noErr };
}

OSStatus ScrapStore::Fetch(ScrapFlavorType inType, Flavor** outFlavor)
{
    Flavor* flavor = Find(inType);
    if (!flavor)
        return noTypeErr;
    if (flavor->isPromise)
        if (const OSStatus result = Keep(*flavor); result != noErr)
            return result;
    *outFlavor = Find(inType); // keeping may have added flavors
    return noErr;
}

OSStatus ScrapStore::KeepPromises()
{
    OSStatus first = noErr;
    for (size_t i = 0; i < fFlavors.size(); ++i) {
        if (!fFlavors[i].isPromise)
            continue;
        const OSStatus result = Keep(fFlavors[i]);
        if (result != noErr && first == noErr)
            first = result;
        if (result == badScrapRefErr)
            break;
    }
    return first;
}

bool ScrapStore::HasPromisedText()
{
    return std::any_of(fFlavors.begin(), fFlavors.end(), [](const Flavor& flavor) {
        return flavor.isPromise && IsText(flavor.type) && !(flavor.flags & kScrapFlavorMaskSenderOnly);
    });
}

} // namespace lampblack::process
