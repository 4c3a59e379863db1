// Any bytes as MacBinary, their check sum put right so that the reader goes on behind it; read, and written
// in every form.
#include "ContainerRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::files;
    ReadContainer({ inData, inSize });
    std::vector<uint8_t> bytes(inData, inData + inSize);
    if (bytes.size() < 128)
        return 0;
    const uint16_t sum = Crc16({ bytes.data(), 124 });
    bytes[124] = (uint8_t)(sum >> 8);
    bytes[125] = (uint8_t)sum;
    const Container container = ReadContainer(bytes);
    if (container.form == Form::MacBinary)
        CheckEveryForm(container);
    return 0;
}
