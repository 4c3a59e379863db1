// The libraries that are opened on first use.
#include "Libraries.h"

#include <dlfcn.h>

#include <optional>

namespace lampblack::images {

namespace {

// Looks up function after function; one that is missing spoils all.
class Symbols {
public:
    explicit Symbols(const char* inName) : fLibrary(dlopen(inName, RTLD_NOW | RTLD_LOCAL)) {}

    template <class Function>
    Symbols& Get(const char* inName, Function* outFunction)
    {
        void* symbol = fLibrary ? dlsym(fLibrary, inName) : nullptr;
        fComplete = fComplete && symbol;
        *outFunction = reinterpret_cast<Function>(symbol);
        return *this;
    }
    bool AreComplete() const { return fComplete; }

private:
    void* fLibrary; // for the life of the process
    bool fComplete = true;
};

std::optional<JpegLibrary> FindJpegLibrary()
{
    JpegLibrary found = {};
    Symbols symbols("libjpeg.so.62");
    symbols.Get("jpeg_std_error", &found.stdError)
        .Get("jpeg_CreateDecompress", &found.createDecompress)
        .Get("jpeg_destroy_decompress", &found.destroyDecompress)
        .Get("jpeg_read_header", &found.readHeader)
        .Get("jpeg_start_decompress", &found.startDecompress)
        .Get("jpeg_read_scanlines", &found.readScanlines)
        .Get("jpeg_resync_to_restart", &found.resyncToRestart)
        .Get("jpeg_CreateCompress", &found.createCompress)
        .Get("jpeg_destroy_compress", &found.destroyCompress)
        .Get("jpeg_set_defaults", &found.setDefaults)
        .Get("jpeg_set_quality", &found.setQuality)
        .Get("jpeg_start_compress", &found.startCompress)
        .Get("jpeg_write_scanlines", &found.writeScanlines)
        .Get("jpeg_finish_compress", &found.finishCompress);
    return symbols.AreComplete() ? std::optional(found) : std::nullopt;
}

// The TIFF library tells of every oddity of a file on the standard error stream, which is the application's.
void SilenceTiffLibrary()
{
    void* library = dlopen("libtiff.so.6", RTLD_LAZY | RTLD_NOLOAD);
    using SetHandler = void* (*)(void*);
    for (const char* name : { "TIFFSetErrorHandler", "TIFFSetWarningHandler" })
        if (void* symbol = library ? dlsym(library, name) : nullptr)
            reinterpret_cast<SetHandler>(symbol)(nullptr);
    if (library)
        dlclose(library);
}

std::optional<ImageLibrary> FindImageLibrary()
{
    ImageLibrary found = {};
    Symbols symbols("libSDL2_image-2.0.so.0");
    symbols.Get("IMG_LoadTIF_RW", &found.loadTiff).Get("IMG_LoadBMP_RW", &found.loadBmp);
    if (!symbols.AreComplete())
        return std::nullopt;
    SilenceTiffLibrary();
    return found;
}

} // namespace

const JpegLibrary* LoadJpegLibrary()
{
    static const std::optional<JpegLibrary> library = FindJpegLibrary();
    return library ? &*library : nullptr;
}

const ImageLibrary* LoadImageLibrary()
{
    static const std::optional<ImageLibrary> library = FindImageLibrary();
    return library ? &*library : nullptr;
}

} // namespace lampblack::images
