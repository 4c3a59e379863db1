// Watching which platform calls the toolkit makes. A test program that defines a platform function of its own
// stands in front of the library's; Next finds the one behind it.
//
//     LAMPBLACK_INTERPOSE void SetPort(CGrafPtr port)
//     {
//         gCalls.push_back(port);
//         Next<decltype(SetPort)>("SetPort")(port);
//     }
#ifndef LAMPBLACK_TESTS_INTERPOSE_H
#define LAMPBLACK_TESTS_INTERPOSE_H

#include <dlfcn.h>

#define LAMPBLACK_INTERPOSE extern "C" __attribute__((visibility("default")))

template <typename Function>
Function* Next(const char* inName)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, inName));
}

#endif
