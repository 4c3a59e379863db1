// Compiles a resource description: statements data, resource, type, include and read. Begin at Compile.
#ifndef LAMPBLACK_RSRC_COMPILER_H
#define LAMPBLACK_RSRC_COMPILER_H

#include "Preprocessor.h"
#include "Resources.h"
#include "TypeModel.h"

namespace lampblack::rsrc {

class Compiler {
public:
    Compiler(FileLoader inLoad, std::vector<std::string> inFolders);

    // See Preprocessor::Define.
    void Define(const std::string& inDefinition) { fPreprocessor.Define(inDefinition); }

    // Answers whether the text is without fault. ioResources gets what its statements make, outProblems a
    // line "FILE:LINE:COL: ..." for each faulty statement, of which the first twenty are told.
    bool Compile(const std::string& inName, const std::string& inUtf8, std::vector<Resource>* ioResources,
                 std::vector<std::string>* outProblems);

private:
    void Statement(TokenCursor&);
    void Data(TokenCursor&);
    void Typed(TokenCursor&);
    void IncludeFork(TokenCursor&);
    void ReadData(TokenCursor&);
    Resource Header(TokenCursor&);
    void Attribute(TokenCursor&, Resource* ioResource);
    SInt16 ReadID(TokenCursor&);
    std::string LoadNamed(TokenCursor&);
    void Add(Resource);
    static void Recover(TokenCursor&);

    Preprocessor fPreprocessor;
    TypeTable fTypes;
    std::vector<Resource> fMade; // of the text being compiled
    std::map<std::pair<OSType, SInt16>, Place> fPlaces;
};

} // namespace lampblack::rsrc

#endif
