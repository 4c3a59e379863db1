// The shape of a resource type: what its statement holds and which bytes come of it. Made of a declaration in
// the type language by TypeParser, walked by the ValueEncoder and backwards by the ValueDecoder. Begin at
// Field.
#ifndef LAMPBLACK_RSRC_TYPEMODEL_H
#define LAMPBLACK_RSRC_TYPEMODEL_H

#include "Token.h"

#include <Carbon/MacTypes.h>

#include <map>
#include <memory>
#include <set>

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
        Optional,  // fields that a statement may end before, and then makes no bytes of
        Label      // no bytes: a name for this place
    };
    enum class Form : uint8_t { Pascal, C, Plain, Word };
    // How a value looks when a resource is written as text; it has no effect on the bytes.
    enum class Look : uint8_t { Decimal, Hex, Binary, Octal, Literal };

    Kind kind = Kind::Number;
    Form form = Form::Plain;
    Look look = Look::Decimal;
    bool isSigned = true;
    bool isKey = false;  // its value tells which case of the switch this is
    bool native = false; // in the byte order of the machine that reads it, not big-endian
    int bits = 0;
    int64_t count = 0; // of fills, of a string's bytes, of an array's elements; 0: as many as given
    std::vector<Token> countTokens; // instead of count, when it depends on other fields
    std::string label;              // what a message and an expression call the field
    std::string name;               // what $$CountOf and $$ArrayIndex call an array
    Place place;                    // of the declaration
    std::vector<Constant> constants;
    std::vector<Token> fixed; // the value, when the statement does not give it
    std::vector<Field> fields;
    std::vector<Case> cases;
};

struct Case {
    std::string name;
    std::vector<Field> fields;
};

using Fields = std::vector<Field>;

// Names for numbers that the source declares with enum.
using Names = std::map<std::string, int64_t>;

// The declared types. A type may have a declaration of its own for some IDs.
class TypeTable {
public:
    void Declare(OSType, Fields);
    void Declare(OSType, SInt16 inFirst, SInt16 inLast, Fields);

    // The newest declaration that holds for the resource; null when there is none. Stays until the table
    // goes.
    const Fields* Find(OSType, SInt16 inID) const;
    bool Copy(OSType inFrom, OSType inTo);

private:
    struct Shape {
        bool isGeneral;
        SInt16 first, last;
        std::shared_ptr<const Fields> fields;
    };
    std::map<OSType, std::vector<Shape>> fShapes;
};

// Whether a statement gives at least one value for these fields.
bool TakesValues(const Fields&);

// Whether the field makes bytes, or a place, without a value in the statement.
bool IsSilent(const Field&);

// The constant of that name, without regard to case; null when the field has none.
const Constant* FindConstant(const Field&, std::string_view inName);

// The names, in small letters, that expressions of the fields mention: only these places must be remembered.
std::set<std::string> MentionedNames(const Fields&);

// A name in small letters.
std::string SmallLetters(std::string_view);

} // namespace lampblack::rsrc

#endif
