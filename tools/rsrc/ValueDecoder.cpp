#include "ValueDecoder.h"

#include "Expression.h"
#include "MacText.h"
#include "NumberText.h"

#include <algorithm>
#include <cstdio>

namespace lampblack::rsrc {

namespace {

using Kind = Field::Kind;
using Form = Field::Form;

constexpr size_t kMostValues = 400'000;
constexpr uint64_t kLongestTail = 512; // bits behind an array that can be its end
constexpr size_t kHexBytesPerLine = 32;

uint64_t Mask(int inBits)
{
    return ((uint64_t)1 << inBits) - 1;
}

std::string Hex(uint64_t inValue)
{
    char text[24];
    std::snprintf(text, sizeof text, "0x%llX", (unsigned long long)inValue);
    return text;
}

} // namespace

std::vector<ShownValue> ValueDecoder::Decode(const Fields& inFields)
{
    fLayout = std::make_unique<Layout>(inFields, fFacts);
    Values values;
    Every(inFields, &values);
    if (fAt != fEnd)
        Fail("the type has no more fields");
    return values;
}

void ValueDecoder::Fail(const std::string& inMessage) const
{
    throw DecodeError("at byte " + std::to_string(fAt / 8) + " of " + std::to_string(fEnd / 8) + ": " +
                      inMessage);
}

void ValueDecoder::Every(Rest inFields, Values* ioValues)
{
    for (size_t i = 0; i < inFields.size(); ++i) {
        if (!inFields[i].label.empty())
            fLayout->Mark(inFields[i].label, fAt);
        One(inFields[i], inFields.subspan(i + 1), ioValues);
    }
}

void ValueDecoder::One(const Field& inField, Rest inBehind, Values* ioValues)
{
    switch (inField.kind) {
    case Kind::Fill: return Skip((uint64_t)inField.bits * (uint64_t)inField.count);
    case Kind::Align: return Align(inField);
    case Kind::Label: return;
    case Kind::Array: return Array(inField, inBehind, ioValues);
    case Kind::Switch: return Switch(inField, ioValues);
    case Kind::Optional:
        if (fAt != fEnd)
            Every(inField.fields, ioValues);
        return;
    default: break;
    }
    if (!inField.fixed.empty())
        return Fixed(inField);
    ShownValue value;
    if (inField.kind == Kind::String)
        value.lines = String(inField);
    else
        value.lines = { Value(inField, &value.explains) };
    Add(inField, std::move(value), ioValues);
}

void ValueDecoder::Add(const Field& inField, ShownValue inValue, Values* ioValues)
{
    if (++fCount > kMostValues)
        Fail("more values than a description should hold");
    inValue.label = inField.name.empty() ? inField.label : inField.name;
    ioValues->push_back(std::move(inValue));
}

uint64_t ValueDecoder::Take(int inBits)
{
    if ((uint64_t)inBits > fEnd - fAt)
        Fail("the data end within a field");
    const uint64_t value = BitsAt(fBytes, fAt, inBits);
    fAt += (uint64_t)inBits;
    return value;
}

void ValueDecoder::Skip(uint64_t inBits)
{
    if (inBits > fEnd - fAt)
        Fail("the data end within a field");
    fAt += inBits;
}

void ValueDecoder::Align(const Field& inField)
{
    const uint64_t unit = (uint64_t)inField.bits;
    Skip((unit - fAt % unit) % unit);
}

uint64_t ValueDecoder::TakeNumber(const Field& inField)
{
    const uint64_t at = fAt;
    const uint64_t raw = Take(inField.bits);
    if (!inField.native || inField.bits % 8 != 0)
        return raw;
    fNatives.push_back({ at, inField.bits });
    return fNativeIsBig ? raw : SwapBytes(raw, inField.bits);
}

// A value that the statement does not give: it tells how long an array is, or must be what the type says, or
// is made again when the statement is compiled.
void ValueDecoder::Fixed(const Field& inField)
{
    if (inField.kind == Kind::String) {
        TakeText(inField);
        return;
    }
    if (inField.kind != Kind::Number)
        return Skip(inField.kind == Kind::Character ? 8 : inField.kind == Kind::Point ? 32 : 64);
    const uint64_t raw = TakeNumber(inField);
    const bool counts = std::any_of(inField.fixed.begin(), inField.fixed.end(), [](const Token& token) {
        return token.kind == Token::Kind::Function && SameWord(token.text, "CountOf");
    });
    if (counts)
        return SolveCount(inField, raw);
    const bool isPlain = std::none_of(inField.fixed.begin(), inField.fixed.end(), [](const Token& token) {
        return token.kind == Token::Kind::Function || token.kind == Token::Kind::Identifier;
    });
    if (!isPlain)
        return;
    const std::optional<int64_t> value = Evaluate(inField, inField.fixed, nullptr);
    if (value && ((uint64_t)*value & Mask(inField.bits)) != raw) {
        fAt -= (uint64_t)inField.bits;
        Fail("the type demands " + std::to_string(*value) + ", not " + Hex(raw));
    }
}

// The expression grows by the same with each element: two trials tell how many there are.
void ValueDecoder::SolveCount(const Field& inField, uint64_t inRaw)
{
    const int64_t none = 0, one = 1;
    const std::optional<int64_t> base = Evaluate(inField, inField.fixed, &none);
    const std::optional<int64_t> next = Evaluate(inField, inField.fixed, &one);
    if (!base || !next || *base == *next)
        return;
    const int64_t step = *next - *base;
    const int64_t value = (int64_t)inRaw, wrapped = value - (int64_t)1 * ((int64_t)1 << inField.bits);
    std::optional<int64_t> count;
    for (const int64_t candidate : { wrapped, value }) {
        const int64_t elements = (candidate - *base) / step;
        if (elements >= 0 && elements * step == candidate - *base && (!count || elements < *count))
            count = elements;
    }
    if (!count)
        Fail("this number of elements is impossible");
    for (size_t i = 0; i + 2 < inField.fixed.size(); ++i)
        if (inField.fixed[i].kind == Token::Kind::Function && SameWord(inField.fixed[i].text, "CountOf"))
            fLayout->SetCount(inField.fixed[i + 2].text, *count);
}

// A trial is what every $$CountOf answers.
std::optional<int64_t> ValueDecoder::Evaluate(const Field& inField, const std::vector<Token>& inTokens,
                                              const int64_t* inTrial) const
{
    TokenCursor tokens(inTokens, inField.place);
    const NameResolver resolve = [&](const Token& inName,
                                     TokenCursor& ioArguments) -> std::optional<int64_t> {
        if (const Constant* constant = FindConstant(inField, inName.text))
            return constant->value;
        if (fNames && fNames->contains(inName.text))
            return fNames->at(inName.text);
        if (!inTrial || !SameWord(inName.text, "CountOf"))
            return fLayout->Resolve(inName, ioArguments, fLayout->Here(), fBytes);
        ioArguments.Expect('(', "'('");
        ioArguments.Next();
        ioArguments.Expect(')', "')'");
        return *inTrial;
    };
    try {
        return ReadExpression(tokens, resolve, "a number");
    } catch (const RezError&) {
        return std::nullopt; // it asks for what is not known here
    }
}

std::optional<int64_t> ValueDecoder::CountOf(const Field& inField)
{
    if (inField.countTokens.empty())
        return inField.count > 0 ? std::optional(inField.count) : std::nullopt;
    const std::optional<int64_t> count = Evaluate(inField, inField.countTokens, nullptr);
    if (!count || *count < 0)
        Fail("the size of this field cannot be told");
    return count;
}

void ValueDecoder::Array(const Field& inField, Rest inBehind, Values* ioValues)
{
    std::optional<int64_t> count = CountOf(inField);
    if (!count)
        count = fLayout->CountOf(inField);
    ShownValue value;
    value.kind = ShownValue::Kind::Array;
    value.explains = false;
    fLayout->BeginArray(inField);
    for (int64_t i = 0; count ? i < *count : !EndsHere(inBehind); ++i) {
        const uint64_t start = fAt;
        fLayout->NextElement();
        value.elements.emplace_back();
        Every(inField.fields, &value.elements.back());
        if (!count && fAt == start)
            Fail("this array has no end");
        if (++fCount > kMostValues)
            Fail("more values than a description should hold");
    }
    fLayout->EndArray();
    fLayout->SetCount(inField, (int64_t)value.elements.size());
    Add(inField, std::move(value), ioValues);
}

// Whether an array without a count ends: at the end of the data, or where all that follows is what the type
// puts behind the array by itself.
bool ValueDecoder::EndsHere(Rest inBehind)
{
    if (fAt == fEnd)
        return true;
    const bool isSilent = std::all_of(inBehind.begin(), inBehind.end(), IsSilent);
    if (inBehind.empty() || !isSilent || fEnd - fAt > kLongestTail)
        return false;
    const uint64_t start = fAt;
    const size_t natives = fNatives.size();
    Values none;
    bool ends = false;
    try {
        Every(inBehind, &none);
        ends = fAt == fEnd;
    } catch (const DecodeError&) {
    }
    fAt = start;
    fNatives.resize(natives);
    return ends;
}

void ValueDecoder::Switch(const Field& inField, Values* ioValues)
{
    const auto found = std::find_if(inField.cases.begin(), inField.cases.end(),
                                    [this](const Case& one) { return KeysMatch(one); });
    if (found == inField.cases.end())
        Fail("no case of the type fits");
    ShownValue value;
    value.kind = ShownValue::Kind::Case;
    value.lines = { found->name };
    value.elements.emplace_back();
    Every(found->fields, &value.elements.back());
    Add(inField, std::move(value), ioValues);
}

// Looks at the keys that lie at fixed places.
bool ValueDecoder::KeysMatch(const Case& inCase) const
{
    uint64_t at = fAt;
    for (const Field& field : inCase.fields) {
        const uint64_t size =
            field.kind == Kind::Fill ? (uint64_t)field.bits * (uint64_t)field.count : (uint64_t)field.bits;
        const bool isFixedSize = field.kind != Kind::String && field.kind != Kind::Array &&
                                 field.kind != Kind::Switch && field.kind != Kind::Optional &&
                                 field.kind != Kind::Align;
        if (!isFixedSize || size > fEnd - at)
            return !std::any_of(&field, inCase.fields.data() + inCase.fields.size(),
                                [](const Field& behind) { return behind.isKey; });
        if (field.isKey && field.kind == Kind::Number) {
            uint64_t raw = BitsAt(fBytes, at, field.bits);
            if (field.native && !fNativeIsBig && field.bits % 8 == 0)
                raw = SwapBytes(raw, field.bits);
            const std::optional<int64_t> key = Evaluate(field, field.fixed, nullptr);
            if (!key || ((uint64_t)*key & Mask(field.bits)) != raw)
                return false;
        }
        at += size;
    }
    return true;
}

std::string ValueDecoder::Value(const Field& inField, bool* outExplains)
{
    *outExplains = false;
    switch (inField.kind) {
    case Kind::Number: return NumberText(inField, TakeNumber(inField), outExplains);
    case Kind::Character: return Character(inField, outExplains);
    case Kind::Point: return Numbers(inField, 2);
    default: return Numbers(inField, 4);
    }
}

std::string ValueDecoder::Character(const Field& inField, bool* outExplains)
{
    const char byte = (char)Take(8);
    for (const Constant& constant : inField.constants)
        if (constant.text == std::string_view(&byte, byte ? 1 : 0)) {
            *outExplains = true;
            return constant.name;
        }
    return QuotedText({ &byte, 1 });
}

std::string ValueDecoder::Numbers(const Field& inField, int inCount)
{
    Field part;
    part.bits = 16;
    part.native = inField.native;
    std::string text;
    for (int i = 0; i < inCount; ++i)
        text += (i ? ", " : "{ ") + std::to_string((int16_t)TakeNumber(part));
    return text + " }";
}

std::vector<std::string> ValueDecoder::String(const Field& inField)
{
    const std::string_view text = TakeText(inField);
    for (const Constant& constant : inField.constants)
        if (constant.text == text)
            return { constant.name };
    if (inField.look != Field::Look::Hex)
        return QuotedLines(text);
    if (text.empty())
        return { "\"\"" };
    return HexLines({ (const uint8_t*)text.data(), text.size() }, kHexBytesPerLine);
}

// The text alone, without its length or what fills up its place.
std::string_view ValueDecoder::TakeText(const Field& inField)
{
    if (fAt % 8 != 0)
        Fail("a string that does not begin at a whole byte");
    const std::optional<int64_t> size = CountOf(inField);
    const size_t prefix = inField.form == Form::Pascal ? 1 : inField.form == Form::Word ? 2 : 0;
    size_t length = prefix ? (size_t)Take((int)prefix * 8) : 0;
    const std::string_view left((const char*)fBytes.data() + fAt / 8, (size_t)(fEnd - fAt) / 8);
    const size_t room = size ? (size_t)*size : left.size();
    if (room > left.size() || length > room)
        Fail("a string that ends behind the data");
    size_t taken = size ? room : length;
    if (inField.form == Form::C) {
        length = left.substr(0, room).find('\0');
        if (length == std::string_view::npos && !(size && room == 0))
            Fail("a string without an end");
        length = std::min(length, room);
        taken = size ? room : length + 1;
    } else if (inField.form == Form::Plain) {
        length = taken = room;
        while (size && inField.look != Field::Look::Hex && length > 0 && left[length - 1] == '\0')
            --length;
    }
    Skip((uint64_t)taken * 8);
    return left.substr(0, length);
}

} // namespace lampblack::rsrc
