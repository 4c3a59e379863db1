// The $$Functions that stand for text: $$Read, $$Resource, $$Format, $$Name, $$Date, $$Time, $$Version, and
// the one of a number that needs a file. Begin at TextFunctions::Evaluate.
#ifndef LAMPBLACK_RSRC_TEXTFUNCTIONS_H
#define LAMPBLACK_RSRC_TEXTFUNCTIONS_H

#include "Expression.h"
#include "Resources.h"

namespace lampblack::rsrc {

// Reads a file that a text names. Throws RezError.
using NamedLoader = std::function<std::string(Place, const std::string& inPath)>;

class TextFunctions {
public:
    TextFunctions(NamedLoader inLoad, NameResolver inNumbers)
        : fLoad(std::move(inLoad)), fNumbers(std::move(inNumbers))
    {
    }

    // The resource whose statement is being read.
    void SetResource(const Resource& inResource) { fResource = inResource; }

    // Answers nothing for a function that is not one of text. Consumes the arguments. Throws RezError.
    std::optional<std::string> Evaluate(const Token& inName, TokenCursor&) const;

    // One or more strings or functions of text, joined. Throws RezError.
    std::string ReadText(TokenCursor&, std::string_view inWhat) const;
    static bool AtText(const TokenCursor&);

private:
    std::string Read(TokenCursor&) const;
    std::string ResourceData(TokenCursor&) const;
    std::string Format(TokenCursor&) const;

    NamedLoader fLoad;
    NameResolver fNumbers;
    Resource fResource;
};

// The resources of a file in any container. Throws RezError with the place.
std::vector<Resource> ForkOf(const std::string& inFileBytes, Place);

} // namespace lampblack::rsrc

#endif
