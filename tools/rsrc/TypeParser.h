// Reads declarations of resource types:
//
//     type 'DLOG' { bounds: rect; procID: integer documentProc = 0, dBoxProc = 1; ... };
//
// Fields: boolean, bitstring[n], byte, integer, longint, char, string, hex string, pstring, cstring, wstring
// (these five with [n]), point, rect, fill and align with a unit, array, switch; modifiers unsigned, signed,
// hex, decimal, octal, binary, literal, key, wide. A label names the place before a field, for messages and
// in expressions. Two words are this tool's own: `native` before a number (the reading machine's byte order)
// and `optional { fields }` at the end.
#ifndef LAMPBLACK_RSRC_TYPEPARSER_H
#define LAMPBLACK_RSRC_TYPEPARSER_H

#include "Expression.h"
#include "TypeModel.h"

namespace lampblack::rsrc {

// The four characters at the cursor as a type code. Throws RezError.
OSType ReadTypeCode(TokenCursor&);

// Reads what follows the word `type` up to its semicolon, into the table. The names stand for numbers. Throws
// RezError.
void ReadTypeDeclaration(TokenCursor&, const Names&, TypeTable* ioTypes);

// Resolves these names and nothing else.
NameResolver ResolveNames(const Names&);

} // namespace lampblack::rsrc

#endif
