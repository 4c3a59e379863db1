// Splits the text of a resource description into tokens. Begin at Tokenize.
#ifndef LAMPBLACK_RSRC_LEXER_H
#define LAMPBLACK_RSRC_LEXER_H

#include "Token.h"

namespace lampblack::rsrc {

// Throws RezError at the first character that belongs to no token. Comments are // and /* */; a backslash at
// the end of a line joins it to the next.
std::vector<Token> Tokenize(const SourceText&);

} // namespace lampblack::rsrc

#endif
