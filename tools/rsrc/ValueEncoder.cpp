#include "ValueEncoder.h"

#include "Expression.h"

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

bool CountsElements(const Field& inField)
{
    return std::any_of(inField.fixed.begin(), inField.fixed.end(),
                       [](const Token& token) { return token.kind == Token::Kind::Function; });
}

const Constant* FindConstant(const Field& inField, std::string_view inName)
{
    for (const Constant& constant : inField.constants)
        if (SameWord(constant.name, inName))
            return &constant;
    return nullptr;
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

uint64_t SwapBytes(uint64_t inValue, int inBits)
{
    uint64_t swapped = 0;
    for (int shift = 0; shift < inBits; shift += 8)
        swapped = swapped << 8 | (inValue >> shift & 0xFF);
    return swapped;
}

} // namespace

std::vector<uint8_t> ValueEncoder::Encode(const std::vector<Field>& inFields)
{
    fFrames.emplace_back();
    Fields(inFields);
    Finish(fFrames.back());
    fFrames.pop_back();
    if (!AtClosing())
        fTokens.Fail(fNeedSeparator ? "'}', since " + TypeText(fType) + " has no more values" : "'}'");
    while (!fTokens.Peek().Is('}'))
        fTokens.Next(); // a separator behind the last value
    return std::move(fWriter.Data());
}

void ValueEncoder::Fields(const std::vector<Field>& inFields)
{
    for (const Field& field : inFields) {
        One(field);
        CheckSize(fTokens.Peek().place);
    }
}

void ValueEncoder::One(const Field& inField)
{
    switch (inField.kind) {
    case Kind::Fill:
        if (fWriter.Bits() + (uint64_t)inField.bits * (uint64_t)inField.count > kMostBits)
            throw RezError(inField.place, "the resource is larger than 16 MB");
        return fWriter.Zeros((uint64_t)inField.bits * (uint64_t)inField.count);
    case Kind::Align: return Align(inField);
    case Kind::Optional: return Optional(inField);
    case Kind::Array: return Array(inField);
    case Kind::Switch: return Switch(inField);
    default: break;
    }
    if (!inField.fixed.empty())
        return FixedValue(inField);
    BeginValue(inField);
    Value(inField, fTokens);
    fNeedSeparator = true;
}

void ValueEncoder::Align(const Field& inField)
{
    const uint64_t unit = (uint64_t)inField.bits;
    fWriter.Zeros((unit - fWriter.Bits() % unit) % unit);
}

void ValueEncoder::FixedValue(const Field& inField)
{
    if (CountsElements(inField)) {
        fFrames.back().pending.push_back({ fWriter.Bits(), &inField });
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
    uint64_t value = Checked(inField, Evaluate(inField, ioTokens, nullptr), place);
    if (inField.native && inField.bits > 8)
        value = SwapBytes(value, inField.bits);
    fWriter.Append(value, inField.bits);
}

int64_t ValueEncoder::Evaluate(const Field& inField, TokenCursor& ioTokens, const Frame* inFrame)
{
    const NameResolver resolve = [&](const Token& inName,
                                     TokenCursor& ioArguments) -> std::optional<int64_t> {
        if (inName.kind == Token::Kind::Function && SameWord(inName.text, "CountOf") && inFrame) {
            ioArguments.Expect('(', "'(' and the name of an array");
            const auto array = inFrame->counts.find(ioArguments.Next().text);
            ioArguments.Expect(')', "')'");
            return array == inFrame->counts.end() ? std::nullopt : std::optional(array->second);
        }
        if (const Constant* constant = FindConstant(inField, inName.text))
            return constant->value;
        if (inName.IsWord("true") || inName.IsWord("false"))
            return inName.IsWord("true");
        return std::nullopt;
    };
    return ReadExpression(ioTokens, resolve, Describe(inField));
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

void ValueEncoder::String(const Field& inField, TokenCursor& ioTokens)
{
    NeedByte(inField);
    const Place place = ioTokens.Peek().place;
    std::string text;
    const Constant* constant = FindConstant(inField, ioTokens.Peek().text);
    if (constant && ioTokens.Peek().IsWord(constant->name)) {
        ioTokens.Next();
        text = constant->text;
    } else if (ioTokens.Peek().kind != Token::Kind::String) {
        ioTokens.Fail(Describe(inField));
    }
    while (ioTokens.Peek().kind == Token::Kind::String)
        text += ioTokens.Next().text;

    size_t most = inField.form == Form::Pascal ? 255 : SIZE_MAX;
    const size_t extra = inField.form == Form::Plain ? 0 : 1;
    if (inField.count > 0)
        most = std::min(most, (size_t)inField.count - (inField.form == Form::C));
    if (text.size() > most)
        throw RezError(place, "this string has " + std::to_string(text.size()) + " bytes; " +
                                  std::to_string(most) + " fit");
    if (inField.form == Form::Pascal)
        fWriter.Append(text.size(), 8);
    fWriter.AppendBytes(text);
    if (inField.count > 0)
        fWriter.Zeros(8 * ((size_t)inField.count - text.size()));
    else if (inField.form == Form::C)
        fWriter.Zeros(8 * extra);
}

void ValueEncoder::Numbers(const Field& inField, int inCount, TokenCursor& ioTokens)
{
    Field part;
    part.bits = 16;
    part.label = inField.label;
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
    int64_t count = 0;
    OpenBrace(fTokens, Describe(inField));
    Elements(inField, &count);
    CloseBrace(fTokens);
    fFrames.back().counts[inField.label] = count;
    if (inField.count > 0 && inField.count != count)
        throw RezError(place, "expected " + std::to_string(inField.count) + " elements, found " +
                                  std::to_string(count));
}

void ValueEncoder::Elements(const Field& inField, int64_t* outCount)
{
    while (!AtClosing()) {
        if (fTokens.AtEnd())
            fTokens.Fail("'}' at the end of the array");
        fFrames.emplace_back();
        Fields(inField.fields);
        Finish(fFrames.back());
        fFrames.pop_back();
        ++*outCount;
    }
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
        Fields(one.fields);
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
        Fields(inField.fields);
}

void ValueEncoder::Finish(const Frame& inFrame)
{
    for (const Pending& pending : inFrame.pending) {
        TokenCursor tokens(pending.field->fixed, pending.field->place);
        const int64_t value = Evaluate(*pending.field, tokens, &inFrame);
        fWriter.Overwrite(pending.at, Checked(*pending.field, value, pending.field->place),
                          pending.field->bits);
    }
}

void ValueEncoder::BeginValue(const Field& inField)
{
    if (AtClosing())
        throw RezError(fTokens.Peek().place, "expected " + Describe(inField) + " before the end of " +
                                                 TypeText(fType) + ", found '}'");
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
    if (!inField.label.empty())
        text += " for " + inField.label;
    return names.empty() ? text : text + " (" + names + ")";
}

} // namespace lampblack::rsrc
