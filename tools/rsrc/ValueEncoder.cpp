#include "ValueEncoder.h"

#include <foundation/MacRoman.h>

#include <algorithm>

namespace lampblack::rsrc {

namespace {

using Kind = Field::Kind;
using Form = Field::Form;

constexpr uint64_t kMostBits = 8ull << 24; // the format holds no more data than 16 MB

std::string TypeText(OSType inType)
{
    const char code[] = { (char)(inType >> 24), (char)(inType >> 16), (char)(inType >> 8), (char)inType };
    return "'" + foundation::Utf8FromMacRoman({ code, 4 }) + "'";
}

const char* NounOf(const Field& inField)
{
    switch (inField.kind) {
    case Kind::Number: return inField.bits == 1 ? "a boolean" : "a number";
    case Kind::Character: return "a character";
    case Kind::String: return "a string";
    case Kind::Point: return "a point { v, h }";
    case Kind::Rect: return "a rectangle { top, left, bottom, right }";
    case Kind::Array: return "an array { ... }";
    case Kind::Switch: return "one of the cases";
    default: return "a value";
    }
}

std::string NamesOf(const Field& inField)
{
    constexpr size_t kMostNames = 8;
    std::string names;
    const size_t count = inField.kind == Kind::Switch ? inField.cases.size() : inField.constants.size();
    for (size_t i = 0; i < std::min(count, kMostNames); ++i)
        names += (i ? ", " : "") +
                 (inField.kind == Kind::Switch ? inField.cases[i].name : inField.constants[i].name);
    return names + (count > kMostNames ? ", ..." : "");
}

} // namespace

std::vector<uint8_t> ValueEncoder::Encode(const Fields& inFields)
{
    fLayout = std::make_unique<Layout>(inFields, fContext.facts);
    Every(inFields);
    Finish();
    if (!AtClosing())
        fTokens.Fail(fNeedSeparator ? "'}', since " + TypeText(fContext.facts.type) + " has no more values"
                                    : "'}'");
    while (!fTokens.Peek().Is('}'))
        fTokens.Next(); // a separator behind the last value
    fSize = fWriter.Data().size();
    return std::move(fWriter.Data());
}

std::vector<uint8_t> ValueEncoder::FillMask() const
{
    std::vector<uint8_t> mask(fSize);
    for (const auto& [at, length] : fFilled)
        for (uint64_t bit = at; bit < at + length && bit / 8 < fSize; ++bit)
            mask[bit / 8] |= (uint8_t)(0x80 >> bit % 8);
    return mask;
}

void ValueEncoder::FillUp(uint64_t inBits)
{
    if (inBits > 0)
        fFilled.emplace_back(fWriter.Bits(), inBits);
    fWriter.Zeros(inBits);
}

void ValueEncoder::Every(const Fields& inFields)
{
    for (const Field& field : inFields) {
        if (!field.label.empty())
            fLayout->Mark(field.label, fWriter.Bits());
        One(field);
        CheckSize(fTokens.Peek().place);
    }
}

void ValueEncoder::One(const Field& inField)
{
    switch (inField.kind) {
    case Kind::Fill: return Fill(inField);
    case Kind::Align: return Align(inField);
    case Kind::Optional: return Optional(inField);
    case Kind::Array: return Array(inField);
    case Kind::Switch: return Switch(inField);
    case Kind::Label: return;
    default: break;
    }
    if (!inField.fixed.empty())
        return FixedValue(inField);
    BeginValue(inField);
    Value(inField, fTokens);
    fNeedSeparator = true;
}

void ValueEncoder::Fill(const Field& inField)
{
    if (fWriter.Bits() + (uint64_t)inField.bits * (uint64_t)inField.count > kMostBits)
        throw RezError(inField.place, "the resource is larger than 16 MB");
    FillUp((uint64_t)inField.bits * (uint64_t)inField.count);
}

void ValueEncoder::Align(const Field& inField)
{
    const uint64_t unit = (uint64_t)inField.bits;
    FillUp((unit - fWriter.Bits() % unit) % unit);
}

bool ValueEncoder::DependsOnLayout(const Field& inField) const
{
    return std::any_of(inField.fixed.begin(), inField.fixed.end(), [&](const Token& token) {
        const bool isName = token.kind == Token::Kind::Identifier && !FindConstant(inField, token.text) &&
                            !(fContext.names && fContext.names->contains(token.text));
        return isName || token.kind == Token::Kind::Function;
    });
}

void ValueEncoder::FixedValue(const Field& inField)
{
    if (inField.kind == Kind::Number && DependsOnLayout(inField)) {
        fPending.push_back({ fWriter.Bits(), &inField, fLayout->Here() });
        return fWriter.Zeros((uint64_t)inField.bits);
    }
    TokenCursor tokens(inField.fixed, inField.place);
    const bool needSeparator = fNeedSeparator;
    Value(inField, tokens);
    fNeedSeparator = needSeparator;
    if (!tokens.AtEnd())
        tokens.Fail("';' after the value");
}

void ValueEncoder::Value(const Field& inField, TokenCursor& ioTokens)
{
    switch (inField.kind) {
    case Kind::Number: return Number(inField, ioTokens);
    case Kind::Character: return Character(inField, ioTokens);
    case Kind::String: return String(inField, ioTokens);
    case Kind::Point: return Numbers(inField, 2, ioTokens);
    default: return Numbers(inField, 4, ioTokens);
    }
}

void ValueEncoder::Number(const Field& inField, TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    const uint64_t value = Checked(inField, Evaluate(inField, ioTokens, nullptr), place);
    fWriter.Append(InOrder(inField, value), inField.bits);
}

uint64_t ValueEncoder::InOrder(const Field& inField, uint64_t inValue) const
{
    const bool isLittle = inField.native && !fContext.nativeIsBig && inField.bits % 8 == 0;
    return isLittle ? SwapBytes(inValue, inField.bits) : inValue;
}

// With a path, labels and $$Functions have values: those of that place.
int64_t ValueEncoder::Evaluate(const Field& inField, TokenCursor& ioTokens, const ArrayPath* inPath)
{
    const NameResolver resolve = [&](const Token& inName,
                                     TokenCursor& ioArguments) -> std::optional<int64_t> {
        if (inName.kind == Token::Kind::Function)
            return inPath ? fLayout->Resolve(inName, ioArguments, *inPath, fWriter.Data()) : std::nullopt;
        if (const Constant* constant = FindConstant(inField, inName.text))
            return constant->value;
        if (inName.IsWord("true") || inName.IsWord("false"))
            return inName.IsWord("true");
        if (fContext.names && fContext.names->contains(inName.text))
            return fContext.names->at(inName.text);
        return inPath ? fLayout->Resolve(inName, ioArguments, *inPath, fWriter.Data()) : std::nullopt;
    };
    return ReadExpression(ioTokens, resolve, Describe(inField));
}

// Of the bytes of a string or the elements of an array, when the type fixes it.
std::optional<int64_t> ValueEncoder::CountOf(const Field& inField)
{
    if (inField.countTokens.empty())
        return inField.count > 0 ? std::optional(inField.count) : std::nullopt;
    TokenCursor tokens(inField.countTokens, inField.place);
    const int64_t count = Evaluate(inField, tokens, &fLayout->Here());
    if (count < 0 || (uint64_t)count > kMostBits / 8)
        throw RezError(inField.place, "the size of this field is " + std::to_string(count));
    return count;
}

uint64_t ValueEncoder::Checked(const Field& inField, int64_t inValue, Place inPlace) const
{
    const int64_t above = (int64_t)1 << inField.bits;
    if (inValue >= above || inValue < -(above / 2))
        throw RezError(inPlace, "the number " + std::to_string(inValue) + " does not fit into " +
                                    std::to_string(inField.bits) + (inField.bits == 1 ? " bit" : " bits"));
    return (uint64_t)inValue & (uint64_t)(above - 1);
}

void ValueEncoder::Character(const Field& inField, TokenCursor& ioTokens)
{
    const Token token = ioTokens.Peek();
    std::string text;
    if (token.kind == Token::Kind::String) {
        text = ioTokens.Next().text;
    } else if (const Constant* constant = FindConstant(inField, token.text);
               constant && token.IsWord(constant->name)) {
        ioTokens.Next();
        text = constant->text;
    } else {
        fWriter.Append(Checked(inField, Evaluate(inField, ioTokens, nullptr), token.place), 8);
        return;
    }
    if (text.size() > 1)
        throw RezError(token.place, "expected one character, found " + std::to_string(text.size()));
    fWriter.Append(text.empty() ? 0 : (uint8_t)text[0], 8);
}

std::string ValueEncoder::ReadText(const Field& inField, TokenCursor& ioTokens)
{
    std::string text;
    bool isEmpty = true;
    for (;; isEmpty = false) {
        const Token& token = ioTokens.Peek();
        const Constant* constant = FindConstant(inField, token.text);
        if (constant && token.IsWord(constant->name)) {
            text += constant->text;
            ioTokens.Next();
        } else if (token.kind == Token::Kind::String) {
            text += ioTokens.Next().text;
        } else if (token.kind == Token::Kind::Function && fContext.text) {
            const Token name = ioTokens.Next();
            const std::optional<std::string> value = fContext.text(name, ioTokens);
            if (!value)
                throw RezError(name.place,
                               "expected " + Describe(inField) + ", found " + DescribeToken(name));
            text += *value;
        } else {
            break;
        }
    }
    if (isEmpty)
        ioTokens.Fail(Describe(inField));
    return text;
}

void ValueEncoder::String(const Field& inField, TokenCursor& ioTokens)
{
    NeedByte(inField);
    const Place place = ioTokens.Peek().place;
    const std::string text = ReadText(inField, ioTokens);
    const std::optional<int64_t> size = CountOf(inField);
    size_t most = inField.form == Form::Pascal ? 255 : inField.form == Form::Word ? 0xFFFF : SIZE_MAX;
    if (size)
        most = std::min(most, (size_t)*size - (inField.form == Form::C && *size > 0));
    if (text.size() > most)
        throw RezError(place, "this string has " + std::to_string(text.size()) + " bytes; " +
                                  std::to_string(most) + " fit");
    if (inField.form == Form::Pascal || inField.form == Form::Word)
        fWriter.Append(text.size(), inField.form == Form::Pascal ? 8 : 16);
    fWriter.AppendBytes(text);
    if (size)
        FillUp(8 * ((size_t)*size - text.size()));
    else if (inField.form == Form::C)
        fWriter.Zeros(8);
}

void ValueEncoder::Numbers(const Field& inField, int inCount, TokenCursor& ioTokens)
{
    Field part;
    part.bits = 16;
    part.label = inField.label;
    part.native = inField.native;
    OpenBrace(ioTokens, Describe(inField));
    for (int i = 0; i < inCount; ++i) {
        if (i > 0)
            ioTokens.Expect(',', "',' and " + std::to_string(inCount - i) + " more number" +
                                     (inCount - i > 1 ? "s" : "") + " of " + NounOf(inField));
        Number(part, ioTokens);
    }
    fNeedSeparator = true;
    ioTokens.Expect('}', "'}' at the end of " + std::string(NounOf(inField)));
}

void ValueEncoder::Array(const Field& inField)
{
    BeginValue(inField);
    const Place place = fTokens.Peek().place;
    const std::optional<int64_t> expected = CountOf(inField);
    OpenBrace(fTokens, Describe(inField));
    fLayout->BeginArray(inField);
    const int64_t count = Elements(inField);
    fLayout->EndArray();
    CloseBrace(fTokens);
    fLayout->SetCount(inField, count);
    if (expected && *expected != count)
        throw RezError(place,
                       "expected " + std::to_string(*expected) + " elements, found " + std::to_string(count));
}

int64_t ValueEncoder::Elements(const Field& inField)
{
    int64_t count = 0;
    for (; !AtClosing(); ++count) {
        if (fTokens.AtEnd())
            fTokens.Fail("'}' at the end of the array");
        fLayout->NextElement();
        Every(inField.fields);
    }
    return count;
}

void ValueEncoder::Switch(const Field& inField)
{
    BeginValue(inField);
    const Token name = fTokens.Peek();
    for (const Case& one : inField.cases) {
        if (!name.IsWord(one.name))
            continue;
        fTokens.Next();
        OpenBrace(fTokens, "'{' after " + one.name);
        Every(one.fields);
        if (!AtClosing())
            fTokens.Fail("'}', since " + one.name + " has no more values");
        CloseBrace(fTokens);
        return;
    }
    fTokens.Fail(Describe(inField));
}

void ValueEncoder::Optional(const Field& inField)
{
    if (!AtClosing())
        Every(inField.fields);
}

void ValueEncoder::Finish()
{
    for (const Pending& pending : fPending) {
        TokenCursor tokens(pending.field->fixed, pending.field->place);
        const int64_t value = Evaluate(*pending.field, tokens, &pending.path);
        const uint64_t checked = Checked(*pending.field, value, pending.field->place);
        fWriter.Overwrite(pending.at, InOrder(*pending.field, checked), pending.field->bits);
    }
}

void ValueEncoder::BeginValue(const Field& inField)
{
    if (AtClosing())
        throw RezError(fTokens.Peek().place, "expected " + Describe(inField) + " before the end of " +
                                                 TypeText(fContext.facts.type) + ", found '}'");
    if (fNeedSeparator && !fTokens.Accept(',') && !fTokens.Accept(';'))
        fTokens.Fail("',' before " + Describe(inField));
    fNeedSeparator = false;
}

void ValueEncoder::OpenBrace(TokenCursor& ioTokens, const std::string& inWhat)
{
    ioTokens.Expect('{', inWhat);
    fNeedSeparator = false;
}

void ValueEncoder::CloseBrace(TokenCursor& ioTokens)
{
    if (!ioTokens.Accept(','))
        ioTokens.Accept(';');
    ioTokens.Expect('}', "'}'");
    fNeedSeparator = true;
}

// Whether the braces close here, perhaps after a separator that follows the last value.
bool ValueEncoder::AtClosing() const
{
    if (fTokens.Peek().Is('}'))
        return true;
    const bool separator = fTokens.Peek().Is(',') || fTokens.Peek().Is(';');
    return fNeedSeparator && separator && fTokens.Peek(1).Is('}');
}

void ValueEncoder::NeedByte(const Field& inField) const
{
    if (!fWriter.OnByte())
        throw RezError(inField.place, "this field does not begin at a whole byte");
}

void ValueEncoder::CheckSize(Place inPlace) const
{
    if (fWriter.Bits() > kMostBits)
        throw RezError(inPlace, "the resource is larger than 16 MB");
}

std::string ValueEncoder::Describe(const Field& inField) const
{
    std::string text = NounOf(inField);
    const std::string names = NamesOf(inField);
    const std::string& name = inField.name.empty() ? inField.label : inField.name;
    if (!name.empty())
        text += " for " + name;
    return names.empty() ? text : text + " (" + names + ")";
}

} // namespace lampblack::rsrc
