// Coercions of data without a machine around them. Numbers, texts, points and rectangles go the way of event
// parameters; here is what descriptors have besides: codes, truth values, and numbers as text.
#include "DescriptorCoercions.h"

#include "events/Coercions.h"
#include "foundation/BigEndian.h"
#include "foundation/MacRoman.h"

#include <array>
#include <charconv>
#include <cstring>

namespace lampblack::process {

namespace {

constexpr DescType kTexts[] = { typeChar, typeUnicodeText, typeUTF8Text };
constexpr DescType kCodes[] = { typeType, typeEnumerated, typeKeyword, typeProperty, typeApplSignature };
constexpr DescType kReals[] = { typeIEEE32BitFloatingPoint, typeIEEE64BitFloatingPoint };
constexpr DescType kIntegers[] = { typeSInt16, typeUInt16, typeSInt32, typeUInt32, typeSInt64, typeUInt64 };

template <size_t kCount>
bool IsIn(const DescType (&inTypes)[kCount], DescType inType)
{
    for (const DescType type : inTypes)
        if (type == inType)
            return true;
    return false;
}

bool IsNumber(DescType inType)
{
    return inType == typeBoolean || IsIn(kIntegers, inType) || IsIn(kReals, inType);
}

template <class Value>
Typed Data(DescType inType, const Value& inValue)
{
    return DataOf(inType, { reinterpret_cast<const char*>(&inValue), sizeof inValue });
}

template <class Value>
bool Read(const Typed& inValue, Value* outValue)
{
    if (inValue.Bytes().size() != sizeof *outValue)
        return false;
    std::memcpy(outValue, inValue.Bytes().data(), sizeof *outValue);
    return true;
}

// As event parameters are coerced.
OSErr CoerceParameter(const Typed& inValue, DescType inTo, Typed* outValue)
{
    const std::string_view bytes = inValue.Bytes();
    const events::Found found = { inValue.type, reinterpret_cast<const UInt8*>(bytes.data()), bytes.size() };
    size_t size = 0;
    if (events::Coerce(found, inTo, 0, nullptr, &size) != noErr)
        return errAECoercionFail;
    std::string made(size, '\0');
    if (events::Coerce(found, inTo, size, made.data(), &size) != noErr)
        return errAECoercionFail;
    *outValue = DataOf(inTo, made);
    return noErr;
}

template <class Value>
std::string Printed(Value inValue)
{
    std::array<char, 64> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), inValue).ptr;
    return std::string(text.data(), end);
}

// A number's text, digits and ASCII signs only, so that it is Mac Roman and UTF-8 at once.
bool TextOfNumber(const Typed& inNumber, std::string* outText)
{
    Typed wide;
    Boolean truth = 0;
    SInt64 integer = 0;
    UInt64 natural = 0;
    double real = 0;
    if (inNumber.type == typeBoolean) {
        if (!Read(inNumber, &truth))
            return false;
        *outText = truth ? "true" : "false";
    } else if (IsIn(kReals, inNumber.type)) {
        if (CoerceParameter(inNumber, typeIEEE64BitFloatingPoint, &wide) != noErr || !Read(wide, &real))
            return false;
        *outText = Printed(real);
    } else if (CoerceParameter(inNumber, typeSInt64, &wide) == noErr && Read(wide, &integer)) {
        *outText = Printed(integer);
    } else if (CoerceParameter(inNumber, typeUInt64, &wide) == noErr && Read(wide, &natural)) {
        *outText = Printed(natural);
    } else {
        return false;
    }
    return true;
}

template <class Value>
bool Parse(std::string_view inText, DescType inType, Typed* outNumber)
{
    Value value{};
    const char* end = inText.data() + inText.size();
    const auto [stopped, error] = std::from_chars(inText.data(), end, value);
    if (error != std::errc() || stopped != end)
        return false;
    *outNumber = Data(inType, value);
    return true;
}

// The number that a text is, in the first type that holds it; spaces around it do not count.
bool NumberOfText(std::string_view inText, Typed* outNumber)
{
    const size_t first = inText.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return false;
    inText = inText.substr(first, inText.find_last_not_of(" \t\r\n") + 1 - first);
    if (inText == "true" || inText == "false") {
        *outNumber = Data(typeBoolean, Boolean{ inText == "true" });
        return true;
    }
    if (inText[0] == '+' && !inText.starts_with("+-"))
        inText.remove_prefix(1);
    if (inText.find_first_not_of("0123456789+-.eE") != std::string_view::npos)
        return false; // the words for what is no number
    return Parse<SInt64>(inText, typeSInt64, outNumber) || Parse<UInt64>(inText, typeUInt64, outNumber) ||
           Parse<double>(inText, typeIEEE64BitFloatingPoint, outNumber);
}

OSErr CoerceText(const Typed& inText, DescType inTo, Typed* outValue)
{
    Typed utf8 = inText;
    if (inText.type != typeUTF8Text && CoerceParameter(inText, typeUTF8Text, &utf8) != noErr)
        return errAECoercionFail;
    if (IsIn(kCodes, inTo)) {
        const std::string roman = foundation::MacRomanFromUtf8(utf8.Bytes());
        if (roman.size() != sizeof(OSType))
            return errAECoercionFail;
        *outValue = Data(inTo, foundation::LoadBE32(reinterpret_cast<const uint8_t*>(roman.data())));
        return noErr;
    }
    Typed number;
    if (!IsNumber(inTo) || !NumberOfText(utf8.Bytes(), &number))
        return errAECoercionFail;
    return CoerceParameter(number, inTo, outValue);
}

OSErr TextOf(std::string_view inUtf8, DescType inTo, Typed* outValue)
{
    return CoerceParameter(DataOf(typeUTF8Text, inUtf8), inTo, outValue);
}

OSErr CoerceCode(const Typed& inCode, DescType inTo, Typed* outValue)
{
    OSType code = 0;
    if (!Read(inCode, &code))
        return errAECoercionFail;
    if (inTo == typeBoolean && inCode.type == typeEnumerated && (code == typeTrue || code == typeFalse)) {
        *outValue = Data(inTo, Boolean{ code == typeTrue });
        return noErr;
    }
    if (IsIn(kTexts, inTo)) {
        const char text[] = { static_cast<char>(code >> 24), static_cast<char>(code >> 16),
                              static_cast<char>(code >> 8), static_cast<char>(code) };
        return TextOf(foundation::Utf8FromMacRoman({ text, sizeof text }), inTo, outValue);
    }
    if (!IsIn(kCodes, inTo) && !IsIn(kIntegers, inTo))
        return errAECoercionFail;
    const Typed number = Data(typeUInt32, code);
    if (IsIn(kIntegers, inTo) && inTo != typeUInt32)
        return CoerceParameter(number, inTo, outValue);
    *outValue = { inTo, number.value };
    return noErr;
}

OSErr CoerceNumber(const Typed& inNumber, DescType inTo, Typed* outValue)
{
    std::string text;
    if (IsIn(kTexts, inTo))
        return TextOfNumber(inNumber, &text) ? TextOf(text, inTo, outValue) : OSErr{ errAECoercionFail };
    Boolean truth = 0;
    const bool isTruth = inNumber.type == typeBoolean && Read(inNumber, &truth);
    const DescType named = truth ? typeTrue : typeFalse;
    if (isTruth && inTo == typeEnumerated) {
        *outValue = Data(inTo, OSType{ named });
        return noErr;
    }
    if (isTruth && inTo == named) {
        *outValue = { inTo, nullptr };
        return noErr;
    }
    if (IsIn(kCodes, inTo) && IsIn(kIntegers, inNumber.type)) {
        Typed code;
        const OSErr err = CoerceParameter(inNumber, typeUInt32, &code);
        if (err == noErr)
            *outValue = { inTo, code.value };
        return err;
    }
    return IsNumber(inTo) ? CoerceParameter(inNumber, inTo, outValue) : OSErr{ errAECoercionFail };
}

} // namespace

bool IsDataType(DescType inType)
{
    return IsNumber(inType) || IsIn(kTexts, inType) || IsIn(kCodes, inType) || inType == typeTrue ||
           inType == typeFalse || inType == typeNull;
}

OSErr CoerceData(const Typed& inValue, DescType inTo, Typed* outValue)
{
    if (inValue.type == typeTrue || inValue.type == typeFalse) {
        const Typed truth = Data(typeBoolean, Boolean{ inValue.type == typeTrue });
        return inTo == typeBoolean ? (*outValue = truth, OSErr{ noErr })
                                   : CoerceNumber(truth, inTo, outValue);
    }
    if (IsIn(kCodes, inValue.type))
        return CoerceCode(inValue, inTo, outValue);
    if (IsIn(kTexts, inValue.type) && !IsIn(kTexts, inTo))
        return CoerceText(inValue, inTo, outValue);
    if (IsNumber(inValue.type))
        return CoerceNumber(inValue, inTo, outValue);
    return CoerceParameter(inValue, inTo, outValue);
}

} // namespace lampblack::process
