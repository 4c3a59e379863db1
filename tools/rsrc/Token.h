// The tokens of a resource description, and a cursor over a row of them. Begin at Token.
#ifndef LAMPBLACK_RSRC_TOKEN_H
#define LAMPBLACK_RSRC_TOKEN_H

#include "Source.h"

#include <cstdint>
#include <vector>

namespace lampblack::rsrc {

struct Token {
    enum class Kind : uint8_t {
        End,
        Identifier, // text
        Number,     // value
        Literal,    // 'ABCD': value, and text in Mac Roman
        String,     // text in Mac Roman, escapes resolved; $"hex" as well
        Function,   // $$Name: text without the dollars
        Symbol      // symbol
    };
    Kind kind = Kind::End;
    bool startsLine = false;
    bool touchesPrevious = false; // nothing, not even a space, stands before it
    int symbol = 0;               // the character, or (first << 8 | second) of a pair such as <<
    int64_t value = 0;
    std::string text;
    Place place;

    bool Is(int inSymbol) const { return kind == Kind::Symbol && symbol == inSymbol; }
    bool IsWord(std::string_view inWord) const; // an identifier, without regard to case
};

// The code of a symbol made of two characters.
constexpr int Pair(char inFirst, char inSecond)
{
    return inFirst << 8 | inSecond;
}

// Whether two names are the same without regard to the case of ASCII letters, as the language has it.
bool SameWord(std::string_view, std::string_view);

// What a message calls the token: "the number 12", "'}'", "the end of the file".
std::string DescribeToken(const Token&);

// TokenCursor
//
// Walks over tokens. Past the last one it stays on an End token whose place is that of the end.
class TokenCursor {
public:
    TokenCursor(const std::vector<Token>& inTokens, Place inEnd);

    const Token& Peek(size_t inAhead = 0) const;
    Token Next();
    bool AtEnd() const { return Peek().kind == Token::Kind::End; }
    int Depth() const { return fDepth; } // braces open around the cursor

    bool Accept(int inSymbol);
    bool AcceptWord(std::string_view inWord);
    // Throws "expected WHAT, found ..." unless the symbol is next.
    void Expect(int inSymbol, std::string_view inWhat);
    [[noreturn]] void Fail(std::string_view inExpected) const;

private:
    const std::vector<Token>& fTokens;
    size_t fAt = 0;
    int fDepth = 0;
    Token fEnd;
};

} // namespace lampblack::rsrc

#endif
