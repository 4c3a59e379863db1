// Compiles a resource description: statements data, resource, type, include, read, delete, change and enum.
// Begin at Compile.
#ifndef LAMPBLACK_RSRC_COMPILER_H
#define LAMPBLACK_RSRC_COMPILER_H

#include "Preprocessor.h"
#include "Selection.h"
#include "TypeModel.h"

namespace lampblack::rsrc {

class Compiler {
public:
    Compiler(FileLoader inLoad, std::vector<std::string> inFolders);
    Compiler(const Compiler&) = delete;
    Compiler& operator=(const Compiler&) = delete;

    // See Preprocessor::Define.
    void Define(const std::string& inDefinition) { fPreprocessor.Define(inDefinition); }

    // Native numbers are written big-endian.
    void SetNativeIsBig(bool inIsBig) { fNativeIsBig = inIsBig; }

    // Answers whether the text is without fault. ioResources gets what its statements make, outProblems a
    // line "FILE:LINE:COL: ..." for each faulty statement, of which the first twenty are told.
    bool Compile(const std::string& inName, const std::string& inUtf8, std::vector<Resource>* ioResources,
                 std::vector<std::string>* outProblems);

    // The built-in types, and those that texts declared.
    const TypeTable& Types() const { return fTypes; }
    const Names& EnumNames() const { return fNames; }

private:
    void Statement(TokenCursor&);
    void Data(TokenCursor&);
    void Typed(TokenCursor&);
    void Patch(TokenCursor&, const std::vector<uint8_t>& inFillMask, std::vector<uint8_t>* ioData);
    void IncludeFork(TokenCursor&);
    void ReadData(TokenCursor&);
    void Delete(TokenCursor&);
    void Change(TokenCursor&);
    void Enumeration(TokenCursor&);
    void Duplicate(TokenCursor&);
    Resource Header(TokenCursor&);
    std::string Load(Place, const std::string& inPath) const;
    std::string LoadNamed(TokenCursor&);
    void Add(Resource);
    template <class Action>
    void ForSelected(const Selection&, Place, Action&&);
    static void Recover(TokenCursor&);

    Preprocessor fPreprocessor;
    TypeTable fTypes;
    Names fNames;
    NameResolver fNumbers;
    TextFunctions fTexts;
    bool fNativeIsBig = false;
    bool fMayRepeat = false;                   // the statement says that its key was there before
    std::vector<Resource> fMade;               // of the text being compiled
    std::vector<Resource>* fEarlier = nullptr; // of the inputs before it
    std::map<std::pair<OSType, SInt16>, Place> fPlaces;
};

} // namespace lampblack::rsrc

#endif
