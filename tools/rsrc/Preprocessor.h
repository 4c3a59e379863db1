// Directives of a resource description: #include, #define of names with or without arguments, #undef, #if and
// its kin, #error. Begin at Preprocessor::Run.
#ifndef LAMPBLACK_RSRC_PREPROCESSOR_H
#define LAMPBLACK_RSRC_PREPROCESSOR_H

#include "Token.h"

#include <deque>
#include <map>
#include <memory>
#include <set>

namespace lampblack::rsrc {

class Preprocessor {
public:
    // Includes are looked for beside the including file, then in the folders, in their order.
    Preprocessor(FileLoader inLoad, std::vector<std::string> inFolders)
        : fLoad(std::move(inLoad)), fFolders(std::move(inFolders))
    {
    }

    // NAME or NAME=VALUE, as if #define NAME VALUE stood before the text. Throws RezError.
    void Define(const std::string& inDefinition);

    // The tokens of a text with all directives carried out and all names replaced. The texts live as long as
    // the preprocessor. Throws RezError.
    std::vector<Token> Run(const std::string& inName, const std::string& inUtf8);

    // Finds a file as #include does and reads it.
    bool Load(Place inFrom, const std::string& inPath, std::string* outFound, std::string* outBytes) const;

private:
    // A #if that is open.
    struct Condition {
        Place place;
        bool active;    // the tokens here count
        bool satisfied; // a branch was taken already
        bool outer;     // the tokens around the #if count
    };
    using Row = std::vector<Token>;
    struct Macro {
        Row words;
        bool hasParameters = false;
        std::vector<std::string> parameters;
    };

    void RunText(const SourceText&, int inDepth, Row* outTokens);
    void ExpandRow(const Row&, std::set<std::string>& ioWithin, Row* outTokens);
    void ExpandNext(const Row&, size_t* ioAt, std::set<std::string>& ioWithin, Row* outTokens);
    bool ReadArguments(const Row&, size_t* ioAt, std::vector<Row>* outArguments) const;
    Row Substitute(const Macro&, const Token& inUse, const std::vector<Row>& inArguments);
    void Directive(const Row& inLine, int inDepth, Row* outTokens);
    void Conditional(const std::string& inName, const Row& inLine);
    void Include(const Row& inLine, int inDepth, Row* outTokens);
    void DefineLine(const Row& inLine);
    bool Evaluate(const Row& inLine);
    bool IsDefined(const Row& inLine) const;
    bool Active() const { return fConditions.empty() || fConditions.back().active; }
    const SourceText& Keep(const std::string& inName, const std::string& inUtf8);

    FileLoader fLoad;
    std::vector<std::string> fFolders;
    std::deque<SourceText> fTexts; // tokens point into them
    std::map<std::string, Macro> fMacros;
    std::vector<Condition> fConditions;
    size_t fExpanded = 0;
};

} // namespace lampblack::rsrc

#endif
