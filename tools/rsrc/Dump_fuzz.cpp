// Any bytes as a resource of every built-in type: its text compiles to the very same bytes. The first byte
// chooses the type and the order of its numbers.
#include "BuiltinTypes.h"
#include "Compiler.h"
#include "Dump.h"
#include "ValueDecoder.h"

#include <cstdlib>

namespace {

using namespace lampblack::rsrc;

constexpr OSType kTypes[] = { 'DLOG', 'WIND', 'ALRT', 'DITL', 'CNTL', 'CTL#', 'xBTN', 'PBAR', 'CNTS', 'CNTF',
                              'TDEx', 'CNTH', 'MENU', 'MBAR', 'STR ', 'STR#', 'vers', 'TEXT', 'BOOL', 'RECT',
                              'RGB ', 'BNDL', 'FREF', 'SIZE', 'dlgx', 'alrx', 'ICON', 'ICN#', 'ics#', 'CURS',
                              'PAT ', 'PAT#', 'acur', 'clut', 'wctb', 'cctb', 'mctb', 'pltt', 'ictb', 'nrct',
                              'wpos', 'finf', 'styl', 'TMPL', 'ldes', 'none' };

std::vector<Resource> CompileSoundly(const std::string& inText, bool inNativeIsBig)
{
    Compiler compiler([](const std::string&, std::string*) { return false; }, {});
    compiler.SetNativeIsBig(inNativeIsBig);
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    if (!compiler.Compile("dump", inText, &resources, &problems))
        std::abort();
    return resources;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const TypeTable& types = BuiltinTypes();
    static const Names names;
    if (inSize < 2)
        return 0;
    Resource resource;
    resource.type = kTypes[(inData[0] & 0x7F) % std::size(kTypes)];
    resource.id = (SInt16)inData[1];
    resource.attributes = inData[1];
    resource.hasName = inSize & 1;
    resource.data.assign(inData + 2, inData + inSize);
    if (resource.hasName)
        resource.name.assign((const char*)inData + 2, std::min<size_t>(inSize - 2, 255));
    const bool nativeIsBig = inData[0] & 0x80;
    const std::vector<Resource> again =
        CompileSoundly(DumpResource(resource, { &types, &names, nativeIsBig }, false), nativeIsBig);
    if (again.size() != 1 || !again[0].SameKey(resource) || again[0].data != resource.data ||
        again[0].attributes != resource.attributes || again[0].name != resource.name ||
        again[0].hasName != resource.hasName)
        std::abort();
    try {
        Resource swapped = resource;
        if (SwapNativeNumbers(types, names, &swapped) &&
            (!SwapNativeNumbers(types, names, &swapped) || swapped.data != resource.data))
            std::abort();
    } catch (const DecodeError&) {
    }
    return 0;
}
