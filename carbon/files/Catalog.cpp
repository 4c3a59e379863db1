// Volumes and IDs: which folder or file a number means.
#include "Catalog.h"

#include <Host.h>
#include <foundation/MacRoman.h>

#include <algorithm>
#include <fcntl.h>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <unordered_map>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr SInt32 kFirstID = 16; // what is below belongs to the file system
constexpr const char* kHostVolume = "Host";
constexpr const char* kNowhere = "/dev/null/gone"; // below what is no folder there can be nothing

struct Node {
    Folder parent; // volume 0: gone
    std::string hostName;
    bool isFolder = false; // when it was met
};

// A name in a folder, by which an ID is found.
struct Key {
    Folder parent;
    std::string_view name;
    bool operator==(const Key&) const = default;
};

struct OwnedKey {
    Folder parent;
    std::string name;
    operator Key() const { return { parent, name }; }
};

struct HashKey {
    using is_transparent = void;
    size_t operator()(const Key& inKey) const
    {
        const uint64_t place = (uint64_t)(uint16_t)inKey.parent.volume << 32 | (uint32_t)inKey.parent.id;
        return std::hash<std::string_view>()(inKey.name) ^ (size_t)(place * 0x9E3779B97F4A7C15u);
    }
};

struct EqualKeys {
    using is_transparent = void;
    bool operator()(const Key& inLeft, const Key& inRight) const { return inLeft == inRight; }
};

struct CatalogState {
    std::vector<Volume> volumes = { { -1, kHostVolume, "/" } };
    std::vector<Node> nodes; // the node with ID kFirstID first
    std::unordered_map<OwnedKey, SInt32, HashKey, EqualKeys> ids;
    std::optional<Folder> defaultFolder;
};

CatalogState& State()
{
    static auto& state = *new CatalogState; // outlives whoever asks while the process ends
    return state;
}

Node* FindNode(Folder inNode)
{
    std::vector<Node>& nodes = State().nodes;
    const bool isGiven = inNode.id >= kFirstID && inNode.id - kFirstID < (SInt32)nodes.size();
    Node* node = isGiven ? &nodes[(size_t)(inNode.id - kFirstID)] : nullptr;
    return node && node->parent.volume == inNode.volume ? node : nullptr;
}

bool IsRoot(Folder inNode)
{
    return inNode.id == fsRtDirID;
}

bool IsFolderOnHost(const path& inPath)
{
    struct stat status;
    return stat(inPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The ID by which a name in a folder is known; 0 when it has none.
SInt32 KnownID(const Key& inKey)
{
    const auto found = State().ids.find(inKey);
    return found == State().ids.end() ? 0 : found->second;
}

void ForgetName(const Key& inKey)
{
    const auto found = State().ids.find(inKey);
    if (found != State().ids.end())
        State().ids.erase(found);
}

// The volume that holds an absolute path: of several, the one that reaches farthest down.
const Volume* VolumeHolding(const path& inPath)
{
    const Volume* best = nullptr;
    size_t bestLength = 0;
    for (const Volume& volume : State().volumes) {
        const std::string& root = volume.path.native();
        const auto mismatch =
            std::mismatch(volume.path.begin(), volume.path.end(), inPath.begin(), inPath.end());
        if (mismatch.first == volume.path.end() && root.size() > bestLength) {
            best = &volume;
            bestLength = root.size();
        }
    }
    return best;
}

} // namespace

const std::vector<Volume>& Volumes()
{
    return State().volumes;
}

SInt16 AddVolume(std::string_view inMacName, const path& inPath)
{
    std::vector<Volume>& volumes = State().volumes;
    std::error_code error;
    path root = std::filesystem::canonical(inPath, error);
    if (error || volumes.size() >= 1000)
        return 0;
    const SInt16 refNum = (SInt16) - (SInt16)(volumes.size() + 1);
    volumes.push_back({ refNum, std::string(inMacName.substr(0, 27)), std::move(root) });
    return refNum;
}

const Volume* FindVolume(SInt16 inRefNum)
{
    const std::vector<Volume>& volumes = State().volumes;
    const SInt16 wanted = inRefNum == 0 ? DefaultFolder().volume : inRefNum;
    const size_t index = (size_t)(wanted < 0 ? -(int)wanted : wanted) - 1;
    return index < volumes.size() ? &volumes[index] : nullptr;
}

const Volume* FindVolumeNamed(std::string_view inMacName)
{
    for (const Volume& volume : State().volumes)
        if (foundation::EqualIgnoringCase(volume.name, inMacName))
            return &volume;
    return nullptr;
}

OSErr FolderMeant(SInt16 inVolume, SInt32 inDirectory, Folder* outFolder)
{
    if (inVolume == 0 && inDirectory == 0) {
        *outFolder = DefaultFolder();
        return noErr;
    }
    const Volume* volume = FindVolume(inVolume);
    if (!volume)
        return nsvErr;
    *outFolder = { volume->refNum, inDirectory == 0 ? (SInt32)fsRtDirID : inDirectory };
    return noErr;
}

OSErr ResolveFolder(SInt16 inVolume, SInt32 inDirectory, Folder* outFolder)
{
    const OSErr error = FolderMeant(inVolume, inDirectory, outFolder);
    if (error != noErr || (inVolume == 0 && inDirectory == 0))
        return error;
    if (IsRoot(*outFolder) || inDirectory == fsRtParID)
        return noErr;
    return FindNode(*outFolder) && IsFolderOnHost(PathOf(*outFolder)) ? noErr : dirNFErr;
}

bool IsFolderID(Folder inFolder)
{
    const Node* node = FindNode(inFolder);
    return IsRoot(inFolder) || (node && node->isFolder);
}

// A volume's own path is where its root is, whether by links or not; all else is looked at itself.
bool LookAtHost(Item* ioItem)
{
    UInt16 mode = 0;
    ioItem->seen = FileIdentity::PlaceAt(PathTextOf(*ioItem), &mode, !ioItem->hostName.empty());
    ioItem->exists = ioItem->seen.exists;
    ioItem->isFolder = ioItem->exists && S_ISDIR(mode);
    ioItem->isLink = ioItem->exists && S_ISLNK(mode);
    return ioItem->exists;
}

bool ItemNamed(Folder inFolder, std::string_view inHostName, Item* outItem)
{
    *outItem = { inFolder, std::string(inHostName), MacNameOf(inHostName) };
    return LookAtHost(outItem);
}

bool ItemAtPath(const path& inPath, Item* outItem)
{
    std::error_code error;
    const path real = std::filesystem::canonical(inPath, error);
    const Volume* volume = error ? nullptr : VolumeHolding(real);
    if (!volume)
        return false;
    Item item = { { volume->refNum, fsRtParID }, "", volume->name, true, true };
    auto component = std::next(real.begin(), std::distance(volume->path.begin(), volume->path.end()));
    for (; component != real.end(); ++component)
        item = { NodeOf(item), component->native(), "", true, true };
    if (!item.hostName.empty())
        item.macName = MacNameOf(item.hostName);
    LookAtHost(&item);
    *outItem = item;
    return item.exists;
}

bool ItemAtPathItself(const path& inPath, Item* outItem)
{
    const path name = inPath.filename();
    Item folder;
    if (name.empty() || name == "." || name == "..")
        return ItemAtPath(inPath, outItem);
    const path parent = inPath.parent_path();
    if (!ItemAtPath(parent.empty() ? path(".") : parent, &folder) || !folder.isFolder)
        return false;
    return ItemNamed(NodeOf(folder), name.native(), outItem);
}

bool ItemWithID(Folder inNode, Item* outItem)
{
    const Volume* volume = inNode.volume < 0 ? FindVolume(inNode.volume) : nullptr;
    const Node* node = FindNode(inNode);
    if (!volume || (!node && !IsRoot(inNode)))
        return false;
    if (node)
        return ItemNamed(node->parent, node->hostName, outItem);
    *outItem = { { volume->refNum, fsRtParID }, "", volume->name };
    return LookAtHost(outItem);
}

Folder NodeOf(const Item& inItem)
{
    if (inItem.parent.id == fsRtParID)
        return { inItem.parent.volume, fsRtDirID };
    CatalogState& state = State();
    if (const SInt32 known = KnownID({ inItem.parent, inItem.hostName }))
        return { inItem.parent.volume, known };
    // The number and the node come to be together, or, without memory, neither.
    const SInt32 id = NextNodeID();
    state.nodes.push_back({ inItem.parent, inItem.hostName, inItem.isFolder });
    try {
        state.ids.emplace(OwnedKey{ inItem.parent, inItem.hostName }, id);
    } catch (const std::bad_alloc&) {
        state.nodes.pop_back();
        throw;
    }
    return { inItem.parent.volume, id };
}

SInt32 NextNodeID()
{
    return kFirstID + (SInt32)State().nodes.size();
}

void NodeDidGo(const Item& inItem)
{
    const SInt32 id = KnownID({ inItem.parent, inItem.hostName });
    if (Node* node = FindNode({ inItem.parent.volume, id }))
        node->parent.volume = 0;
    ForgetName({ inItem.parent, inItem.hostName });
}

void NodeDidMove(const Item& inOld, const Item& inNew)
{
    const SInt32 id = KnownID({ inOld.parent, inOld.hostName });
    Node* node = FindNode({ inOld.parent.volume, id });
    const bool isSamePlace = inOld.parent == inNew.parent && inOld.hostName == inNew.hostName;
    if (!node || isSamePlace || inOld.parent.volume != inNew.parent.volume)
        return;
    ForgetName({ inOld.parent, inOld.hostName });
    NodeDidGo(inNew); // what had the name before
    *node = { inNew.parent, inNew.hostName, inNew.isFolder };
    State().ids.emplace(OwnedKey{ inNew.parent, inNew.hostName }, id);
}

bool FollowLinks(const Item& inItem, Item* outItem)
{
    *outItem = inItem;
    return inItem.isLink ? ItemAtPath(PathOf(inItem), outItem) : inItem.exists;
}

bool FollowOneLink(const Item& inItem, Item* outItem)
{
    std::error_code error;
    const path link = PathOf(inItem);
    const path target = std::filesystem::read_symlink(link, error);
    return !error &&
           ItemAtPathItself(link.parent_path() / target, outItem); // an absolute target stands alone
}

namespace {

// False for a folder that is gone, or an ID that was never given.
bool AppendPath(Folder inFolder, std::string* ioText)
{
    if (const Node* node = FindNode(inFolder)) {
        if (!AppendPath(node->parent, ioText))
            return false;
        if (!ioText->ends_with('/'))
            *ioText += '/';
        *ioText += node->hostName;
        return true;
    }
    const Volume* volume = FindVolume(inFolder.volume);
    if (volume)
        *ioText += volume->path.native();
    return volume && (IsRoot(inFolder) || inFolder.id == fsRtParID);
}

std::string PathTextOf(Folder inFolder)
{
    std::string text;
    return AppendPath(inFolder, &text) ? text : kNowhere;
}

} // namespace

std::string PathTextOf(const Item& inItem)
{
    if (inItem.parent.id == fsRtParID)
        return PathTextOf(Folder{ inItem.parent.volume, fsRtDirID });
    std::string text = PathTextOf(inItem.parent);
    if (!text.ends_with('/'))
        text += '/';
    return text += inItem.hostName;
}

path PathOf(Folder inFolder)
{
    return PathTextOf(inFolder);
}

path PathOf(const Item& inItem)
{
    return PathTextOf(inItem);
}

void MakeSpec(const Item& inItem, FSSpec* outSpec)
{
    outSpec->vRefNum = inItem.parent.volume;
    outSpec->parID = inItem.parent.id;
    foundation::PascalFromMacRoman(inItem.macName, outSpec->name, sizeof(Str63) - 1);
}

Folder DefaultFolder()
{
    std::optional<Folder>& folder = State().defaultFolder;
    if (!folder) {
        Item item;
        const bool isThere =
            ItemAtPath(host::CurrentSettings().application.parent_path(), &item) && item.isFolder;
        folder = isThere ? NodeOf(item) : Folder{ -1, fsRtDirID };
    }
    return *folder;
}

void SetDefaultFolder(Folder inFolder)
{
    State().defaultFolder = inFolder;
}

} // namespace lampblack::files
