// Formats. They are read first, so that the type of each argument is known before the first is taken: with
// positions (%2$@ %1$d) they are not taken in the order in which they are shown.
#include "MacRoman.h"
#include "StringObject.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace lampblack::foundation {
namespace {

constexpr int kMostArguments = 64;
constexpr int kWidest = 65535;

// An argument that is shown in two ways is taken for the later of its kinds.
enum class Kind : uint8_t { None, Int, Long, Double, LongDouble, Pointer };

union Value {
    long integer;
    double number;
    long double longNumber;
    const void* pointer;
};

// A width or a precision: a number, or which argument holds it.
struct Amount {
    bool isThere = false;
    int number = 0;
    int argument = -1;
};

struct Specifier {
    size_t begin = 0, end = 0; // of its characters in the format
    std::string flags;
    Amount width, precision;
    int size = 4; // bytes of an integer argument
    char conversion = 0;
    int argument = -1;
    Kind kind = Kind::None;
};

struct Length {
    std::u16string_view name;
    int size;
};

// Longer names first. 16 is a long double.
constexpr Length kLengths[] = { { u"hh", 1 }, { u"ll", 8 }, { u"h", 2 }, { u"l", 8 }, { u"q", 8 },
                                { u"z", 8 },  { u"t", 8 },  { u"j", 8 }, { u"L", 16 } };

Kind KindOf(char inConversion, int inSize)
{
    if (std::strchr("diuxXoDUOcC", inConversion))
        return inSize == 8 ? Kind::Long : Kind::Int;
    if (std::strchr("fFeEgGaA", inConversion))
        return inSize == 16 ? Kind::LongDouble : Kind::Double;
    return std::strchr("@sSp", inConversion) ? Kind::Pointer : Kind::None;
}

class FormatReader {
public:
    explicit FormatReader(std::u16string_view inFormat) : fFormat(inFormat) {}

    // Those of the format in their order; what is none is left out.
    std::vector<Specifier> Read()
    {
        std::vector<Specifier> all;
        while ((fAt = fFormat.find(u'%', fAt)) != std::u16string_view::npos) {
            const int nextArgument = fNextArgument;
            Specifier specifier;
            specifier.begin = fAt++;
            if (ReadOne(specifier))
                all.push_back(specifier);
            else
                fNextArgument = nextArgument;
        }
        return all;
    }

private:
    char Peek() const { return fAt < fFormat.size() && fFormat[fAt] < 128 ? (char)fFormat[fAt] : 0; }

    bool Take(char inCharacter)
    {
        const bool isThere = Peek() == inCharacter;
        fAt += isThere;
        return isThere;
    }

    int TakeNumber()
    {
        int number = 0;
        for (; Peek() >= '0' && Peek() <= '9'; ++fAt)
            number = std::min(kWidest, number * 10 + (Peek() - '0'));
        return number;
    }

    // The number of an argument from 0 on when the format names it here; else -1.
    int TakePosition()
    {
        const size_t start = fAt;
        const int number = TakeNumber();
        if (number > 0 && Take('$'))
            return number - 1;
        fAt = start;
        return -1;
    }

    Amount TakeAmount()
    {
        if (!Take('*'))
            return { true, TakeNumber(), -1 };
        const int position = TakePosition();
        return { true, 0, position >= 0 ? position : fNextArgument++ };
    }

    int TakeLength()
    {
        for (const Length& length : kLengths)
            if (fFormat.substr(fAt).starts_with(length.name)) {
                fAt += length.name.size();
                return length.size;
            }
        return 4;
    }

    bool ReadOne(Specifier& ioSpecifier)
    {
        ioSpecifier.argument = TakePosition();
        for (; Peek() && std::strchr("-+ #0'", Peek()); ++fAt)
            if (Peek() != '\'')
                ioSpecifier.flags.push_back(Peek());
        if (Peek() == '*' || (Peek() >= '1' && Peek() <= '9'))
            ioSpecifier.width = TakeAmount();
        if (Take('.'))
            ioSpecifier.precision = TakeAmount();
        ioSpecifier.size = TakeLength();
        ioSpecifier.conversion = Peek();
        return Finish(ioSpecifier);
    }

    bool Finish(Specifier& ioSpecifier)
    {
        const bool isPercent = ioSpecifier.conversion == '%';
        ioSpecifier.kind =
            ioSpecifier.conversion ? KindOf(ioSpecifier.conversion, ioSpecifier.size) : Kind::None;
        if (!isPercent && ioSpecifier.kind == Kind::None)
            return false;
        if (!isPercent && ioSpecifier.argument < 0)
            ioSpecifier.argument = fNextArgument++;
        ioSpecifier.end = ++fAt;
        return std::max({ ioSpecifier.argument, ioSpecifier.width.argument,
                          ioSpecifier.precision.argument }) < kMostArguments;
    }

    std::u16string_view fFormat;
    size_t fAt = 0;
    int fNextArgument = 0;
};

// The arguments of a format. One that the format passes over is taken for an int.
class Arguments {
public:
    Arguments(const std::vector<Specifier>& inSpecifiers, va_list inList)
    {
        std::array<Kind, kMostArguments> kinds = {};
        int count = 0;
        const auto note = [&](int argument, Kind kind) {
            if (argument < 0)
                return;
            kinds[(size_t)argument] = std::max(kinds[(size_t)argument], kind);
            count = std::max(count, argument + 1);
        };
        for (const Specifier& specifier : inSpecifiers) {
            note(specifier.width.argument, Kind::Int);
            note(specifier.precision.argument, Kind::Int);
            note(specifier.argument, specifier.kind);
        }
        va_list list;
        va_copy(list, inList);
        for (int i = 0; i < count; ++i)
            switch (kinds[(size_t)i]) {
            case Kind::Long: fValues[(size_t)i].integer = va_arg(list, long); break;
            case Kind::Double: fValues[(size_t)i].number = va_arg(list, double); break;
            case Kind::LongDouble: fValues[(size_t)i].longNumber = va_arg(list, long double); break;
            case Kind::Pointer: fValues[(size_t)i].pointer = va_arg(list, const void*); break;
            default: fValues[(size_t)i].integer = va_arg(list, int);
            }
        va_end(list);
    }

    const Value& operator[](int inArgument) const { return fValues[(size_t)inArgument]; }

private:
    std::array<Value, kMostArguments> fValues = {};
};

// The C locale, in which numbers are written whatever the application has set.
class StPlainNumbers {
public:
    [[nodiscard]] StPlainNumbers() : fSaved(uselocale(Plain())) {}
    ~StPlainNumbers() { uselocale(fSaved); }

private:
    static locale_t Plain()
    {
        static const locale_t plain = newlocale(LC_ALL_MASK, "C", (locale_t)0);
        return plain;
    }

    locale_t fSaved;
};

class Formatter {
public:
    explicit Formatter(const Arguments& inArguments) : fArguments(inArguments) {}

    void Append(std::u16string_view inText) { fText += inText; }
    std::u16string& Text() { return fText; }

    void Append(Specifier inSpecifier)
    {
        Resolve(inSpecifier.width);
        Resolve(inSpecifier.precision);
        if (inSpecifier.width.number < 0)
            inSpecifier.flags += '-';
        inSpecifier.width.number = std::abs(inSpecifier.width.number);
        if (inSpecifier.precision.number < 0)
            inSpecifier.precision = {};
        if (inSpecifier.conversion == '%')
            fText += u'%';
        else if (std::strchr("@sScC", inSpecifier.conversion))
            AppendPadded(inSpecifier, TextOfArgument(inSpecifier));
        else
            AppendNumber(inSpecifier);
    }

private:
    void Resolve(Amount& ioAmount) const
    {
        if (ioAmount.argument >= 0)
            ioAmount.number = (int)std::clamp<long>(fArguments[ioAmount.argument].integer, -kWidest, kWidest);
    }

    static size_t MostOf(const Specifier& inSpecifier)
    {
        return inSpecifier.precision.isThere ? (size_t)inSpecifier.precision.number : std::string::npos;
    }

    std::u16string TextOfArgument(const Specifier& inSpecifier) const
    {
        const Value& value = fArguments[inSpecifier.argument];
        const size_t most = MostOf(inSpecifier);
        switch (inSpecifier.conversion) {
        case 'c': return std::u16string(1, MacRomanToUnicode((UInt8)value.integer));
        case 'C': return std::u16string(1, (char16_t)value.integer);
        case '@': return TextOfObject(value.pointer).substr(0, most);
        case 's': return TextOfBytes((const char*)value.pointer, most);
        default: return TextOfUnits((const char16_t*)value.pointer, most);
        }
    }

    static std::u16string TextOfObject(const void* inReference)
    {
        const Object* object = FindObject(inReference);
        return object ? object->Description() : u"(null)";
    }

    static std::u16string TextOfBytes(const char* inBytes, size_t inMost)
    {
        if (!inBytes)
            return u"(null)";
        std::u16string text;
        for (size_t i = 0; i < inMost && inBytes[i]; ++i)
            text.push_back(MacRomanToUnicode((UInt8)inBytes[i]));
        return text;
    }

    static std::u16string TextOfUnits(const char16_t* inUnits, size_t inMost)
    {
        if (!inUnits)
            return u"(null)";
        std::u16string text;
        for (size_t i = 0; i < inMost && inUnits[i]; ++i)
            text.push_back(inUnits[i]);
        return text;
    }

    void AppendPadded(const Specifier& inSpecifier, std::u16string inText)
    {
        const size_t width = (size_t)inSpecifier.width.number;
        const size_t padding = width - std::min(width, inText.size());
        const bool isLeft = inSpecifier.flags.find('-') != std::string::npos;
        inText.insert(isLeft ? inText.size() : 0, padding, u' ');
        fText += inText;
    }

    // The same specifier for printf, with the length that the value is passed in.
    static std::string PrintfFormat(const Specifier& inSpecifier, const char* inLength, char inConversion)
    {
        std::string format = "%" + inSpecifier.flags;
        if (inSpecifier.width.isThere)
            format += std::to_string(inSpecifier.width.number);
        if (inSpecifier.precision.isThere)
            format += "." + std::to_string(inSpecifier.precision.number);
        return format + inLength + inConversion;
    }

    template <class Number>
    void Print(const std::string& inFormat, Number inNumber)
    {
        const StPlainNumbers plain;
        std::string text(512, 0);
        for (int attempt = 0; attempt < 2; ++attempt) {
            const int length = std::snprintf(text.data(), text.size() + 1, inFormat.c_str(), inNumber);
            const bool fits = length >= 0 && (size_t)length <= text.size();
            text.resize((size_t)std::max(length, 0));
            if (fits)
                break;
        }
        fText.append(text.begin(), text.end());
    }

    // The value as wide as its argument was said to be.
    static long Narrowed(long inValue, int inSize, bool inSigned)
    {
        switch (inSize) {
        case 1: return inSigned ? (long)(SInt8)inValue : (long)(UInt8)inValue;
        case 2: return inSigned ? (long)(SInt16)inValue : (long)(UInt16)inValue;
        case 8: return inValue;
        default: return inSigned ? (long)(SInt32)inValue : (long)(UInt32)inValue;
        }
    }

    void AppendNumber(const Specifier& inSpecifier)
    {
        const Value& value = fArguments[inSpecifier.argument];
        if (inSpecifier.kind == Kind::Double)
            return Print(PrintfFormat(inSpecifier, "", inSpecifier.conversion), value.number);
        if (inSpecifier.kind == Kind::LongDouble)
            return Print(PrintfFormat(inSpecifier, "L", inSpecifier.conversion), value.longNumber);
        if (inSpecifier.kind == Kind::Pointer) {
            fText += u"0x";
            return Print("%lx", (unsigned long)value.pointer);
        }
        const char conversion = inSpecifier.conversion;
        const char plain = conversion == 'D'   ? 'd'
                           : conversion == 'U' ? 'u'
                           : conversion == 'O' ? 'o'
                                               : conversion;
        const bool isSigned = plain == 'd' || plain == 'i';
        Print(PrintfFormat(inSpecifier, "l", plain), Narrowed(value.integer, inSpecifier.size, isSigned));
    }

    const Arguments& fArguments;
    std::u16string fText;
};

} // namespace

std::u16string Format(std::u16string_view inFormat, va_list inArguments)
{
    const std::vector<Specifier> specifiers = FormatReader(inFormat).Read();
    const Arguments arguments(specifiers, inArguments);
    Formatter formatter(arguments);
    size_t shown = 0;
    for (const Specifier& specifier : specifiers) {
        formatter.Append(inFormat.substr(shown, specifier.begin - shown));
        formatter.Append(specifier);
        shown = specifier.end;
    }
    formatter.Append(inFormat.substr(shown));
    return std::move(formatter.Text());
}

} // namespace lampblack::foundation
