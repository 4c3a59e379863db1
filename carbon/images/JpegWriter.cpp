// Pixels encoded as JPEG, by libjpeg-turbo. As in JpegReader.cpp, every call into the library is made from a
// function of its own that holds nothing to be destroyed.
#include "ImageWriter.h"
#include "Libraries.h"

#include <algorithm>
#include <csetjmp>

namespace lampblack::images {

namespace {

constexpr size_t kFirstBytes = 64 * 1024;

struct State {
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    jpeg_destination_mgr destination;
    std::jmp_buf escape;
    ByteSink* sink;
};

State& StateOf(void* inClientData)
{
    return *static_cast<State*>(inClientData);
}

[[noreturn]] void Escape(j_common_ptr inInfo)
{
    std::longjmp(StateOf(inInfo->client_data).escape, 1);
}

void IgnoreMessage(j_common_ptr) {}

void OfferRoom(State& ioState, size_t inUsed)
{
    ioState.destination.next_output_byte = ioState.sink->Data() + inUsed;
    ioState.destination.free_in_buffer = ioState.sink->Capacity() - inUsed;
}

void BeginOutput(j_compress_ptr ioInfo)
{
    State& state = StateOf(ioInfo->client_data);
    if (!state.sink->Reserve(kFirstBytes))
        Escape(reinterpret_cast<j_common_ptr>(ioInfo));
    OfferRoom(state, 0);
}

// Called when the buffer is full.
boolean GrowOutput(j_compress_ptr ioInfo)
{
    State& state = StateOf(ioInfo->client_data);
    const size_t used = state.sink->Capacity();
    if (!state.sink->Reserve(2 * used))
        Escape(reinterpret_cast<j_common_ptr>(ioInfo));
    OfferRoom(state, used);
    return TRUE;
}

void EndOutput(j_compress_ptr ioInfo)
{
    State& state = StateOf(ioInfo->client_data);
    state.sink->SetSize(state.sink->Capacity() - state.destination.free_in_buffer);
}

class JpegWriter {
public:
    JpegWriter(const JpegLibrary& inLibrary, ByteSink* inSink) : fLibrary(inLibrary) { fState.sink = inSink; }
    ~JpegWriter() { fLibrary.destroyCompress(&fState.info); }
    JpegWriter(const JpegWriter&) = delete;
    JpegWriter& operator=(const JpegWriter&) = delete;

    bool Start(int inWidth, int inHeight, CodecQ);
    bool Write(const uint32_t* inRow);
    bool Finish();

private:
    const JpegLibrary& fLibrary;
    State fState = {};
};

bool JpegWriter::Start(int inWidth, int inHeight, CodecQ inQuality)
{
    jpeg_compress_struct& info = fState.info;
    info.err = fLibrary.stdError(&fState.errors);
    fState.errors.error_exit = Escape;
    fState.errors.output_message = IgnoreMessage;
    info.client_data = &fState;
    if (setjmp(fState.escape))
        return false;
    fLibrary.createCompress(&info, JPEG_LIB_VERSION, sizeof info);
    fState.destination.init_destination = BeginOutput;
    fState.destination.empty_output_buffer = GrowOutput;
    fState.destination.term_destination = EndOutput;
    info.dest = &fState.destination;
    info.image_width = (JDIMENSION)inWidth;
    info.image_height = (JDIMENSION)inHeight;
    info.input_components = 4;
    info.in_color_space = JCS_EXT_BGRX;
    fLibrary.setDefaults(&info);
    fLibrary.setQuality(&info, JpegQualityOf(inQuality), TRUE);
    if (inQuality >= codecHighQuality)
        info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
    info.density_unit = 1; // dots per inch
    info.X_density = info.Y_density = 72;
    fLibrary.startCompress(&info, TRUE);
    return true;
}

bool JpegWriter::Write(const uint32_t* inRow)
{
    if (setjmp(fState.escape))
        return false;
    auto row = reinterpret_cast<JSAMPROW>(const_cast<uint32_t*>(inRow)); // which the library only reads
    return fLibrary.writeScanlines(&fState.info, &row, 1) == 1;
}

bool JpegWriter::Finish()
{
    if (setjmp(fState.escape))
        return false;
    fLibrary.finishCompress(&fState.info);
    return true;
}

} // namespace

int JpegQualityOf(CodecQ inQuality)
{
    const int quality = (int)std::min<CodecQ>(inQuality, codecLosslessQuality);
    return quality <= (int)codecNormalQuality ? 25 + quality * 50 / codecNormalQuality
                                              : 75 + (quality - (int)codecNormalQuality) * 25 / 512;
}

OSStatus EncodeJpeg(PixelRows& ioRows, CodecQ inQuality, ByteSink* outBytes)
{
    const JpegLibrary* library = LoadJpegLibrary();
    if (!library)
        return cantOpenHandler;
    JpegWriter writer(*library, outBytes);
    bool isGood = writer.Start(ioRows.Width(), ioRows.Height(), inQuality);
    for (int row = 0; isGood && row < ioRows.Height(); ++row)
        isGood = writer.Write(ioRows.Row(row));
    return isGood && writer.Finish() ? (OSStatus)noErr : (OSStatus)memFullErr;
}

} // namespace lampblack::images
