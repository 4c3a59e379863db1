// The flavors behind the current ScrapRef, and the bridge to the desktop's clipboard.
#ifndef LAMPBLACK_PROCESS_SCRAPSTORE_H
#define LAMPBLACK_PROCESS_SCRAPSTORE_H

#include <Carbon/Scrap.h>

#include <string>
#include <string_view>
#include <vector>

namespace lampblack::process {

struct Flavor {
    ScrapFlavorType type = 0;
    ScrapFlavorFlags flags = kScrapFlavorMaskNone;
    Size promisedSize = kScrapFlavorSizeUnknown;
    bool isPromise = false;
    bool isBeingKept = false; // its keeper runs: asking for it once more finds nothing
    std::string data;
};

class ScrapStore {
public:
    // Looks at the clipboard first: when another program has taken it, the scrap is a new one with its text.
    ScrapRef Current();
    bool IsCurrent(ScrapRef inScrap) { return inScrap && inScrap == Current(); }
    void Clear();

    OSStatus Put(ScrapFlavorType, ScrapFlavorFlags, std::string_view data);
    OSStatus Promise(ScrapFlavorType, ScrapFlavorFlags, Size size);
    void SetKeeper(ScrapPromiseKeeperUPP, void* userData);

    const std::vector<Flavor>& Flavors() const { return fFlavors; }
    Flavor* Find(ScrapFlavorType);
    // Has the flavor's bytes delivered when they are only promised. *outFlavor lives until the next call.
    OSStatus Fetch(ScrapFlavorType, Flavor** outFlavor);
    OSStatus KeepPromises();
    bool HasPromisedText();

private:
    OSStatus Prepare(ScrapFlavorType, Flavor** outFlavor);
    OSStatus Keep(Flavor&);
    void Begin();
    void TakeFromClipboard();
    void Publish(ScrapFlavorType changed);

    std::vector<Flavor> fFlavors;
    uintptr_t fGeneration = 0; // 0: not looked at the clipboard yet
    UInt32 fClipboardSerial = 0;
    ScrapPromiseKeeperUPP fKeeper = nullptr;
    void* fKeeperData = nullptr;
};

ScrapStore& TheScrap();

} // namespace lampblack::process

#endif
