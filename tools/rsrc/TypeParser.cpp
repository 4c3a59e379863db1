#include "TypeParser.h"

#include "Expression.h"

#include <algorithm>

namespace lampblack::rsrc {

namespace {

constexpr int kDeepestFields = 32;
constexpr int64_t kMostBytes = 1 << 24; // the format holds no more data than this

using Kind = Field::Kind;
using Form = Field::Form;

struct FieldWord {
    const char* word;
    Kind kind;
    int bits;
    Form form;
};
constexpr FieldWord kFieldWords[] = {
    { "boolean", Kind::Number, 1, Form::Plain },   { "byte", Kind::Number, 8, Form::Plain },
    { "integer", Kind::Number, 16, Form::Plain },  { "longint", Kind::Number, 32, Form::Plain },
    { "bitstring", Kind::Number, 0, Form::Plain }, { "char", Kind::Character, 8, Form::Plain },
    { "string", Kind::String, 8, Form::Plain },    { "pstring", Kind::String, 8, Form::Pascal },
    { "cstring", Kind::String, 8, Form::C },       { "point", Kind::Point, 32, Form::Plain },
    { "rect", Kind::Rect, 64, Form::Plain },       { "fill", Kind::Fill, 0, Form::Plain },
    { "align", Kind::Align, 0, Form::Plain },      { "array", Kind::Array, 0, Form::Plain },
    { "switch", Kind::Switch, 0, Form::Plain },    { "optional", Kind::Optional, 0, Form::Plain },
};

struct UnitWord {
    const char* word;
    int bits;
};
constexpr UnitWord kUnits[] = {
    { "bit", 1 }, { "nibble", 4 }, { "byte", 8 }, { "word", 16 }, { "long", 32 }
};

// Modifiers that say how a value would be written out again have no effect on its bytes.
constexpr const char* kPassedOver[] = { "signed", "decimal", "octal", "binary",
                                        "hex",    "literal", "key",   "wide" };

int64_t ReadPlainNumber(TokenCursor& ioTokens)
{
    const NameResolver none = [](const Token&, TokenCursor&) { return std::nullopt; };
    return ReadExpression(ioTokens, none, "a number");
}

class TypeReader {
public:
    explicit TypeReader(TokenCursor& ioTokens) : fTokens(ioTokens) {}

    std::vector<Field> ReadFields()
    {
        if (++fDepth > kDeepestFields)
            throw RezError(fTokens.Peek().place, "these fields are nested too deeply");
        std::vector<Field> fields;
        while (!fTokens.Peek().Is('}') && !fTokens.Peek().IsWord("case") && !fTokens.AtEnd())
            ReadField(&fields);
        --fDepth;
        return fields;
    }

private:
    void ReadField(std::vector<Field>* ioFields)
    {
        Field field;
        field.place = fTokens.Peek().place;
        ReadLabel(&field);
        ReadModifiers(&field);
        const FieldWord& word = ReadFieldWord();
        field.kind = word.kind;
        field.bits = word.bits;
        field.form = word.form;
        ReadRest(word, &field);
        fTokens.Expect(';', "';' after this field");
        ioFields->push_back(std::move(field));
    }

    void ReadLabel(Field* outField)
    {
        if (fTokens.Peek().kind != Token::Kind::Identifier || !fTokens.Peek(1).Is(':'))
            return;
        outField->label = fTokens.Next().text;
        fTokens.Next();
    }

    void ReadModifiers(Field* outField)
    {
        for (;;) {
            const Token& token = fTokens.Peek();
            if (token.IsWord("unsigned"))
                outField->isSigned = false;
            else if (token.IsWord("native"))
                outField->native = true;
            else if (std::none_of(std::begin(kPassedOver), std::end(kPassedOver),
                                  [&](const char* word) { return token.IsWord(word); }))
                return;
            fTokens.Next();
        }
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

    // [n], or the default when there is none.
    int64_t ReadCount(int64_t inDefault, int64_t inMost)
    {
        if (!fTokens.Accept('['))
            return inDefault;
        const Place place = fTokens.Peek().place;
        const int64_t count = ReadPlainNumber(fTokens);
        if (count < 1 || count > inMost)
            throw RezError(place, "expected a number from 1 to " + std::to_string(inMost));
        fTokens.Expect(']', "']'");
        return count;
    }

    void ReadArray(Field* ioField)
    {
        if (fTokens.Peek().kind == Token::Kind::Identifier)
            ioField->label = fTokens.Next().text;
        ioField->count = ReadCount(0, kMostBytes);
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
        const int64_t count = ReadCount(0, most);
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
            *outValue = ReadPlainNumber(fTokens);
    }

    TokenCursor& fTokens;
    int fDepth = 0;
};

} // namespace

bool TakesValues(const std::vector<Field>& inFields)
{
    return std::any_of(inFields.begin(), inFields.end(), [](const Field& field) {
        const bool silent =
            field.kind == Kind::Fill || field.kind == Kind::Align || field.kind == Kind::Optional;
        return !silent && field.fixed.empty();
    });
}

OSType ReadTypeCode(TokenCursor& ioTokens)
{
    const Token& token = ioTokens.Peek();
    if (token.kind != Token::Kind::Literal || token.text.size() != 4)
        ioTokens.Fail("a type of four characters in single quotes");
    return (OSType)ioTokens.Next().value;
}

void ReadTypeDeclaration(TokenCursor& ioTokens, TypeTable* ioTypes)
{
    const OSType type = ReadTypeCode(ioTokens);
    if (ioTokens.AcceptWord("as")) {
        const Place place = ioTokens.Peek().place;
        const auto other = ioTypes->find(ReadTypeCode(ioTokens));
        if (other == ioTypes->end())
            throw RezError(place, "this type has not been declared");
        (*ioTypes)[type] = std::vector<Field>(other->second);
    } else {
        ioTokens.Expect('{', "'{' or 'as'");
        std::vector<Field> fields = TypeReader(ioTokens).ReadFields();
        ioTokens.Expect('}', "a field or '}'");
        (*ioTypes)[type] = std::move(fields);
    }
    ioTokens.Expect(';', "';' after the type");
}

} // namespace lampblack::rsrc
