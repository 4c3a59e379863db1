#include "Pango.h"

#include <dlfcn.h>

namespace lampblack::quickdraw {

// The library brings the others of Pango with it. It is never unloaded: its types are registered for good.
static bool Load(PangoCalls* outCalls)
{
    void* const library = dlopen("libpangoft2-1.0.so.0", RTLD_LAZY | RTLD_LOCAL);
    bool isComplete = library != nullptr;
    const auto find = [&](auto& outCall, const char* name) {
        outCall = library ? reinterpret_cast<std::decay_t<decltype(outCall)>>(dlsym(library, name)) : nullptr;
        isComplete = isComplete && outCall;
    };
#define LAMPBLACK_PANGO_CALL(name) find(outCalls->name, #name);
    LAMPBLACK_PANGO_CALLS(LAMPBLACK_PANGO_CALL)
#undef LAMPBLACK_PANGO_CALL
    return isComplete;
}

const PangoCalls* FindPango()
{
    static PangoCalls calls;
    static const bool isThere = Load(&calls);
    return isThere ? &calls : nullptr;
}

} // namespace lampblack::quickdraw
