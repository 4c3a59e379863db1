#include "Preprocessor.h"

#include "Expression.h"
#include "Lexer.h"

#include <algorithm>
#include <filesystem>

namespace lampblack::rsrc {

namespace {

constexpr int kDeepestInclude = 32;
constexpr size_t kDeepestName = 100;
constexpr size_t kMostTokens = 4'000'000; // of all replaced names, against definitions that multiply

// The published interface files whose types the compiler knows by itself: a source that includes one is
// content without it.
constexpr const char* kKnownFiles[] = { "Types.r",        "SysTypes.r",          "MacTypes.r",
                                        "Carbon.r",       "Dialogs.r",           "Controls.r",
                                        "Menus.r",        "MacWindows.r",        "Processes.r",
                                        "CoreServices.r", "ControlDefinitions.r" };

bool IsKnownFile(const std::string& inPath)
{
    const std::string name = std::filesystem::path(inPath).filename().string();
    return std::any_of(std::begin(kKnownFiles), std::end(kKnownFiles),
                       [&](const char* known) { return SameWord(name, known); });
}

Place EndOf(const std::vector<Token>& inLine)
{
    Place place = inLine.back().place;
    while (place.offset < place.source->text.size() && place.source->text[place.offset] != '\n')
        ++place.offset;
    return place;
}

// The path between the quotes or angle brackets of an include line, taken as it is written.
std::string IncludedPath(const std::vector<Token>& inLine)
{
    if (inLine.size() < 3)
        throw RezError(EndOf(inLine), "expected a file name in quotes after #include");
    const std::string& text = inLine[2].place.source->text;
    const size_t start = inLine[2].place.offset;
    const char close = text[start] == '<' ? '>' : '"';
    const size_t end = text.find(close, start + 1);
    if ((text[start] != '<' && text[start] != '"') || end == std::string::npos)
        throw RezError(inLine[2].place, "expected a file name in quotes after #include");
    return text.substr(start + 1, end - start - 1);
}

} // namespace

const SourceText& Preprocessor::Keep(const std::string& inName, const std::string& inUtf8)
{
    return fTexts.emplace_back(SourceText{ inName, inUtf8 });
}

void Preprocessor::Define(const std::string& inDefinition)
{
    const size_t equals = inDefinition.find('=');
    const std::string value = equals == std::string::npos ? "1" : inDefinition.substr(equals + 1);
    const std::string name = inDefinition.substr(0, equals);
    const std::vector<Token> words = Tokenize(Keep("-D", name));
    if (words.size() != 1 || words[0].kind != Token::Kind::Identifier)
        throw RezError({}, "expected a name after -D, found '" + name + "'");
    fMacros[name] = { Tokenize(Keep("-D " + name, value)), false, {} };
}

std::vector<Token> Preprocessor::Run(const std::string& inName, const std::string& inUtf8)
{
    Row tokens;
    fConditions.clear();
    RunText(Keep(inName, inUtf8), 0, &tokens);
    return tokens;
}

void Preprocessor::RunText(const SourceText& inText, int inDepth, Row* outTokens)
{
    const size_t conditions = fConditions.size();
    const Row tokens = Tokenize(inText);
    for (size_t i = 0; i < tokens.size();) {
        if (!tokens[i].startsLine || !tokens[i].Is('#')) {
            std::set<std::string> within;
            if (Active())
                ExpandNext(tokens, &i, within, outTokens);
            else
                ++i;
            continue;
        }
        size_t end = i + 1;
        while (end < tokens.size() && !tokens[end].startsLine)
            ++end;
        Directive(Row(tokens.begin() + (long)i, tokens.begin() + (long)end), inDepth, outTokens);
        i = end;
    }
    if (fConditions.size() > conditions)
        throw RezError(fConditions.back().place, "expected #endif for this condition");
}

void Preprocessor::ExpandRow(const Row& inTokens, std::set<std::string>& ioWithin, Row* outTokens)
{
    for (size_t at = 0; at < inTokens.size();)
        ExpandNext(inTokens, &at, ioWithin, outTokens);
}

void Preprocessor::ExpandNext(const Row& inTokens, size_t* ioAt, std::set<std::string>& ioWithin,
                              Row* outTokens)
{
    const Token& use = inTokens[(*ioAt)++];
    const auto macro = use.kind == Token::Kind::Identifier ? fMacros.find(use.text) : fMacros.end();
    std::vector<Row> arguments;
    const bool applies = macro != fMacros.end() && !ioWithin.contains(use.text) &&
                         (!macro->second.hasParameters || ReadArguments(inTokens, ioAt, &arguments));
    if (!applies) {
        outTokens->push_back(use);
        return;
    }
    if (ioWithin.size() >= kDeepestName)
        throw RezError(use.place, "names stand for one another too deeply");
    for (Row& argument : arguments) {
        Row expanded;
        ExpandRow(argument, ioWithin, &expanded);
        argument = std::move(expanded);
    }
    const Row words = Substitute(macro->second, use, arguments);
    ioWithin.insert(use.text);
    ExpandRow(words, ioWithin, outTokens);
    ioWithin.erase(use.text);
}

// What stands between the parentheses behind a name, split at its commas. Answers false when no parenthesis
// follows: then the name is an ordinary word.
bool Preprocessor::ReadArguments(const Row& inTokens, size_t* ioAt, std::vector<Row>* outArguments) const
{
    if (*ioAt >= inTokens.size() || !inTokens[*ioAt].Is('('))
        return false;
    const Place place = inTokens[*ioAt].place;
    outArguments->emplace_back();
    int depth = 0;
    for (++*ioAt; *ioAt < inTokens.size(); ++*ioAt) {
        const Token& token = inTokens[*ioAt];
        depth += token.Is('(') - token.Is(')');
        if (depth < 0) {
            ++*ioAt;
            return true;
        }
        if (depth == 0 && token.Is(','))
            outArguments->emplace_back();
        else
            outArguments->back().push_back(token);
    }
    throw RezError(place, "expected ')' after these arguments");
}

// The words of a name with its arguments put in; messages name the use, not the definition.
Preprocessor::Row Preprocessor::Substitute(const Macro& inMacro, const Token& inUse,
                                           const std::vector<Row>& inArguments)
{
    const size_t expected = inMacro.parameters.size();
    const bool isEmpty = expected == 0 && inArguments.size() == 1 && inArguments[0].empty();
    if (inMacro.hasParameters && inArguments.size() != expected && !isEmpty)
        throw RezError(inUse.place, "expected " + std::to_string(expected) + " arguments, found " +
                                        std::to_string(inArguments.size()));
    Row words;
    for (Token token : inMacro.words) {
        const auto parameter = std::find(inMacro.parameters.begin(), inMacro.parameters.end(), token.text);
        const bool isParameter =
            token.kind == Token::Kind::Identifier && parameter != inMacro.parameters.end();
        token.place = inUse.place;
        const Row one = { token };
        const Row& added = isParameter ? inArguments[(size_t)(parameter - inMacro.parameters.begin())] : one;
        fExpanded += added.size();
        if (fExpanded > kMostTokens)
            throw RezError(inUse.place, "this name stands for too many words");
        words.insert(words.end(), added.begin(), added.end());
    }
    return words;
}

void Preprocessor::Directive(const Row& inLine, int inDepth, Row* outTokens)
{
    if (inLine.size() < 2)
        return; // a lone # is nothing
    const std::string& name = inLine[1].text;
    if (name == "if" || name == "ifdef" || name == "ifndef" || name == "elif" || name == "else" ||
        name == "endif") {
        Conditional(name, inLine);
        return;
    }
    if (!Active())
        return;
    if (name == "include")
        Include(inLine, inDepth, outTokens);
    else if (name == "define")
        DefineLine(inLine);
    else if (name == "undef" && inLine.size() == 3)
        fMacros.erase(inLine[2].text);
    else if (name == "error")
        throw RezError(inLine[0].place,
                       "#error" + (inLine.size() > 2 ? ": " + inLine[2].text : std::string()));
    else
        throw RezError(inLine[1].place, "expected include, define, undef, if, ifdef, ifndef, elif, else, "
                                        "endif or error after '#', found " +
                                            DescribeToken(inLine[1]));
}

void Preprocessor::DefineLine(const Row& inLine)
{
    if (inLine.size() < 3 || inLine[2].kind != Token::Kind::Identifier)
        throw RezError(EndOf(inLine), "expected a name after #define");
    Macro macro;
    size_t at = 3;
    macro.hasParameters = inLine.size() > 3 && inLine[3].Is('(') && inLine[3].touchesPrevious;
    if (macro.hasParameters)
        for (++at; at < inLine.size() && !inLine[at].Is(')'); ++at) {
            if (inLine[at].kind == Token::Kind::Identifier)
                macro.parameters.push_back(inLine[at].text);
            else if (!inLine[at].Is(','))
                throw RezError(inLine[at].place, "expected the name of an argument or ')'");
        }
    if (macro.hasParameters && at++ >= inLine.size())
        throw RezError(EndOf(inLine), "expected ')' after the names of the arguments");
    macro.words.assign(inLine.begin() + (long)at, inLine.end());
    fMacros[inLine[2].text] = std::move(macro);
}

bool Preprocessor::IsDefined(const Row& inLine) const
{
    if (inLine.size() != 3)
        throw RezError(inLine[1].place, "expected one name after this directive");
    return fMacros.contains(inLine[2].text);
}

void Preprocessor::Conditional(const std::string& inName, const Row& inLine)
{
    if (inName == "if" || inName == "ifdef" || inName == "ifndef") {
        const bool outer = Active();
        const bool holds =
            outer && (inName == "if" ? Evaluate(inLine) : IsDefined(inLine) == (inName == "ifdef"));
        fConditions.push_back({ inLine[0].place, holds, holds, outer });
        return;
    }
    if (fConditions.empty())
        throw RezError(inLine[0].place, "#" + inName + " without an #if before it");
    Condition& condition = fConditions.back();
    if (inName == "endif") {
        fConditions.pop_back();
        return;
    }
    const bool open = condition.outer && !condition.satisfied;
    condition.active = open && (inName == "else" || Evaluate(inLine));
    condition.satisfied = condition.satisfied || condition.active;
}

bool Preprocessor::Evaluate(const Row& inLine)
{
    Row words;
    for (size_t i = 2; i < inLine.size();) {
        std::set<std::string> within;
        const bool isOperand =
            inLine[i - 1].text == "defined" || (inLine[i - 1].Is('(') && inLine[i - 2].text == "defined");
        if (isOperand)
            words.push_back(inLine[i++]);
        else
            ExpandNext(inLine, &i, within, &words);
    }
    TokenCursor cursor(words, EndOf(inLine));
    const NameResolver resolve = [this](const Token& inName,
                                        TokenCursor& ioTokens) -> std::optional<int64_t> {
        if (inName.text != "defined")
            return 0; // as in C, a name without a value counts as 0
        const bool braced = ioTokens.Accept('(');
        const Token operand = ioTokens.Next();
        if (braced)
            ioTokens.Expect(')', "')'");
        return fMacros.contains(operand.text);
    };
    const int64_t value = ReadExpression(cursor, resolve, "a number");
    if (!cursor.AtEnd())
        cursor.Fail("the end of the line");
    return value != 0;
}

void Preprocessor::Include(const Row& inLine, int inDepth, Row* outTokens)
{
    if (inDepth >= kDeepestInclude)
        throw RezError(inLine[0].place, "files include one another too deeply");
    const std::string path = IncludedPath(inLine);
    std::string found, bytes;
    if (Load(inLine[0].place, path, &found, &bytes))
        RunText(Keep(found, TextFromBytes(bytes)), inDepth + 1, outTokens);
    else if (!IsKnownFile(path))
        throw RezError(inLine[2].place, "cannot read '" + path + "'");
}

bool Preprocessor::Load(Place inFrom, const std::string& inPath, std::string* outFound,
                        std::string* outBytes) const
{
    const std::filesystem::path path(inPath);
    std::vector<std::filesystem::path> places;
    if (inFrom.source)
        places.push_back(std::filesystem::path(inFrom.source->name).parent_path() / path);
    for (const std::string& folder : fFolders)
        places.push_back(folder / path);
    for (const auto& place : places)
        if (fLoad(place.string(), outBytes)) {
            *outFound = place.string();
            return true;
        }
    return false;
}

} // namespace lampblack::rsrc
