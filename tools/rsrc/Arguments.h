// What stands on the command line. Begin at Arguments.
#ifndef LAMPBLACK_RSRC_ARGUMENTS_H
#define LAMPBLACK_RSRC_ARGUMENTS_H

#include <Carbon/MacTypes.h>

#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace lampblack::rsrc {

// A wrong call: what() says how.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Streams {
    std::ostream &output, &errors;
};

struct OptionSpec {
    const char* name;
    bool takesValue;
};

// Files and options in any order. An option's value follows it, or stands behind '=', or touches a letter as
// in -DNAME.
// "--" ends the options.
class Arguments {
public:
    // Throws UsageError.
    Arguments(const std::vector<std::string>& inWords, const std::vector<OptionSpec>& inOptions);

    const std::vector<std::string>& Files() const { return fFiles; }
    // Throws UsageError with this sentence unless there are so many files.
    void NeedFiles(size_t inLeast, size_t inMost, const char* inSentence) const;

    bool Has(const std::string& inOption) const { return fValues.contains(inOption); }
    // The last value given; empty when there is none.
    std::string Value(const std::string& inOption) const;
    std::vector<std::string> Values(const std::string& inOption) const;

private:
    void ReadOption(const std::vector<std::string>& inWords, size_t* ioAt, const std::vector<OptionSpec>&);

    std::vector<std::string> fFiles;
    std::map<std::string, std::vector<std::string>> fValues;
};

// A type or creator, an ID. Throw UsageError.
OSType CodeArgument(const std::string& inWhat, const std::string& inText);
SInt16 IDArgument(const std::string& inText);

} // namespace lampblack::rsrc

#endif
