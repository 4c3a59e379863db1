// rsrc-render FILE [TYPE ID] -o OUT.png: `rsrc render` starts this. See docs/rsrc.md.
#include "PngFile.h"

#include <lampblack/host.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace lampblack::render;

struct Request {
    std::string file, type, id, output;
};

std::optional<Request> Read(int argc, char** argv)
{
    std::vector<std::string> words;
    Request request;
    for (int i = 1; i < argc; ++i)
        if (std::string(argv[i]) == "-o" && i + 1 < argc)
            request.output = argv[++i];
        else
            words.emplace_back(argv[i]);
    if (request.output.empty() || (words.size() != 1 && words.size() != 3))
        return {};
    request.file = words[0];
    if (words.size() == 3) {
        request.type = words[1];
        request.id = words[2];
    }
    return request;
}

// Codes shorter than four characters are filled with spaces; in UTF-8.
std::optional<ResType> TypeOf(const std::string& inText)
{
    unsigned char code[5] = "    ";
    const CFStringRef text = CFStringCreateWithCString(nullptr, inText.c_str(), kCFStringEncodingUTF8);
    if (!text)
        return {};
    char bytes[8] = "";
    const bool fits = CFStringGetCString(text, bytes, 5, kCFStringEncodingMacRoman);
    CFRelease(text);
    if (!fits)
        return {};
    for (int i = 0; bytes[i]; ++i)
        code[i] = (unsigned char)bytes[i];
    return (ResType)code[0] << 24 | (ResType)code[1] << 16 | (ResType)code[2] << 8 | code[3];
}

bool SpecOf(const std::string& inPath, FSSpec* outSpec)
{
    FSRef file;
    const std::string path = std::filesystem::absolute(inPath);
    return FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), &file, nullptr) == noErr &&
           FSGetCatalogInfo(&file, kFSCatInfoNone, nullptr, nullptr, outSpec, nullptr) == noErr;
}

int Failed(const std::string& inWhat)
{
    std::fprintf(stderr, "rsrc: %s\n", inWhat.c_str());
    return 1;
}

std::string Explained(OSStatus inStatus, const Request& inRequest)
{
    const std::string what = inRequest.file + ": '" + inRequest.type + "' " + inRequest.id;
    if (inStatus == resNotFound)
        return what + ": there is no such resource";
    return what + " cannot be drawn (error " + std::to_string(inStatus) +
           "); types that can: " + KnownTypes();
}

int RenderResource(const Request& inRequest, const FSSpec& inFile, Image* outImage)
{
    const std::optional<ResType> type = TypeOf(inRequest.type);
    char* end = nullptr;
    const long id = std::strtol(inRequest.id.c_str(), &end, 10);
    if (!type || *end || inRequest.id.empty() || id < -32768 || id > 32767)
        return Failed("expected a type of four characters and an ID, found '" + inRequest.type + "' and '" +
                      inRequest.id + "'");
    const short file = FSpOpenResFile(&inFile, fsRdPerm);
    if (file == -1)
        return Failed(inRequest.file + ": no resources can be read (error " + std::to_string(ResError()) +
                      ")");
    const OSStatus status = Render(*type, (short)id, outImage);
    return status ? Failed(Explained(status, inRequest)) : 0;
}

} // namespace

int main(int argc, char** argv)
{
    const std::optional<Request> request = Read(argc, argv);
    if (!request) {
        std::fputs("usage: rsrc render FILE [TYPE ID] -o OUT.png\n", stderr);
        return 2;
    }
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    settings.clock = lampblack::host::Clock::Virtual;
    settings.width = settings.height = 2048; // for dialogs of any size
    lampblack::host::Configure(settings);
    FSSpec file;
    if (!SpecOf(request->file, &file))
        return Failed(request->file + ": no such file");
    Image image;
    if (!request->type.empty()) {
        if (const int failed = RenderResource(*request, file, &image))
            return failed;
    } else if (const OSStatus status = RenderFile(file, &image)) {
        return Failed(request->file + ": this is no picture (error " + std::to_string(status) + ")");
    }
    const std::string reason = WritePng(image, request->output);
    return reason.empty() ? 0 : Failed(request->output + ": " + reason);
}
