// Any bytes as a 'vers' resource: the typed decoder answers within them, and what it answers encodes to the
// same bytes.
#include "BuiltinTypes.h"
#include "Dump.h"
#include "Lexer.h"
#include "ValueDecoder.h"
#include "ValueEncoder.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::rsrc;
    const TypeTable& types = BuiltinTypes();
    const Fields& fields = *types.Find('vers', 1);
    const std::vector<uint8_t> bytes(inData, inData + inSize); // of its own exact size
    std::string text;
    try {
        text = StatementText(ValueDecoder(bytes, { 'vers', 1, 0 }, nullptr, false).Decode(fields));
    } catch (const DecodeError&) {
        return 0;
    }
    const SourceText source = { "fuzz", "{" + text + "}" };
    const std::vector<Token> tokens = Tokenize(source);
    TokenCursor cursor(tokens, { &source, source.text.size() });
    cursor.Next();
    EncodeContext context;
    if (ValueEncoder(cursor, context).Encode(fields) != bytes)
        std::abort();
    return 0;
}
