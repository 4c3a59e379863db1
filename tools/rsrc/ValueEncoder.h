// Reads the values of a `resource` statement and makes the bytes that its type demands.
#ifndef LAMPBLACK_RSRC_VALUEENCODER_H
#define LAMPBLACK_RSRC_VALUEENCODER_H

#include "BitWriter.h"
#include "Expression.h"
#include "Layout.h"
#include "TypeModel.h"

namespace lampblack::rsrc {

// What a $$Function of text, such as $$Read, stands for. Consumes its arguments.
using TextResolver = std::function<std::optional<std::string>(const Token& inName, TokenCursor&)>;

// What surrounds a statement.
struct EncodeContext {
    ResourceFacts facts;
    const Names* names = nullptr; // for numbers; may be null
    TextResolver text;            // may be empty
    bool nativeIsBig = false;     // native numbers are written big-endian
};

class ValueEncoder {
public:
    ValueEncoder(TokenCursor& ioTokens, const EncodeContext& inContext)
        : fTokens(ioTokens), fContext(inContext)
    {
    }

    // The cursor stands behind the opening brace; the closing one is left. Throws RezError.
    std::vector<uint8_t> Encode(const Fields&);

    // After that, as many bytes with ones for every bit that the type filled up by itself.
    std::vector<uint8_t> FillMask() const;

private:
    // A number that depends on what follows it, written when everything is known.
    struct Pending {
        uint64_t at;
        const Field* field;
        ArrayPath path;
    };

    void Every(const Fields&);
    void One(const Field&);
    void FixedValue(const Field&);
    void Value(const Field&, TokenCursor&);
    void Array(const Field&);
    int64_t Elements(const Field&);
    void Switch(const Field&);
    void Optional(const Field&);
    void Number(const Field&, TokenCursor&);
    void Character(const Field&, TokenCursor&);
    void String(const Field&, TokenCursor&);
    void Numbers(const Field&, int inCount, TokenCursor&);
    void Fill(const Field&);
    void FillUp(uint64_t inBits);
    void Align(const Field&);
    void Finish();

    void BeginValue(const Field&);
    void OpenBrace(TokenCursor&, const std::string& inWhat);
    void CloseBrace(TokenCursor&);
    bool AtClosing() const;
    bool DependsOnLayout(const Field&) const;
    std::string ReadText(const Field&, TokenCursor&);
    int64_t Evaluate(const Field&, TokenCursor&, const ArrayPath*);
    std::optional<int64_t> CountOf(const Field&);
    uint64_t Checked(const Field&, int64_t inValue, Place) const;
    uint64_t InOrder(const Field&, uint64_t inValue) const;
    void NeedByte(const Field&) const;
    void CheckSize(Place) const;
    std::string Describe(const Field&) const;

    TokenCursor& fTokens;
    const EncodeContext& fContext;
    BitWriter fWriter;
    std::unique_ptr<Layout> fLayout;
    std::vector<Pending> fPending;
    std::vector<std::pair<uint64_t, uint64_t>> fFilled; // places and lengths in bits
    uint64_t fSize = 0;
    bool fNeedSeparator = false;
};

} // namespace lampblack::rsrc

#endif
