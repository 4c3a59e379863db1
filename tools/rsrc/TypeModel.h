// The shape of a resource type: what its statement holds and which bytes come of it. Made of a declaration in
// the type language by TypeParser, walked by the ValueEncoder. Begin at Field.
#ifndef LAMPBLACK_RSRC_TYPEMODEL_H
#define LAMPBLACK_RSRC_TYPEMODEL_H

#include "Token.h"

#include <Carbon/MacTypes.h>

#include <map>

namespace lampblack::rsrc {

// A name that a field gives to one of its values.
struct Constant {
    std::string name;
    int64_t value = 0;
    std::string text; // of characters and strings, in Mac Roman
};

struct Case;

struct Field {
    enum class Kind : uint8_t {
        Number,    // bits
        Character, // one byte of text
        String,    // form
        Point,     // v, h
        Rect,      // top, left, bottom, right
        Fill,      // bits times count, zero
        Align,     // zero bits up to a multiple of bits
        Array,     // fields, repeated
        Switch,    // one of cases
        Optional   // fields that a statement may end before, and then makes no bytes of
    };
    enum class Form : uint8_t { Pascal, C, Plain };

    Kind kind = Kind::Number;
    Form form = Form::Plain;
    bool isSigned = true;
    bool native = false; // in the byte order of the machine that reads it, not big-endian
    int bits = 0;
    int64_t count = 0; // of fills, of a string's bytes, of an array's elements; 0: as many as given
    std::string label; // what a message calls the field
    Place place;       // of the declaration
    std::vector<Constant> constants;
    std::vector<Token> fixed; // the value, when the statement does not give it
    std::vector<Field> fields;
    std::vector<Case> cases;
};

struct Case {
    std::string name;
    std::vector<Field> fields;
};

using TypeTable = std::map<OSType, std::vector<Field>>;

// Whether a statement gives at least one value for these fields.
bool TakesValues(const std::vector<Field>&);

} // namespace lampblack::rsrc

#endif
