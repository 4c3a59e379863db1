// The libraries that are opened when the first image needs them, so that a process that shows none starts
// without them.
#ifndef LAMPBLACK_IMAGES_LIBRARIES_H
#define LAMPBLACK_IMAGES_LIBRARIES_H

#include <cstddef>
#include <cstdio>

#include <SDL_image.h>
#include <jpeglib.h>

namespace lampblack::images {

struct JpegLibrary {
    decltype(&jpeg_std_error) stdError;
    decltype(&jpeg_CreateDecompress) createDecompress;
    decltype(&jpeg_destroy_decompress) destroyDecompress;
    decltype(&jpeg_read_header) readHeader;
    decltype(&jpeg_start_decompress) startDecompress;
    decltype(&jpeg_read_scanlines) readScanlines;
    decltype(&jpeg_resync_to_restart) resyncToRestart;
    decltype(&jpeg_CreateCompress) createCompress;
    decltype(&jpeg_destroy_compress) destroyCompress;
    decltype(&jpeg_set_defaults) setDefaults;
    decltype(&jpeg_set_quality) setQuality;
    decltype(&jpeg_start_compress) startCompress;
    decltype(&jpeg_write_scanlines) writeScanlines;
    decltype(&jpeg_finish_compress) finishCompress;
};

struct ImageLibrary {
    decltype(&IMG_LoadTIF_RW) loadTiff;
    decltype(&IMG_LoadBMP_RW) loadBmp;
};

// Null where the library is not installed.
const JpegLibrary* LoadJpegLibrary();
const ImageLibrary* LoadImageLibrary();

} // namespace lampblack::images

#endif
