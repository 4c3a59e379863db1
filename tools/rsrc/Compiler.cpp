#include "Compiler.h"

#include "BuiltinTypes.h"
#include "Expression.h"
#include "TypeParser.h"
#include "ValueEncoder.h"

#include <resources/Container.h>

#include <algorithm>

namespace lampblack::rsrc {

namespace {

constexpr size_t kMostProblems = 20;

struct AttributeWord {
    const char* word;
    UInt8 bits;
};
// The second word of a pair says that the attribute is absent, as it is unless said otherwise.
constexpr AttributeWord kAttributes[] = { { "sysheap", 64 },     { "appheap", 0 },     { "purgeable", 32 },
                                          { "nonpurgeable", 0 }, { "locked", 16 },     { "unlocked", 0 },
                                          { "protected", 8 },    { "unprotected", 0 }, { "preload", 4 },
                                          { "nonpreload", 0 },   { "changed", 2 },     { "unchanged", 0 } };

std::optional<int64_t> AttributeValue(const Token& inName, TokenCursor&)
{
    for (const AttributeWord& attribute : kAttributes)
        if (inName.IsWord(attribute.word))
            return attribute.bits;
    return std::nullopt;
}

std::optional<int64_t> NoNames(const Token&, TokenCursor&)
{
    return std::nullopt;
}

} // namespace

Compiler::Compiler(FileLoader inLoad, std::vector<std::string> inFolders)
    : fPreprocessor(std::move(inLoad), std::move(inFolders)), fTypes(BuiltinTypes())
{
}

bool Compiler::Compile(const std::string& inName, const std::string& inUtf8,
                       std::vector<Resource>* ioResources, std::vector<std::string>* outProblems)
{
    const size_t before = outProblems->size();
    fMade.clear();
    fPlaces.clear();
    std::vector<Token> tokens;
    try {
        tokens = fPreprocessor.Run(inName, inUtf8);
    } catch (const RezError& error) {
        outProblems->push_back(error.what());
        return false;
    }
    TokenCursor cursor(tokens, tokens.empty() ? Place() : tokens.back().place);
    while (!cursor.AtEnd() && outProblems->size() < before + kMostProblems) {
        try {
            Statement(cursor);
        } catch (const RezError& error) {
            outProblems->push_back(error.what());
            Recover(cursor);
        }
    }
    Merge(std::move(fMade), ioResources);
    return outProblems->size() == before;
}

void Compiler::Recover(TokenCursor& ioTokens)
{
    while (!ioTokens.AtEnd()) {
        const Token token = ioTokens.Next();
        if (token.Is(';') && ioTokens.Depth() <= 0)
            return;
    }
}

void Compiler::Statement(TokenCursor& ioTokens)
{
    if (ioTokens.Accept(';'))
        return;
    if (ioTokens.AcceptWord("data"))
        Data(ioTokens);
    else if (ioTokens.AcceptWord("resource"))
        Typed(ioTokens);
    else if (ioTokens.AcceptWord("type"))
        ReadTypeDeclaration(ioTokens, &fTypes);
    else if (ioTokens.AcceptWord("include"))
        IncludeFork(ioTokens);
    else if (ioTokens.AcceptWord("read"))
        ReadData(ioTokens);
    else
        ioTokens.Fail("data, resource, type, include or read");
}

void Compiler::Data(TokenCursor& ioTokens)
{
    Resource resource = Header(ioTokens);
    ioTokens.Expect('{', "'{' before the data");
    while (!ioTokens.Peek().Is('}')) {
        if (ioTokens.Peek().kind != Token::Kind::String)
            ioTokens.Fail("a string, hexadecimal digits such as $\"0A0B\", or '}'");
        const std::string text = ioTokens.Next().text;
        resource.data.insert(resource.data.end(), text.begin(), text.end());
        if (!ioTokens.Accept(','))
            ioTokens.Accept(';');
    }
    ioTokens.Expect('}', "'}'");
    ioTokens.Expect(';', "';' after the data");
    Add(std::move(resource));
}

void Compiler::Typed(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    Resource resource = Header(ioTokens);
    const auto type = fTypes.find(resource.type);
    if (type == fTypes.end())
        throw RezError(place, "the type '" + TypeText(resource.type) +
                                  "' has not been declared; use data, or declare it with type");
    ioTokens.Expect('{', "'{' before the values");
    resource.data = ValueEncoder(ioTokens, resource.type).Encode(type->second);
    ioTokens.Expect('}', "'}'");
    ioTokens.Expect(';', "';' after the resource");
    Add(std::move(resource));
}

Resource Compiler::Header(TokenCursor& ioTokens)
{
    Resource resource;
    resource.place = ioTokens.Peek().place;
    resource.type = ReadTypeCode(ioTokens);
    ioTokens.Expect('(', "'(' and the ID");
    resource.id = ReadID(ioTokens);
    while (ioTokens.Accept(','))
        Attribute(ioTokens, &resource);
    ioTokens.Expect(')', "',' or ')' after the ID");
    return resource;
}

void Compiler::Attribute(TokenCursor& ioTokens, Resource* ioResource)
{
    const Token token = ioTokens.Peek();
    if (token.kind == Token::Kind::String && !ioResource->hasName) {
        while (ioTokens.Peek().kind == Token::Kind::String)
            ioResource->name += ioTokens.Next().text;
        if (ioResource->name.size() > 255)
            throw RezError(token.place, "a name has at most 255 characters");
        ioResource->hasName = !ioResource->name.empty();
        return;
    }
    const char* what =
        ioResource->hasName ? "attributes such as purgeable" : "a name or attributes such as purgeable";
    const int64_t bits = ReadExpression(ioTokens, AttributeValue, what);
    if (bits < 0 || bits > 0xFF)
        throw RezError(token.place, "attributes are a number from 0 to 255");
    ioResource->attributes |= (UInt8)bits;
}

SInt16 Compiler::ReadID(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    const int64_t id = ReadExpression(ioTokens, NoNames, "an ID");
    if (id < -32768 || id > 32767)
        throw RezError(place, "an ID is a number from -32768 to 32767");
    return (SInt16)id;
}

std::string Compiler::LoadNamed(TokenCursor& ioTokens)
{
    const Token name = ioTokens.Peek();
    if (name.kind != Token::Kind::String)
        ioTokens.Fail("a file name in quotes");
    ioTokens.Next();
    std::string found, bytes;
    if (!fPreprocessor.Load(name.place, name.text, &found, &bytes))
        throw RezError(name.place, "cannot read '" + name.text + "'");
    return bytes;
}

void Compiler::ReadData(TokenCursor& ioTokens)
{
    Resource resource = Header(ioTokens);
    const std::string bytes = LoadNamed(ioTokens);
    resource.data.assign(bytes.begin(), bytes.end());
    ioTokens.Expect(';', "';' after the file name");
    Add(std::move(resource));
}

void Compiler::IncludeFork(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    const std::string bytes = LoadNamed(ioTokens);
    OSType type = 0;
    std::optional<SInt16> id;
    if (ioTokens.Peek().kind == Token::Kind::Literal) {
        type = ReadTypeCode(ioTokens);
        if (ioTokens.Accept('(')) {
            id = ReadID(ioTokens);
            ioTokens.Expect(')', "')' after the ID");
        }
    }
    ioTokens.Expect(';', "';' after the file name");

    const auto container = resources::ReadContainer({ (const uint8_t*)bytes.data(), bytes.size() });
    std::vector<Resource> included;
    std::vector<std::string> problems = container.problems;
    if (!container.hasResourceFork || !ReadFork(container.resourceFork, &included, &problems))
        problems.push_back("not a resource file");
    if (!problems.empty())
        throw RezError(place, "cannot include this file: " + problems.front());
    std::erase_if(included, [&](const Resource& resource) {
        return (type && resource.type != type) || (id && resource.id != *id);
    });
    Merge(std::move(included), &fMade);
}

void Compiler::Add(Resource inResource)
{
    const auto [known, isNew] = fPlaces.try_emplace({ inResource.type, inResource.id }, inResource.place);
    if (!isNew)
        throw RezError(inResource.place, KeyText(inResource.type, inResource.id) +
                                             " was defined before, at " + DescribePlace(known->second));
    fMade.push_back(std::move(inResource));
}

} // namespace lampblack::rsrc
