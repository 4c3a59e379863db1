// Random changes beside a simple model, and changes of real files.
#include "WritingFixture.h"

#include <cstring>
#include <fcntl.h>
#include <map>
#include <random>

using namespace lampblack;
using namespace lampblack::writing;

namespace {

struct Entry {
    std::string data, name;
    int attributes = 0;
    bool operator==(const Entry&) const = default;
};
using Model = std::map<std::pair<OSType, SInt16>, Entry>;

// Everything in the current file.
Model Contents()
{
    Model model;
    for (SInt16 t = 1; t <= Count1Types(); ++t) {
        ResType type = 0;
        Get1IndType(&type, t);
        for (SInt16 i = 1; i <= Count1Resources(type); ++i) {
            const Handle handle = Get1IndResource(type, i);
            SInt16 id = 0;
            Str255 name;
            GetResInfo(handle, &id, nullptr, name);
            model[{ type, id }] = { TextOf(handle), std::string((char*)name + 1, name[0]),
                                    GetResAttrs(handle) & ~resChanged };
        }
    }
    return model;
}

std::string RandomText(std::mt19937& ioRandom, size_t inMost)
{
    std::string text(ioRandom() % inMost, ' ');
    for (char& letter : text)
        letter = (char)ioRandom();
    return text;
}

class Player {
public:
    Player(Place& inPlace, unsigned inSeed) : fPlace(inPlace), fRandom(inSeed) { Open(); }
    ~Player() { CloseResFile(fFile); }

    void Step()
    {
        switch (fRandom() % 10) {
        case 0:
        case 1:
        case 2: Add(); break;
        case 3:
        case 4:
        case 5: Change(); break;
        case 6: Remove(); break;
        case 7: Rename(); break;
        case 8:
            UpdateResFile(fFile);
            CheckDisk();
            break;
        default: Reopen(); break;
        }
        REQUIRE(ResError() == noErr);
    }

    void Reopen()
    {
        CloseResFile(fFile);
        REQUIRE(ResError() == noErr);
        CheckDisk();
        Open();
        REQUIRE(Contents() == fModel);
    }

private:
    void Open()
    {
        fFile = fPlace.Open("File");
        REQUIRE(fFile > 0);
    }

    // A newcomer that knows nothing of this process sees the model.
    void CheckDisk()
    {
        const files::LocatedForks forks = files::LocateForks(fPlace.Path() / "File");
        resources::ResourceFork fork;
        REQUIRE(fork.Open(forks.resourceFork) == nullptr);
        REQUIRE(fork.IsSound());
        REQUIRE(fork.ResourceCount() == fModel.size());
        for (const auto& [key, entry] : fModel) {
            Bytes data;
            REQUIRE(fork.Data(fork.Find(key.first, key.second), &data));
            REQUIRE(std::string(data.begin(), data.end()) == entry.data);
        }
    }

    std::pair<OSType, SInt16> AnyKey()
    {
        auto found = fModel.begin();
        std::advance(found, fRandom() % fModel.size());
        return found->first;
    }

    void Add()
    {
        const OSType type = 'tyA0' + fRandom() % 5;
        const SInt16 id = (SInt16)(fRandom() % 200);
        if (fModel.count({ type, id }))
            return;
        const Entry entry = { RandomText(fRandom, fRandom() % 20 ? 100 : 5000),
                              RandomText(fRandom, fRandom() % 3 ? 1 : 20), 0 };
        AddText(entry.data, type, id, entry.name);
        fModel[{ type, id }] = entry;
    }

    void Change()
    {
        if (fModel.empty())
            return;
        const auto key = AnyKey();
        const Handle handle = Get1Resource(key.first, key.second);
        REQUIRE(handle != nullptr);
        fModel[key].data = RandomText(fRandom, 150);
        SetText(handle, fModel[key].data);
        ChangedResource(handle);
        if (fRandom() % 2)
            WriteResource(handle);
    }

    void Remove()
    {
        if (fModel.empty())
            return;
        const auto key = AnyKey();
        const Handle handle = Get1Resource(key.first, key.second);
        RemoveResource(handle);
        REQUIRE(ResError() == noErr);
        DisposeHandle(handle);
        fModel.erase(key);
    }

    void Rename()
    {
        if (fModel.empty())
            return;
        const auto key = AnyKey();
        const std::pair<OSType, SInt16> other = { key.first, (SInt16)(fRandom() % 400 - 200) };
        if (fModel.count(other))
            return;
        const Handle handle = Get1Resource(key.first, key.second);
        Entry entry = fModel[key];
        entry.name = "n" + RandomText(fRandom, 30);
        entry.attributes = (int)(fRandom() % 2 ? resPurgeable : resPreload);
        SetResInfo(handle, other.second, PascalString(entry.name));
        SetResAttrs(handle, (SInt16)entry.attributes);
        ChangedResource(handle);
        fModel.erase(key);
        fModel[other] = entry;
    }

    Place& fPlace;
    std::mt19937 fRandom;
    SInt16 fFile = 0;
    Model fModel;
};

} // namespace

TEST_CASE("Resource files: random changes, updates and reopenings are as a simple model has them")
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        CAPTURE(seed);
        Place place;
        place.Create("File");
        Player player(place, seed);
        for (int step = 0; step < 300; ++step)
            player.Step();
        player.Reopen();
    }
}

TEST_CASE("Real files: one resource replaced, all others stay byte for byte, names, attributes and order too")
{
    const std::filesystem::path folder =
        std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real/public";
    std::error_code ignored;
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, ignored)) {
        if (!entry.is_regular_file())
            continue;
        CAPTURE(entry.path().string());
        const Place place;
        std::filesystem::copy_file(entry.path(), place.Path() / "File");
        std::filesystem::permissions(place.Path() / "File", std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
        const std::string before = ReadFile(place.Path() / "File");
        const files::LocatedForks old = files::LocateForks(place.Path() / "File");
        const std::vector<uint8_t> oldBytes(old.resourceFork.begin(), old.resourceFork.end());
        const std::string data(old.dataFork.begin(), old.dataFork.end());
        resources::ResourceFork oldFork;
        const bool isSound = !oldFork.Open(oldBytes) && oldFork.IsSound() && old.problems.empty();
        const SInt16 file = place.Open("File");
        CHECK((file > 0) == isSound);
        if (file < 0) {
            CHECK(ReadFile(place.Path() / "File") == before);
            continue;
        }
        ++count;
        ResType type = 0;
        Get1IndType(&type, 1);
        const Handle handle = Count1Types() ? Get1IndResource(type, 1) : HandleOf("the first");
        SetText(handle, "replaced");
        if (Count1Types() == 0)
            AddResource(handle, 'TEXT', 1, nullptr);
        SetResAttrs(handle, (SInt16)(GetResAttrs(handle) & ~resProtected));
        ChangedResource(handle);
        CloseResFile(file);
        REQUIRE(ResError() == noErr);
        const files::LocatedForks now = files::LocateForks(place.Path() / "File");
        resources::ResourceFork newFork;
        REQUIRE(newFork.Open(now.resourceFork) == nullptr);
        CHECK(newFork.IsSound());
        if (now.resourcePath.filename() == "._File")
            CHECK(std::string(now.dataFork.begin(), now.dataFork.end()) == data);
        CHECK(std::memcmp(&now.finderInfo, &old.finderInfo, sizeof(FInfo)) == 0);
        CHECK(newFork.Attributes() == (oldFork.Attributes() & ~(mapCompact | mapChanged)));
        CHECK(std::equal(oldBytes.begin() + 16, oldBytes.begin() + 256, now.resourceFork.begin() + 16));
        for (size_t i = 0; i < oldFork.ResourceCount(); ++i) {
            const resources::ResourceRef was = oldFork.WithOrdinal(i), is = newFork.WithOrdinal(i);
            const resources::ResourceInfo a = oldFork.Info(was), b = newFork.Info(is);
            REQUIRE(a.type == b.type);
            REQUIRE(a.id == b.id);
            REQUIRE(a.name == b.name);
            REQUIRE(a.hasName == b.hasName);
            Bytes x, y;
            REQUIRE(oldFork.Data(was, &x));
            REQUIRE(newFork.Data(is, &y));
            if (i > 0) {
                REQUIRE(a.attributes == b.attributes);
                REQUIRE(std::equal(x.begin(), x.end(), y.begin(), y.end()));
            }
        }
    }
    if (count == 0)
        MESSAGE("skipped: no real files at " << folder.string());
}
