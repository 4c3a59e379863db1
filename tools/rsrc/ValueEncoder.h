// Reads the values of a `resource` statement and makes the bytes that its type demands.
#ifndef LAMPBLACK_RSRC_VALUEENCODER_H
#define LAMPBLACK_RSRC_VALUEENCODER_H

#include "BitWriter.h"
#include "TypeModel.h"

namespace lampblack::rsrc {

class ValueEncoder {
public:
    ValueEncoder(TokenCursor& ioTokens, OSType inType) : fTokens(ioTokens), fType(inType) {}

    // The cursor stands behind the opening brace; the closing one is left. Throws RezError.
    std::vector<uint8_t> Encode(const std::vector<Field>&);

private:
    // A number that counts the elements of an array, written when they are known.
    struct Pending {
        uint64_t at;
        const Field* field;
    };
    // The arrays and counts of one level of braces.
    struct Frame {
        std::map<std::string, int64_t> counts;
        std::vector<Pending> pending;
    };

    void Fields(const std::vector<Field>&);
    void One(const Field&);
    void FixedValue(const Field&);
    void Value(const Field&, TokenCursor&);
    void Array(const Field&);
    void Elements(const Field&, int64_t* outCount);
    void Switch(const Field&);
    void Optional(const Field&);
    void Number(const Field&, TokenCursor&);
    void Character(const Field&, TokenCursor&);
    void String(const Field&, TokenCursor&);
    void Numbers(const Field&, int inCount, TokenCursor&);
    void Align(const Field&);
    void Finish(const Frame&);

    void BeginValue(const Field&);
    void OpenBrace(TokenCursor&, const std::string& inWhat);
    void CloseBrace(TokenCursor&);
    bool AtClosing() const;
    int64_t Evaluate(const Field&, TokenCursor&, const Frame*);
    uint64_t Checked(const Field&, int64_t inValue, Place) const;
    void NeedByte(const Field&) const;
    void CheckSize(Place) const;
    std::string Describe(const Field&) const;

    TokenCursor& fTokens;
    OSType fType;
    BitWriter fWriter;
    std::vector<Frame> fFrames;
    bool fNeedSeparator = false;
};

} // namespace lampblack::rsrc

#endif
