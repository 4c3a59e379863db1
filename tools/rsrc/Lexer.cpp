#include "Lexer.h"

#include <foundation/MacRoman.h>

#include <cstring>

namespace lampblack::rsrc {

namespace {

bool IsDigit(int inCharacter, int inBase)
{
    if (inCharacter >= '0' && inCharacter <= '9')
        return inCharacter - '0' < inBase;
    const int letter = inCharacter | 0x20;
    return inBase == 16 && letter >= 'a' && letter <= 'f';
}

int DigitValue(int inCharacter)
{
    return inCharacter <= '9' ? inCharacter - '0' : (inCharacter | 0x20) - 'a' + 10;
}

bool IsWordStart(int inCharacter)
{
    const int letter = inCharacter | 0x20;
    return (letter >= 'a' && letter <= 'z') || inCharacter == '_';
}

// Characters of the simple escapes. The line end of Macintosh text is the return character, so \n is
// 0x0D and \r is the other one.
constexpr struct {
    char name, byte;
} kEscapes[] = { { 'n', 0x0D }, { 'r', 0x0A }, { 't', 0x09 }, { 'b', 0x08 },  { 'f', 0x0C },
                 { 'v', 0x0B }, { '?', 0x7F }, { '"', '"' },  { '\'', '\'' }, { '\\', '\\' } };

constexpr const char* kPairs[] = { "<<", ">>", "<=", ">=", "==", "!=", "&&", "||" };

class Lexer {
public:
    explicit Lexer(const SourceText& inSource) : fSource(inSource), fText(inSource.text) {}

    std::vector<Token> Run()
    {
        while (SkipBlanks())
            fTokens.push_back(Read());
        return std::move(fTokens);
    }

private:
    int At(size_t inAhead = 0) const
    {
        return fAt + inAhead < fText.size() ? (unsigned char)fText[fAt + inAhead] : 0;
    }
    bool AtEnd() const { return fAt >= fText.size(); }
    bool AtLineEnd() const { return AtEnd() || At() == '\n' || At() == '\r'; }

    [[noreturn]] void Fail(size_t inOffset, const std::string& inMessage) const
    {
        throw RezError({ &fSource, inOffset }, inMessage);
    }

    // Answers whether a token follows.
    bool SkipBlanks()
    {
        const size_t start = fAt;
        fStartsLine = fStartsLine || fAt == 0;
        while (!AtEnd() && SkipBlank()) {
        }
        fTouches = fAt == start;
        return !AtEnd();
    }

    bool SkipBlank()
    {
        if (At() == '/' && At(1) == '/')
            return SkipToLineEnd();
        if (At() == '/' && At(1) == '*')
            return SkipComment();
        if (At() == '\\' && (At(1) == '\n' || At(1) == '\r'))
            return SkipJoint();
        if (!std::strchr(" \t\n\r\f\v", At()) || At() == 0)
            return false;
        fStartsLine = fStartsLine || AtLineEnd();
        ++fAt;
        return true;
    }

    bool SkipToLineEnd()
    {
        while (!AtLineEnd())
            ++fAt;
        return true;
    }

    bool SkipComment()
    {
        const size_t end = fText.find("*/", fAt + 2);
        if (end == std::string::npos)
            Fail(fAt, "expected */ at the end of this comment");
        fAt = end + 2;
        return true;
    }

    bool SkipJoint()
    {
        fAt += At(1) == '\r' && At(2) == '\n' ? 3 : 2;
        return true;
    }

    Token Read()
    {
        Token token;
        token.place = { &fSource, fAt };
        token.startsLine = fStartsLine;
        token.touchesPrevious = fTouches;
        fStartsLine = false;
        if (IsWordStart(At()))
            ReadWord(Token::Kind::Identifier, &token);
        else if (IsDigit(At(), 10) || (At() == '$' && IsDigit(At(1), 16)))
            ReadNumber(&token);
        else if (At() == '"')
            ReadString(&token);
        else if (At() == '\'')
            ReadLiteral(&token);
        else if (At() == '$')
            ReadDollar(&token);
        else
            ReadSymbol(&token);
        return token;
    }

    void ReadWord(Token::Kind inKind, Token* outToken)
    {
        const size_t start = fAt;
        while (IsWordStart(At()) || IsDigit(At(), 10))
            ++fAt;
        outToken->kind = inKind;
        outToken->text.assign(fText, start, fAt - start);
    }

    int ReadBase()
    {
        if (At() == '$') {
            ++fAt;
            return 16;
        }
        if (At() != '0')
            return 10;
        const int mark = At(1) | 0x20;
        if (mark != 'x' && mark != 'b')
            return IsDigit(At(1), 10) ? 8 : 10;
        fAt += 2;
        return mark == 'x' ? 16 : 2;
    }

    void ReadNumber(Token* outToken)
    {
        const size_t start = fAt;
        const int base = ReadBase();
        if (!IsDigit(At(), base))
            Fail(fAt, "expected a digit");
        uint64_t value = 0;
        for (; IsDigit(At(), base); ++fAt) {
            value = value * base + DigitValue(At());
            if (value > 0xFFFFFFFF)
                Fail(start, "this number does not fit into 32 bits");
        }
        if (IsWordStart(At()) || IsDigit(At(), 10))
            Fail(fAt, "this digit does not belong to the number before it");
        outToken->kind = Token::Kind::Number;
        outToken->value = (int64_t)value;
    }

    void ReadDollar(Token* outToken)
    {
        if (At(1) == '"') {
            ReadHex(outToken);
            return;
        }
        if (At(1) != '$' || !IsWordStart(At(2)))
            Fail(fAt, "expected hexadecimal digits or a quoted string of them after '$'");
        fAt += 2;
        ReadWord(Token::Kind::Function, outToken);
    }

    void ReadHex(Token* outToken)
    {
        const size_t start = fAt;
        int digits = 0, value = 0;
        for (fAt += 2; At() != '"'; ++fAt) {
            if (AtEnd())
                Fail(start, "expected '\"' at the end of these hexadecimal digits");
            if (std::strchr(" \t\n\r", At()) && At() != 0)
                continue;
            if (!IsDigit(At(), 16))
                Fail(fAt, "expected a hexadecimal digit");
            value = value << 4 | DigitValue(At());
            if (++digits % 2 == 0)
                outToken->text.push_back((char)value);
        }
        if (digits % 2)
            Fail(fAt, "expected an even number of hexadecimal digits");
        ++fAt;
        outToken->kind = Token::Kind::String;
    }

    void ReadString(Token* outToken)
    {
        ReadQuoted('"', &outToken->text);
        outToken->kind = Token::Kind::String;
    }

    void ReadLiteral(Token* outToken)
    {
        const size_t start = fAt;
        ReadQuoted('\'', &outToken->text);
        if (outToken->text.empty() || outToken->text.size() > 4)
            Fail(start, "expected one to four characters between the quotes");
        uint32_t value = 0;
        for (const char byte : outToken->text)
            value = value << 8 | (unsigned char)byte;
        outToken->kind = Token::Kind::Literal;
        outToken->value = value;
    }

    void ReadQuoted(char inQuote, std::string* outMacRoman)
    {
        const size_t start = fAt++;
        while (At() != inQuote || AtEnd()) {
            if (AtLineEnd())
                Fail(start, std::string("expected ") + inQuote + " before the end of the line");
            if (At() == '\\')
                ReadEscape(outMacRoman);
            else
                ReadPlain(inQuote, outMacRoman);
        }
        ++fAt;
    }

    // A run of characters without escapes is converted at once, so that accents join their letters.
    void ReadPlain(char inQuote, std::string* outMacRoman)
    {
        const size_t start = fAt;
        while (!AtLineEnd() && At() != inQuote && At() != '\\')
            ++fAt;
        std::string converted;
        const std::string_view run = std::string_view(fText).substr(start, fAt - start);
        if (!foundation::MacRomanFromUtf8Exactly(run, &converted))
            Fail(FirstForeign(start), "Mac Roman has no such character");
        *outMacRoman += converted;
    }

    size_t FirstForeign(size_t inStart) const
    {
        for (size_t at = inStart; at < fAt;) {
            size_t next = at;
            UInt8 byte;
            if (!foundation::UnicodeToMacRoman(foundation::NextUtf8(fText, &next), &byte))
                return at;
            at = next;
        }
        return inStart;
    }

    void ReadEscape(std::string* outMacRoman)
    {
        const size_t start = fAt++;
        if (At() == '\n' || At() == '\r') { // the string goes on in the next line
            fAt += At() == '\r' && At(1) == '\n' ? 2 : 1;
            return;
        }
        for (const auto& escape : kEscapes)
            if (At() == escape.name) {
                ++fAt;
                outMacRoman->push_back(escape.byte);
                return;
            }
        ReadNumericEscape(start, outMacRoman);
    }

    // \0xD5, \$D5, \0d213, \0b11010101 or the octal \325.
    void ReadNumericEscape(size_t inStart, std::string* outMacRoman)
    {
        struct Form {
            const char* mark;
            int base, digits;
        };
        static constexpr Form kForms[] = { { "0x", 16, 2 }, { "0X", 16, 2 }, { "$", 16, 2 },
                                           { "0d", 10, 3 }, { "0b", 2, 8 },  { "", 8, 3 } };
        for (const Form& form : kForms) {
            const size_t length = std::strlen(form.mark);
            if (fText.compare(fAt, length, form.mark) != 0)
                continue;
            fAt += length;
            outMacRoman->push_back(ReadCode(inStart, form.base, form.digits));
            return;
        }
    }

    char ReadCode(size_t inStart, int inBase, int inDigits)
    {
        int value = 0, digits = 0;
        for (; digits < inDigits && IsDigit(At(), inBase); ++digits, ++fAt)
            value = value * inBase + DigitValue(At());
        if (digits == 0 || value > 0xFF)
            Fail(inStart, "expected an escape such as \\n, \\\" or \\0xD5");
        return (char)value;
    }

    void ReadSymbol(Token* outToken)
    {
        outToken->kind = Token::Kind::Symbol;
        for (const char* pair : kPairs)
            if (At() == pair[0] && At(1) == pair[1]) {
                outToken->symbol = Pair(pair[0], pair[1]);
                fAt += 2;
                return;
            }
        if (!std::strchr("{}()[],;:=+-*/%|&^~!<>#.", At()) || At() == 0)
            Fail(fAt, "this character belongs to no word of a resource description");
        outToken->symbol = At();
        ++fAt;
    }

    const SourceText& fSource;
    const std::string& fText;
    size_t fAt = 0;
    bool fStartsLine = false;
    bool fTouches = false;
    std::vector<Token> fTokens;
};

} // namespace

std::vector<Token> Tokenize(const SourceText& inSource)
{
    return Lexer(inSource).Run();
}

} // namespace lampblack::rsrc
