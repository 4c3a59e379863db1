// An application whose resource file says nothing of a creator, and one of which there is only that file.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <string>

#include "FreshProcess.h"
#include "ScratchFolder.h"

namespace {

// A resource fork without resources.
std::string EmptyFork()
{
    std::string fork(286, '\0');
    fork[2] = 1; // data at 256
    fork[6] = 1; // map at 256
    fork[15] = 30;
    fork[256 + 25] = 28;                                       // the list of types
    fork[256 + 27] = 30;                                       // the names
    fork[256 + 28] = fork[256 + 29] = static_cast<char>(0xFF); // no types
    return fork;
}

// The number of what InitializeMacOSHelpers takes for the application's resource file.
int ResFileOf(const std::filesystem::path& inApplication)
{
    return InFreshProcess([&] {
        lampblack::host::Settings settings;
        settings.screen = lampblack::host::Screen::Headless;
        settings.clock = lampblack::host::Clock::Virtual;
        settings.application = inApplication;
        if (!lampblack::host::Configure(settings))
            return -2;
        InitializeMacOSHelpers();
        OSType signature = 0;
        return GetCurrentSignature(&signature) == noErr && signature == kUnknownType ? GetApplicationResFile()
                                                                                     : -3;
    });
}

} // namespace

TEST_CASE("GetApplicationResFile: a file without a creator is that of an application without a signature")
{
    const ScratchFolder folder;
    folder.Write("Game");
    folder.Write("Game.rsrc", EmptyFork());
    CHECK(ResFileOf(folder.Path() / "Game") > 0);
}

TEST_CASE("GetApplicationResFile: the resource file may be all that there is, or the application itself")
{
    const ScratchFolder folder;
    folder.Write("Only.rsrc", EmptyFork());
    folder.Write("Self", EmptyFork());
    CHECK(ResFileOf(folder.Path() / "Only") > 0);
    CHECK(ResFileOf(folder.Path() / "Self") > 0);
}

TEST_CASE("GetApplicationResFile: 0 for an application without a resource file")
{
    const ScratchFolder folder;
    folder.Write("Game");
    CHECK(ResFileOf(folder.Path() / "Game") == 0);
    CHECK(ResFileOf(folder.Path() / "nowhere" / "Game") == 0);
}
