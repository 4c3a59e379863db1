// JPEG data, by libjpeg-turbo. The library leaves by a jump where it cannot go on; every call into it is made
// from a function of its own that holds nothing to be destroyed.
#include "ImageReader.h"
#include "Libraries.h"

#include <quickdraw/Vectors.h>

#include <algorithm>
#include <csetjmp>
#include <new>
#include <vector>

#include <jerror.h>

namespace lampblack::images {

namespace {

constexpr long kMaxMemory = 1L << 29;
constexpr int kMaxScans = 100; // progressive files have about ten; each costs a pass over the whole image
constexpr int kRowsHeld = 32;  // what the library may still hold of decoded rows when the data ends
constexpr uint32_t kColorBits = 0x00FFFFFF;

struct State {
    jpeg_decompress_struct info;
    jpeg_error_mgr errors;
    jpeg_source_mgr source;
    jpeg_progress_mgr progress;
    std::jmp_buf escape;
    bool ended; // the library asked for more than there is
    bool outOfMemory;
};

State& StateOf(void* inClientData)
{
    return *static_cast<State*>(inClientData);
}

[[noreturn]] void Escape(j_common_ptr inInfo)
{
    State& state = StateOf(inInfo->client_data);
    const int code = inInfo->err->msg_code;
    state.outOfMemory = code == JERR_OUT_OF_MEMORY || code == JERR_NO_BACKING_STORE;
    std::longjmp(state.escape, 1);
}

// A scan whose end mark comes before its last row ends early as well.
void NoteWarning(j_common_ptr inInfo, int inLevel)
{
    const bool isWarning = inLevel < 0 && inInfo->err->msg_code == JWRN_HIT_MARKER;
    if (isWarning && reinterpret_cast<j_decompress_ptr>(inInfo)->unread_marker == JPEG_EOI)
        StateOf(inInfo->client_data).ended = true;
}
void IgnoreMessage(j_common_ptr) {}
void IgnoreSource(j_decompress_ptr) {}

// The library is told of an end, as its own source of bytes would tell it.
boolean EndSource(j_decompress_ptr ioInfo)
{
    static const JOCTET kEnd[] = { 0xFF, JPEG_EOI };
    StateOf(ioInfo->client_data).ended = true;
    ioInfo->src->next_input_byte = kEnd;
    ioInfo->src->bytes_in_buffer = sizeof kEnd;
    return TRUE;
}

void SkipSource(j_decompress_ptr ioInfo, long inCount)
{
    if (inCount <= 0)
        return;
    if ((size_t)inCount > ioInfo->src->bytes_in_buffer) {
        EndSource(ioInfo);
        return;
    }
    ioInfo->src->next_input_byte += inCount;
    ioInfo->src->bytes_in_buffer -= (size_t)inCount;
}

void LimitScans(j_common_ptr ioInfo)
{
    if (reinterpret_cast<j_decompress_ptr>(ioInfo)->input_scan_number > kMaxScans)
        Escape(ioInfo);
}

Fixed ResolutionOf(int inUnit, int inDensity)
{
    if (inUnit == 1 && inDensity > 0 && inDensity < 32768)
        return inDensity << 16;
    if (inUnit == 2 && inDensity > 0 && inDensity < 12000) // a centimetre
        return (Fixed)((int64_t)inDensity * 254 * 65536 / 100);
    return 72 << 16;
}

// One row of ink values becomes colours. Adobe's files hold the inks inverted, and there are hardly others.
void ColorsOfInks(const uint8_t* inInks, bool inIsInverted, uint32_t* outRow, int inCount)
{
    const uint8_t flip = inIsInverted ? 0 : 255;
    for (int i = 0; i < inCount; ++i, inInks += 4) {
        const uint32_t black = inInks[3] ^ flip;
        const auto light = [&](int ink) { return (uint32_t)(inInks[ink] ^ flip) * black / 255; };
        outRow[i] = light(0) << 16 | light(1) << 8 | light(2);
    }
}

// The library sets the byte that holds no colour. The row is still in the nearest cache.
[[gnu::always_inline]] inline void ClearSpareBytes(uint32_t* ioRow, int inCount)
{
    for (int i = 0; i < inCount; ++i)
        ioRow[i] &= kColorBits;
}
LAMPBLACK_AVX2 void ClearWithAvx2(uint32_t* ioRow, int inCount)
{
    ClearSpareBytes(ioRow, inCount);
}

class JpegReader final : public ImageReader {
public:
    explicit JpegReader(const JpegLibrary& inLibrary) : fLibrary(inLibrary) {}
    ~JpegReader() override { fLibrary.destroyDecompress(&fState.info); }

    OSStatus Open(Bytes, CodecQ);
    int Read(uint32_t* const* outRows, int inCount) override;

private:
    void Prepare(Bytes);
    bool ReadHeader(CodecQ);
    bool Start();
    int ReadOnce(JSAMPARRAY outRows, int inCount);
    int ReadInks(uint32_t* outRow);
    OSStatus Failure() const { return fState.outOfMemory ? (OSStatus)memFullErr : (OSStatus)codecBadDataErr; }
    bool IsBeyondEnd() const;

    const JpegLibrary& fLibrary;
    State fState = {};
    std::vector<uint8_t> fInks;
    int fRow = 0, fRowOfEnd = -1;
    bool fStarted = false, fHasScans = false;
};

void JpegReader::Prepare(Bytes inBytes)
{
    fState.info.err = fLibrary.stdError(&fState.errors);
    fState.errors.error_exit = Escape;
    fState.errors.emit_message = NoteWarning;
    fState.errors.output_message = IgnoreMessage;
    fState.info.client_data = &fState;
    fState.source.next_input_byte = inBytes.data();
    fState.source.bytes_in_buffer = inBytes.size();
    fState.source.init_source = IgnoreSource;
    fState.source.fill_input_buffer = EndSource;
    fState.source.skip_input_data = SkipSource;
    fState.source.resync_to_restart = fLibrary.resyncToRestart;
    fState.source.term_source = IgnoreSource;
    fState.progress.progress_monitor = LimitScans;
}

bool JpegReader::ReadHeader(CodecQ inQuality)
{
    jpeg_decompress_struct& info = fState.info;
    if (setjmp(fState.escape))
        return false;
    fLibrary.createDecompress(&info, JPEG_LIB_VERSION, sizeof info);
    info.client_data = &fState; // creation clears all but this and the error manager in some versions
    info.src = &fState.source;
    info.progress = &fState.progress;
    info.mem->max_memory_to_use = kMaxMemory;
    fLibrary.readHeader(&info, TRUE);
    const bool hasInks = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    info.out_color_space = hasInks ? JCS_CMYK : JCS_EXT_BGRX;
    if (inQuality < codecNormalQuality) {
        info.dct_method = JDCT_IFAST;
        info.do_fancy_upsampling = FALSE;
    }
    return true;
}

OSStatus JpegReader::Open(Bytes inBytes, CodecQ inQuality)
{
    Prepare(inBytes);
    if (!ReadHeader(inQuality))
        return Failure();
    const jpeg_decompress_struct& info = fState.info;
    fFacts.width = (int)info.image_width;
    fFacts.height = (int)info.image_height;
    fFacts.depth = info.jpeg_color_space == JCS_GRAYSCALE ? 40 : 24;
    fHasScans = info.progressive_mode || info.comps_in_scan < info.num_components;
    fFacts.hRes = ResolutionOf(info.density_unit, info.X_density);
    fFacts.vRes = ResolutionOf(info.density_unit, info.Y_density);
    return CheckSize(info.image_width, info.image_height);
}

bool JpegReader::Start()
{
    if (setjmp(fState.escape))
        return false;
    return fLibrary.startDecompress(&fState.info);
}

int JpegReader::ReadOnce(JSAMPARRAY outRows, int inCount)
{
    if (setjmp(fState.escape))
        return 0;
    return (int)fLibrary.readScanlines(&fState.info, outRows, (JDIMENSION)inCount);
}

int JpegReader::ReadInks(uint32_t* outRow)
{
    fInks.resize((size_t)fFacts.width * 4);
    JSAMPROW row = fInks.data();
    if (ReadOnce(&row, 1) == 0)
        return 0;
    ColorsOfInks(fInks.data(), fState.info.saw_Adobe_marker, outRow, fFacts.width);
    return 1;
}

// Rows that the data does not reach are grey as the library has it: they are not part of the image. A file of
// several scans has its rows in the end whatever is missing.
bool JpegReader::IsBeyondEnd() const
{
    return fState.ended && fRow >= fRowOfEnd + kRowsHeld && !fHasScans;
}

int JpegReader::Read(uint32_t* const* outRows, int inCount)
{
    if (fError || fRow >= fFacts.height)
        return 0;
    if (!fStarted && !Start()) {
        fError = Failure();
        return 0;
    }
    fStarted = true;
    if (fState.ended && fRowOfEnd < 0)
        fRowOfEnd = fRow;
    const bool hasInks = fState.info.out_color_space == JCS_CMYK;
    const int count = IsBeyondEnd() ? 0
                      : hasInks
                          ? ReadInks(outRows[0])
                          : ReadOnce(reinterpret_cast<JSAMPARRAY>(const_cast<uint32_t**>(outRows)), inCount);
    if (count == 0)
        fError = Failure();
    for (int row = 0; row < count && !hasInks; ++row)
        quickdraw::HasAvx2() ? ClearWithAvx2(outRows[row], fFacts.width)
                             : ClearSpareBytes(outRows[row], fFacts.width);
    fRow += count;
    return count;
}

} // namespace

OSStatus OpenJpeg(Bytes inBytes, CodecQ inQuality, ImageReaderPtr* outReader)
{
    const JpegLibrary* library = LoadJpegLibrary();
    if (!library)
        return cantOpenHandler;
    auto reader = std::make_unique<JpegReader>(*library);
    const OSStatus error = reader->Open(inBytes, inQuality);
    if (!error)
        *outReader = std::move(reader);
    return error;
}

} // namespace lampblack::images
