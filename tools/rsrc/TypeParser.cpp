#include "TypeParser.h"

#include <algorithm>

namespace lampblack::rsrc {

namespace {

constexpr int kDeepestFields = 32;
constexpr int64_t kMostBytes = 1 << 24; // the format holds no more data than this

using Kind = Field::Kind;
using Form = Field::Form;
using Look = Field::Look;

struct FieldWord {
    const char* word;
    Kind kind;
    int bits;
    Form form;
};
constexpr FieldWord kFieldWords[] = {
    { "boolean", Kind::Number, 1, Form::Plain },    { "byte", Kind::Number, 8, Form::Plain },
    { "integer", Kind::Number, 16, Form::Plain },   { "longint", Kind::Number, 32, Form::Plain },
    { "bitstring", Kind::Number, 0, Form::Plain },  { "char", Kind::Character, 8, Form::Plain },
    { "string", Kind::String, 8, Form::Plain },     { "pstring", Kind::String, 8, Form::Pascal },
    { "cstring", Kind::String, 8, Form::C },        { "wstring", Kind::String, 8, Form::Word },
    { "point", Kind::Point, 32, Form::Plain },      { "rect", Kind::Rect, 64, Form::Plain },
    { "fill", Kind::Fill, 0, Form::Plain },         { "align", Kind::Align, 0, Form::Plain },
    { "array", Kind::Array, 0, Form::Plain },       { "switch", Kind::Switch, 0, Form::Plain },
    { "optional", Kind::Optional, 0, Form::Plain },
};

struct UnitWord {
    const char* word;
    int bits;
};
constexpr UnitWord kUnits[] = {
    { "bit", 1 }, { "nibble", 4 }, { "byte", 8 }, { "word", 16 }, { "long", 32 }
};

struct LookWord {
    const char* word;
    Look look;
};
constexpr LookWord kLooks[] = {
    { "decimal", Look::Decimal }, { "hex", Look::Hex },         { "binary", Look::Binary },
    { "octal", Look::Octal },     { "literal", Look::Literal },
};

class TypeReader {
public:
    TypeReader(TokenCursor& ioTokens, const Names& inNames)
        : fTokens(ioTokens), fResolve(ResolveNames(inNames)), fNames(inNames)
    {
    }

    Fields ReadFields()
    {
        if (++fDepth > kDeepestFields)
            throw RezError(fTokens.Peek().place, "these fields are nested too deeply");
        Fields fields;
        while (!AtEndOfFields())
            ReadField(&fields);
        --fDepth;
        return fields;
    }

private:
    bool AtEndOfFields() const
    {
        return fTokens.Peek().Is('}') || fTokens.Peek().IsWord("case") || fTokens.AtEnd();
    }

    void ReadField(Fields* ioFields)
    {
        Field field;
        field.place = fTokens.Peek().place;
        if (!ReadLabels(&field, ioFields))
            return;
        ReadModifiers(&field);
        const FieldWord& word = ReadFieldWord();
        field.kind = word.kind;
        field.bits = word.bits;
        field.form = word.form;
        ReadRest(word, &field);
        fTokens.Expect(';', "';' after this field");
        ioFields->push_back(std::move(field));
    }

    // Answers whether a field follows. A label with none behind it, or with another label, is a place by
    // itself.
    bool ReadLabels(Field* outField, Fields* ioFields)
    {
        while (fTokens.Peek().kind == Token::Kind::Identifier && fTokens.Peek(1).Is(':')) {
            if (!outField->label.empty())
                AddLabel(*outField, ioFields);
            outField->label = fTokens.Next().text;
            fTokens.Next();
        }
        const bool isAlone = !outField->label.empty() && (AtEndOfFields() || fTokens.Accept(';'));
        if (isAlone)
            AddLabel(*outField, ioFields);
        return !isAlone;
    }

    static void AddLabel(const Field& inField, Fields* ioFields)
    {
        Field label;
        label.kind = Kind::Label;
        label.label = inField.label;
        label.place = inField.place;
        ioFields->push_back(std::move(label));
    }

    void ReadModifiers(Field* outField)
    {
        while (ReadModifier(fTokens.Peek(), outField))
            fTokens.Next();
    }

    static bool ReadModifier(const Token& inToken, Field* outField)
    {
        for (const LookWord& word : kLooks)
            if (inToken.IsWord(word.word)) {
                outField->look = word.look;
                return true;
            }
        if (inToken.IsWord("unsigned"))
            outField->isSigned = false;
        else if (inToken.IsWord("native"))
            outField->native = true;
        else if (inToken.IsWord("key"))
            outField->isKey = true;
        else
            return inToken.IsWord("signed") || inToken.IsWord("wide");
        return true;
    }

    const FieldWord& ReadFieldWord()
    {
        for (const FieldWord& word : kFieldWords)
            if (fTokens.AcceptWord(word.word))
                return word;
        fTokens.Fail("a field such as integer, pstring or array");
    }

    void ReadRest(const FieldWord& inWord, Field* ioField)
    {
        switch (inWord.kind) {
        case Kind::Fill: ReadUnit(ioField); break;
        case Kind::Align: ReadUnit(ioField); break;
        case Kind::Array: ReadArray(ioField); break;
        case Kind::Switch: ReadCases(ioField); break;
        case Kind::Optional: ReadBody(ioField); break;
        default: ReadValues(ioField);
        }
    }

    void ReadUnit(Field* ioField)
    {
        for (const UnitWord& unit : kUnits)
            if (fTokens.AcceptWord(unit.word)) {
                ioField->bits = unit.bits;
                ioField->count = ReadCount(1, kMostBytes);
                return;
            }
        fTokens.Fail("bit, nibble, byte, word or long");
    }

    // [n], or the default when there is none. A size that depends on other fields is kept as it is written.
    int64_t ReadCount(int64_t inDefault, int64_t inMost, std::vector<Token>* outTokens = nullptr)
    {
        if (!fTokens.Accept('['))
            return inDefault;
        if (outTokens && DependsOnFields()) {
            TakeUntilClosed(outTokens);
            return 0;
        }
        const Place place = fTokens.Peek().place;
        const int64_t count = ReadExpression(fTokens, fResolve, "a number");
        if (count < 1 || count > inMost)
            throw RezError(place, "expected a number from 1 to " + std::to_string(inMost));
        fTokens.Expect(']', "']'");
        return count;
    }

    void TakeUntilClosed(std::vector<Token>* outTokens)
    {
        for (int depth = 0;;) {
            if (fTokens.AtEnd())
                fTokens.Fail("']'");
            Token token = fTokens.Next();
            depth += token.Is('[') - token.Is(']');
            if (depth < 0)
                return;
            outTokens->push_back(std::move(token));
        }
    }

    bool DependsOnFields() const
    {
        for (size_t i = 0; !fTokens.Peek(i).Is(']') && fTokens.Peek(i).kind != Token::Kind::End; ++i) {
            const Token& token = fTokens.Peek(i);
            if (token.kind == Token::Kind::Function ||
                (token.kind == Token::Kind::Identifier && !fNames.contains(token.text)))
                return true;
        }
        return false;
    }

    void ReadArray(Field* ioField)
    {
        if (fTokens.Peek().kind == Token::Kind::Identifier)
            ioField->name = fTokens.Next().text;
        ioField->count = ReadCount(0, kMostBytes, &ioField->countTokens);
        ReadBody(ioField);
        if (!TakesValues(ioField->fields))
            throw RezError(ioField->place, "the elements of this array have no values");
    }

    void ReadBody(Field* ioField)
    {
        fTokens.Expect('{', "'{'");
        ioField->fields = ReadFields();
        fTokens.Expect('}', "a field or '}'");
    }

    void ReadCases(Field* ioField)
    {
        fTokens.Expect('{', "'{'");
        while (fTokens.AcceptWord("case")) {
            Case one;
            if (fTokens.Peek().kind != Token::Kind::Identifier)
                fTokens.Fail("the name of the case");
            one.name = fTokens.Next().text;
            fTokens.Expect(':', "':' after the name of the case");
            one.fields = ReadFields();
            ioField->cases.push_back(std::move(one));
        }
        fTokens.Expect('}', "'case' or '}'");
    }

    void ReadValues(Field* ioField)
    {
        const int64_t most = ioField->kind == Kind::Number ? 32 : kMostBytes;
        const int64_t count =
            ReadCount(0, most, ioField->kind == Kind::String ? &ioField->countTokens : nullptr);
        if (ioField->kind == Kind::Number && ioField->bits == 0) {
            if (count == 0)
                fTokens.Fail("'[' and the number of bits");
            ioField->bits = (int)count;
        } else {
            ioField->count = count;
        }
        if (fTokens.Accept('='))
            ReadFixed(ioField);
        else if (!fTokens.Peek().Is(';'))
            ReadConstants(ioField);
    }

    void ReadFixed(Field* ioField)
    {
        int depth = 0;
        while (!fTokens.AtEnd() && (depth > 0 || !fTokens.Peek().Is(';'))) {
            depth += fTokens.Peek().Is('{') - fTokens.Peek().Is('}');
            ioField->fixed.push_back(fTokens.Next());
        }
        if (ioField->fixed.empty())
            fTokens.Fail("the value of this field");
    }

    // NAME [= value], ...: a name without a value continues from the one before it.
    void ReadConstants(Field* ioField)
    {
        int64_t next = 0;
        do {
            Constant constant;
            if (fTokens.Peek().kind != Token::Kind::Identifier)
                fTokens.Fail("the name of a value, or ';'");
            constant.name = fTokens.Next().text;
            if (fTokens.Accept('='))
                ReadConstantValue(&constant, &next);
            constant.value = next;
            next = (int64_t)((uint64_t)next + 1);
            ioField->constants.push_back(std::move(constant));
        } while (fTokens.Accept(','));
    }

    void ReadConstantValue(Constant* outConstant, int64_t* outValue)
    {
        if (fTokens.Peek().kind == Token::Kind::String)
            outConstant->text = fTokens.Next().text;
        else
            *outValue = ReadExpression(fTokens, fResolve, "a number");
    }

    TokenCursor& fTokens;
    NameResolver fResolve;
    const Names& fNames;
    int fDepth = 0;
};

} // namespace

NameResolver ResolveNames(const Names& inNames)
{
    return [&inNames](const Token& inName, TokenCursor&) -> std::optional<int64_t> {
        const auto name = inNames.find(inName.text);
        return name == inNames.end() ? std::nullopt : std::optional(name->second);
    };
}

OSType ReadTypeCode(TokenCursor& ioTokens)
{
    const Token& token = ioTokens.Peek();
    if (token.kind != Token::Kind::Literal || token.text.size() != 4)
        ioTokens.Fail("a type of four characters in single quotes");
    return (OSType)ioTokens.Next().value;
}

namespace {

SInt16 ReadID(TokenCursor& ioTokens, const Names& inNames)
{
    const Place place = ioTokens.Peek().place;
    const int64_t id = ReadExpression(ioTokens, ResolveNames(inNames), "an ID");
    if (id < -32768 || id > 32767)
        throw RezError(place, "an ID is a number from -32768 to 32767");
    return (SInt16)id;
}

} // namespace

void ReadTypeDeclaration(TokenCursor& ioTokens, const Names& inNames, TypeTable* ioTypes)
{
    const OSType type = ReadTypeCode(ioTokens);
    SInt16 first = 0, last = 0;
    const bool hasIDs = ioTokens.Accept('(');
    if (hasIDs) {
        first = last = ReadID(ioTokens, inNames);
        if (ioTokens.Accept(':'))
            last = ReadID(ioTokens, inNames);
        ioTokens.Expect(')', "':' or ')' after the ID");
    }
    if (!hasIDs && ioTokens.AcceptWord("as")) {
        const Place place = ioTokens.Peek().place;
        if (!ioTypes->Copy(ReadTypeCode(ioTokens), type))
            throw RezError(place, "this type has not been declared");
        ioTokens.Expect(';', "';' after the type");
        return;
    }
    ioTokens.Expect('{', hasIDs ? "'{'" : "'{' or 'as'");
    Fields fields = TypeReader(ioTokens, inNames).ReadFields();
    ioTokens.Expect('}', "a field or '}'");
    ioTokens.Expect(';', "';' after the type");
    if (hasIDs)
        ioTypes->Declare(type, first, last, std::move(fields));
    else
        ioTypes->Declare(type, std::move(fields));
}

} // namespace lampblack::rsrc
