// Reads declarations of resource types:
//
//     type 'DLOG' { bounds: rect; procID: integer documentProc = 0, dBoxProc = 1; ... };
//
// Fields: boolean, bitstring[n], byte, integer, longint, char, string, hex string, pstring, cstring (the last
// four with [n]), point, rect, fill and align with a unit, array, switch; modifiers unsigned, signed, hex,
// decimal, octal, binary, literal, key, wide. A label before a field names it in messages. Two words are this
// tool's own: `native` before a number (the reading machine's byte order) and `optional { fields }` at the
// end.
#ifndef LAMPBLACK_RSRC_TYPEPARSER_H
#define LAMPBLACK_RSRC_TYPEPARSER_H

#include "TypeModel.h"

namespace lampblack::rsrc {

// The four characters at the cursor as a type code. Throws RezError.
OSType ReadTypeCode(TokenCursor&);

// Reads what follows the word `type` up to its semicolon, into the table. Throws RezError.
void ReadTypeDeclaration(TokenCursor&, TypeTable* ioTypes);

} // namespace lampblack::rsrc

#endif
