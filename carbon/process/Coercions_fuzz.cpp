// Any bytes as any type, coerced to any other: numbers in text, URLs, alias records. The first two bytes
// choose.
#include <Carbon/AEDataModel.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr DescType kTypes[] = { typeChar,   typeUnicodeText, typeUTF8Text, typeBoolean,
                                    typeSInt16, typeUInt32,      typeSInt64,   typeIEEE64BitFloatingPoint,
                                    typeType,   typeEnumerated,  typeFSS,      typeFSRef,
                                    typeAlias,  typeFileURL,     typeAEList };
    constexpr size_t kCount = sizeof kTypes / sizeof kTypes[0];
    if (size < 2)
        return 0;
    AEDesc made;
    AECoercePtr(kTypes[data[0] % kCount], data + 2, static_cast<Size>(size - 2), kTypes[data[1] % kCount],
                &made);
    AEDisposeDesc(&made);
    return 0;
}
