// Which platform calls the toolkit makes, in their order. Only calls from outside the platform count: those
// that one platform call makes of others are its own business.
//
//     LAMPBLACK_WATCH(OSErr, FSpDelete, (const FSSpec* spec), (spec))
//     ...
//     CallLog log; DeletePreferenceFile(); CHECK(log.Calls() == "FSpDelete");
#ifndef LAMPBLACK_TESTS_CALLLOG_H
#define LAMPBLACK_TESTS_CALLLOG_H

#include <map>
#include <string>
#include <type_traits>

#include "Interpose.h"

// Notes the calls while it lives, their names separated by spaces.
class CallLog {
public:
    CallLog()
    {
        gText.clear();
        gIsOn = true;
    }
    ~CallLog() { gIsOn = false; }
    CallLog(const CallLog&) = delete;

    const std::string& Calls() const { return gText; }

    struct StCall {
        explicit StCall(const char* inName) : fIsOutermost(gDepth++ == 0)
        {
            if (gIsOn && fIsOutermost)
                gText += (gText.empty() ? "" : " ") + std::string(inName);
        }
        ~StCall() { --gDepth; }
        bool fIsOutermost;
    };

    static inline std::string gText;
    static inline bool gIsOn = false;
    static inline int gDepth = 0;
    // Calls that answer an error instead of being made.
    static inline std::map<std::string, short> gFailures;
};

// The error as the result of a call, zero for a pointer.
template <typename Result>
Result CallFailure(const char* inName)
{
    if constexpr (std::is_integral_v<Result>)
        return (Result)CallLog::gFailures[inName];
    else
        return Result();
}

#define LAMPBLACK_WATCH(Result, Name, Parameters, Arguments)                                                 \
    LAMPBLACK_INTERPOSE Result Name Parameters                                                               \
    {                                                                                                        \
        const CallLog::StCall call(#Name);                                                                   \
        if (call.fIsOutermost && CallLog::gFailures.contains(#Name))                                         \
            return CallFailure<Result>(#Name);                                                               \
        return Next<Result Parameters>(#Name) Arguments;                                                     \
    }

#endif
