#include "Token.h"

#include <foundation/MacRoman.h>

namespace lampblack::rsrc {

namespace {

char Lower(char inLetter)
{
    return inLetter >= 'A' && inLetter <= 'Z' ? (char)(inLetter + 32) : inLetter;
}

std::string SymbolText(int inSymbol)
{
    std::string text;
    if (inSymbol > 0xFF)
        text += (char)(inSymbol >> 8);
    return text + (char)inSymbol;
}

} // namespace

bool SameWord(std::string_view inFirst, std::string_view inSecond)
{
    if (inFirst.size() != inSecond.size())
        return false;
    for (size_t i = 0; i < inFirst.size(); ++i)
        if (Lower(inFirst[i]) != Lower(inSecond[i]))
            return false;
    return true;
}

bool Token::IsWord(std::string_view inWord) const
{
    return kind == Kind::Identifier && SameWord(text, inWord);
}

std::string DescribeToken(const Token& inToken)
{
    switch (inToken.kind) {
    case Token::Kind::End: return "the end of the text";
    case Token::Kind::Identifier: return "'" + inToken.text + "'";
    case Token::Kind::Number: return "the number " + std::to_string(inToken.value);
    case Token::Kind::Literal: return "the code '" + foundation::Utf8FromMacRoman(inToken.text) + "'";
    case Token::Kind::String: return "a string";
    case Token::Kind::Function: return "'$$" + inToken.text + "'";
    case Token::Kind::Symbol: return "'" + SymbolText(inToken.symbol) + "'";
    }
    return "something else";
}

TokenCursor::TokenCursor(const std::vector<Token>& inTokens, Place inEnd) : fTokens(inTokens)
{
    fEnd.place = inEnd;
}

const Token& TokenCursor::Peek(size_t inAhead) const
{
    return fAt + inAhead < fTokens.size() ? fTokens[fAt + inAhead] : fEnd;
}

Token TokenCursor::Next()
{
    const Token& token = Peek();
    fDepth += token.Is('{') - token.Is('}');
    fAt += fAt < fTokens.size();
    return token;
}

bool TokenCursor::Accept(int inSymbol)
{
    if (!Peek().Is(inSymbol))
        return false;
    Next();
    return true;
}

bool TokenCursor::AcceptWord(std::string_view inWord)
{
    if (!Peek().IsWord(inWord))
        return false;
    Next();
    return true;
}

void TokenCursor::Expect(int inSymbol, std::string_view inWhat)
{
    if (!Accept(inSymbol))
        Fail(inWhat);
}

void TokenCursor::Fail(std::string_view inExpected) const
{
    throw RezError(Peek().place, "expected " + std::string(inExpected) + ", found " + DescribeToken(Peek()));
}

} // namespace lampblack::rsrc
