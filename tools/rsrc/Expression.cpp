#include "Expression.h"

namespace lampblack::rsrc {

namespace {

constexpr int kDeepest = 100; // parentheses and signs within one another

struct Operator {
    int symbol, precedence;
};
constexpr Operator kOperators[] = {
    { Pair('|', '|'), 1 },
    { Pair('&', '&'), 2 },
    { '|', 3 },
    { '^', 4 },
    { '&', 5 },
    { Pair('=', '='), 6 },
    { Pair('!', '='), 6 },
    { '<', 7 },
    { '>', 7 },
    { Pair('<', '='), 7 },
    { Pair('>', '='), 7 },
    { Pair('<', '<'), 8 },
    { Pair('>', '>'), 8 },
    { '+', 9 },
    { '-', 9 },
    { '*', 10 },
    { '/', 10 },
    { '%', 10 },
};

int Precedence(const Token& inToken)
{
    for (const Operator& op : kOperators)
        if (inToken.Is(op.symbol))
            return op.precedence;
    return 0;
}

class ExpressionReader {
public:
    ExpressionReader(TokenCursor& ioTokens, const NameResolver& inResolve, std::string_view inWhat)
        : fTokens(ioTokens), fResolve(inResolve), fWhat(inWhat)
    {
    }

    int64_t Read(int inLowest)
    {
        int64_t left = Unary();
        while (Precedence(fTokens.Peek()) >= inLowest && Precedence(fTokens.Peek()) > 0) {
            const Token op = fTokens.Next();
            left = Apply(op, left, Read(Precedence(op) + 1));
        }
        return left;
    }

private:
    int64_t Unary()
    {
        if (++fDepth > kDeepest)
            throw RezError(fTokens.Peek().place, "this expression is nested too deeply");
        const int64_t value = UnaryValue();
        --fDepth;
        return value;
    }

    int64_t UnaryValue()
    {
        if (fTokens.Accept('-'))
            return (int64_t)(0 - (uint64_t)Unary());
        if (fTokens.Accept('+'))
            return Unary();
        if (fTokens.Accept('~'))
            return ~Unary();
        if (fTokens.Accept('!'))
            return !Unary();
        if (!fTokens.Accept('('))
            return Primary();
        const int64_t value = Read(1);
        fTokens.Expect(')', "')'");
        return value;
    }

    int64_t Primary()
    {
        const Token& token = fTokens.Peek();
        switch (token.kind) {
        case Token::Kind::Number:
        case Token::Kind::Literal: return fTokens.Next().value;
        case Token::Kind::Identifier:
        case Token::Kind::Function: return Named();
        default: fTokens.Fail(fWhat);
        }
    }

    int64_t Named()
    {
        const Token name = fTokens.Next();
        if (const std::optional<int64_t> value = fResolve(name, fTokens))
            return *value;
        throw RezError(name.place, "expected " + std::string(fWhat) + ", found " + DescribeToken(name) +
                                       ", which has no value here");
    }

    static int64_t Apply(const Token& inOperator, int64_t inLeft, int64_t inRight)
    {
        const uint64_t left = (uint64_t)inLeft, right = (uint64_t)inRight;
        switch (inOperator.symbol) {
        case Pair('|', '|'): return inLeft || inRight;
        case Pair('&', '&'): return inLeft && inRight;
        case '|': return inLeft | inRight;
        case '^': return inLeft ^ inRight;
        case '&': return inLeft & inRight;
        case Pair('=', '='): return inLeft == inRight;
        case Pair('!', '='): return inLeft != inRight;
        case '<': return inLeft < inRight;
        case '>': return inLeft > inRight;
        case Pair('<', '='): return inLeft <= inRight;
        case Pair('>', '='): return inLeft >= inRight;
        case Pair('<', '<'): return right < 64 ? (int64_t)(left << right) : 0;
        case Pair('>', '>'): return inLeft >> (right < 64 ? right : 63);
        case '+': return (int64_t)(left + right);
        case '-': return (int64_t)(left - right);
        case '*': return (int64_t)(left * right);
        default: return Divide(inOperator, inLeft, inRight);
        }
    }

    static int64_t Divide(const Token& inOperator, int64_t inLeft, int64_t inRight)
    {
        if (inRight == 0)
            throw RezError(inOperator.place, "division by zero");
        if (inRight == -1) // the one quotient that does not fit wraps around as well
            return inOperator.Is('/') ? (int64_t)(0 - (uint64_t)inLeft) : 0;
        return inOperator.Is('/') ? inLeft / inRight : inLeft % inRight;
    }

    TokenCursor& fTokens;
    const NameResolver& fResolve;
    std::string_view fWhat;
    int fDepth = 0;
};

} // namespace

int64_t ReadExpression(TokenCursor& ioTokens, const NameResolver& inResolve, std::string_view inWhat)
{
    return ExpressionReader(ioTokens, inResolve, inWhat).Read(1);
}

} // namespace lampblack::rsrc
