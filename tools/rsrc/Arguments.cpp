#include "Arguments.h"

#include "Resources.h"

#include <charconv>

namespace lampblack::rsrc {

Arguments::Arguments(const std::vector<std::string>& inWords, const std::vector<OptionSpec>& inOptions)
{
    bool optionsEnded = false;
    for (size_t at = 0; at < inWords.size(); ++at) {
        const std::string& word = inWords[at];
        if (optionsEnded || word.size() < 2 || word[0] != '-')
            fFiles.push_back(word);
        else if (word == "--")
            optionsEnded = true;
        else
            ReadOption(inWords, &at, inOptions);
    }
}

void Arguments::ReadOption(const std::vector<std::string>& inWords, size_t* ioAt,
                           const std::vector<OptionSpec>& inOptions)
{
    const std::string& word = inWords[*ioAt];
    for (const OptionSpec& option : inOptions) {
        const std::string name = option.name;
        if (word == name) {
            if (option.takesValue && *ioAt + 1 == inWords.size())
                throw UsageError(name + " needs a value");
            fValues[name].push_back(option.takesValue ? inWords[++*ioAt] : std::string());
            return;
        }
        const bool isLetter = name.size() == 2;
        const size_t start = name.size() + (isLetter ? 0 : 1);
        if (!option.takesValue || !word.starts_with(name) || (!isLetter && word[name.size()] != '='))
            continue;
        fValues[name].push_back(word.substr(start));
        return;
    }
    throw UsageError("unknown option " + word);
}

void Arguments::NeedFiles(size_t inLeast, size_t inMost, const char* inSentence) const
{
    if (fFiles.size() < inLeast || fFiles.size() > inMost)
        throw UsageError(inSentence);
}

std::string Arguments::Value(const std::string& inOption) const
{
    const auto values = fValues.find(inOption);
    return values == fValues.end() ? std::string() : values->second.back();
}

std::vector<std::string> Arguments::Values(const std::string& inOption) const
{
    const auto values = fValues.find(inOption);
    return values == fValues.end() ? std::vector<std::string>() : values->second;
}

OSType CodeArgument(const std::string& inWhat, const std::string& inText)
{
    OSType code = 0;
    if (!TypeFromText(inText, &code))
        throw UsageError(inWhat + " has four characters of Mac Roman, not '" + inText + "'");
    return code;
}

SInt16 IDArgument(const std::string& inText)
{
    SInt16 id = 0;
    const auto [end, error] = std::from_chars(inText.data(), inText.data() + inText.size(), id);
    if (error != std::errc() || end != inText.data() + inText.size())
        throw UsageError("an ID is a number from -32768 to 32767, not '" + inText + "'");
    return id;
}

} // namespace lampblack::rsrc
