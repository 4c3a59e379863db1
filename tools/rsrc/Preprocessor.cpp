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
    fMacros[name] = Tokenize(Keep("-D " + name, value));
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
                Expand(tokens[i], within, outTokens);
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

void Preprocessor::Expand(const Token& inToken, std::set<std::string>& ioWithin, Row* outTokens)
{
    const auto macro = inToken.kind == Token::Kind::Identifier ? fMacros.find(inToken.text) : fMacros.end();
    if (macro == fMacros.end() || ioWithin.contains(inToken.text)) {
        outTokens->push_back(inToken);
        return;
    }
    if (ioWithin.size() >= kDeepestName)
        throw RezError(inToken.place, "names stand for one another too deeply");
    ioWithin.insert(inToken.text);
    for (Token token : macro->second) {
        if (++fExpanded > kMostTokens)
            throw RezError(inToken.place, "this name stands for too many words");
        token.place = inToken.place; // messages name the use, not the definition
        Expand(token, ioWithin, outTokens);
    }
    ioWithin.erase(inToken.text);
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
    if (inLine.size() > 3 && inLine[3].Is('(') && inLine[3].touchesPrevious)
        throw RezError(inLine[3].place, "names with arguments are not supported");
    fMacros[inLine[2].text] = Row(inLine.begin() + 3, inLine.end());
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
    for (size_t i = 2; i < inLine.size(); ++i) {
        std::set<std::string> within;
        const bool isOperand =
            inLine[i - 1].text == "defined" || (inLine[i - 1].Is('(') && inLine[i - 2].text == "defined");
        if (isOperand)
            words.push_back(inLine[i]);
        else
            Expand(inLine[i], within, &words);
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
