// Arithmetic on constants. Begin at ReadExpression.
#ifndef LAMPBLACK_RSRC_EXPRESSION_H
#define LAMPBLACK_RSRC_EXPRESSION_H

#include "Token.h"

#include <optional>

namespace lampblack::rsrc {

// What an identifier or a $$Function stands for. May consume further tokens, the arguments of a function.
using NameResolver = std::function<std::optional<int64_t>(const Token& inName, TokenCursor&)>;

// Reads the longest expression at the cursor with the operators of C and their precedence, in 64 bits that
// wrap around. inWhat completes "expected ...". Throws RezError.
int64_t ReadExpression(TokenCursor&, const NameResolver&, std::string_view inWhat);

} // namespace lampblack::rsrc

#endif
