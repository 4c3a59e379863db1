#include "Compiler.h"

#include "BuiltinTypes.h"
#include "TypeParser.h"
#include "ValueEncoder.h"

#include <foundation/MacRoman.h>

#include <algorithm>

namespace lampblack::rsrc {

namespace {

constexpr size_t kMostProblems = 20;

} // namespace

Compiler::Compiler(FileLoader inLoad, std::vector<std::string> inFolders)
    : fPreprocessor(std::move(inLoad), std::move(inFolders)),
      fTypes(BuiltinTypes()),
      fNumbers(ResolveNames(fNames)),
      fTexts([this](Place inPlace, const std::string& inPath) { return Load(inPlace, inPath); }, fNumbers)
{
}

bool Compiler::Compile(const std::string& inName, const std::string& inUtf8,
                       std::vector<Resource>* ioResources, std::vector<std::string>* outProblems)
{
    const size_t before = outProblems->size();
    fMade.clear();
    fPlaces.clear();
    fEarlier = ioResources;
    std::vector<Token> tokens;
    try {
        tokens = fPreprocessor.Run(inName, inUtf8);
    } catch (const RezError& error) {
        outProblems->push_back(error.what());
        return false;
    }
    TokenCursor cursor(tokens, tokens.empty() ? Place() : tokens.back().place);
    while (!cursor.AtEnd() && outProblems->size() < before + kMostProblems) {
        fMayRepeat = false;
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
    static constexpr struct {
        const char* word;
        void (Compiler::*read)(TokenCursor&);
    } kStatements[] = {
        { "data", &Compiler::Data },           { "resource", &Compiler::Typed },
        { "include", &Compiler::IncludeFork }, { "read", &Compiler::ReadData },
        { "delete", &Compiler::Delete },       { "change", &Compiler::Change },
        { "enum", &Compiler::Enumeration },    { "duplicate", &Compiler::Duplicate },
    };
    if (ioTokens.Accept(';'))
        return;
    if (ioTokens.AcceptWord("type"))
        return ReadTypeDeclaration(ioTokens, fNames, &fTypes);
    for (const auto& statement : kStatements)
        if (ioTokens.AcceptWord(statement.word))
            return (this->*statement.read)(ioTokens);
    ioTokens.Fail("data, resource, type, include or read (or delete, change, enum)");
}

// duplicate data ..., duplicate resource ...: the file holds the key more than once.
void Compiler::Duplicate(TokenCursor& ioTokens)
{
    fMayRepeat = true;
    if (ioTokens.AcceptWord("data"))
        Data(ioTokens);
    else if (ioTokens.AcceptWord("resource"))
        Typed(ioTokens);
    else
        ioTokens.Fail("data or resource");
}

void Compiler::Data(TokenCursor& ioTokens)
{
    Resource resource = Header(ioTokens);
    ioTokens.Expect('{', "'{' before the data");
    while (!ioTokens.Peek().Is('}')) {
        const std::string text =
            fTexts.ReadText(ioTokens, "a string, hexadecimal digits such as $\"0A0B\", or '}'");
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
    const Fields* fields = fTypes.Find(resource.type, resource.id);
    if (!fields)
        throw RezError(place, "the type '" + TypeText(resource.type) +
                                  "' has not been declared; use data, or declare it with type");
    ioTokens.Expect('{', "'{' before the values");
    const EncodeContext context = { { resource.type, resource.id, resource.attributes },
                                    &fNames,
                                    [this](const Token& inName, TokenCursor& ioArguments) {
                                        return fTexts.Evaluate(inName, ioArguments);
                                    },
                                    fNativeIsBig };
    ValueEncoder encoder(ioTokens, context);
    resource.data = encoder.Encode(*fields);
    ioTokens.Expect('}', "'}'");
    if (ioTokens.AcceptWord("patch"))
        Patch(ioTokens, encoder.FillMask(), &resource.data);
    ioTokens.Expect(';', "';' after the resource");
    Add(std::move(resource));
}

// patch { 12, $"FF"; ... }: bytes that the type fills with zeros and a file does not.
void Compiler::Patch(TokenCursor& ioTokens, const std::vector<uint8_t>& inFillMask,
                     std::vector<uint8_t>* ioData)
{
    ioTokens.Expect('{', "'{' before the bytes");
    while (!ioTokens.Peek().Is('}')) {
        const Place place = ioTokens.Peek().place;
        const int64_t at = ReadExpression(ioTokens, fNumbers, "the place of bytes, or '}'");
        ioTokens.Expect(',', "',' and the bytes");
        const std::string bytes = fTexts.ReadText(ioTokens, "bytes such as $\"0A0B\"");
        if (at < 0 || (uint64_t)at > ioData->size() || bytes.size() > ioData->size() - (size_t)at)
            throw RezError(place, "the resource has " + std::to_string(ioData->size()) + " bytes");
        for (size_t i = 0; i < bytes.size(); ++i) {
            uint8_t& byte = (*ioData)[(size_t)at + i];
            if (((uint8_t)bytes[i] ^ byte) & ~inFillMask[(size_t)at + i])
                throw RezError(place, "byte " + std::to_string((size_t)at + i) +
                                          " is none that the type fills up; a patch does not outlive a "
                                          "change of the values before it");
            byte = (uint8_t)bytes[i];
        }
        if (!ioTokens.Accept(';') && !ioTokens.Peek().Is('}'))
            ioTokens.Fail("';' or '}'");
    }
    ioTokens.Expect('}', "'}'");
}

Resource Compiler::Header(TokenCursor& ioTokens)
{
    Resource resource;
    resource.place = ioTokens.Peek().place;
    resource.type = ReadTypeCode(ioTokens);
    ioTokens.Expect('(', "'(' and the ID");
    resource.id = ReadID(ioTokens, fNumbers);
    while (ioTokens.Accept(',')) {
        const Place place = ioTokens.Peek().place;
        if (resource.hasName || !TextFunctions::AtText(ioTokens)) {
            resource.attributes |=
                ReadAttributes(ioTokens, resource.hasName ? "attributes such as purgeable"
                                                          : "a name or attributes such as purgeable");
            continue;
        }
        resource.name = fTexts.ReadText(ioTokens, "a name");
        resource.hasName = true;
        if (resource.name.size() > 255)
            throw RezError(place, "a name has at most 255 characters");
    }
    ioTokens.Expect(')', "',' or ')' after the ID");
    fTexts.SetResource(resource);
    return resource;
}

std::string Compiler::Load(Place inPlace, const std::string& inPath) const
{
    std::string found, bytes;
    if (!fPreprocessor.Load(inPlace, inPath, &found, &bytes))
        throw RezError(inPlace, "cannot read '" + inPath + "'");
    return bytes;
}

std::string Compiler::LoadNamed(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    return Load(place, foundation::Utf8FromMacRoman(fTexts.ReadText(ioTokens, "a file name in quotes")));
}

void Compiler::ReadData(TokenCursor& ioTokens)
{
    Resource resource = Header(ioTokens);
    const std::string bytes = LoadNamed(ioTokens);
    resource.data.assign(bytes.begin(), bytes.end());
    ioTokens.Expect(';', "';' after the file name");
    Add(std::move(resource));
}

// include "file" [[not] 'TYPE' [(ID, FIRST:LAST or "name")] [as 'TYPE' [(ID, "name", attributes)]]];
void Compiler::IncludeFork(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    const std::string bytes = LoadNamed(ioTokens);
    Selection selection;
    const bool isInverted = ioTokens.AcceptWord("not");
    if (isInverted || ioTokens.Peek().kind == Token::Kind::Literal)
        selection = ReadSelection(ioTokens, fNumbers, fTexts);
    selection.isInverted = isInverted;
    std::optional<Renaming> renaming;
    if (selection.type && !isInverted && ioTokens.AcceptWord("as"))
        renaming = ReadRenaming(ioTokens, fNumbers, fTexts);
    ioTokens.Expect(';', "';' after the file name");

    std::vector<Resource> included = ForkOf(bytes, place);
    std::erase_if(included, [&](const Resource& resource) { return !selection.Matches(resource); });
    const bool meansOne = selection.name || (selection.hasIDs && selection.first == selection.last);
    if (included.empty() && meansOne && !isInverted)
        throw RezError(place, "this file has no such resource");
    if (renaming)
        for (Resource& resource : included)
            renaming->Apply(selection, &resource);
    Merge(std::move(included), &fMade);
}

template <class Action>
void Compiler::ForSelected(const Selection& inSelection, Place inPlace, Action&& inAction)
{
    size_t count = 0;
    for (std::vector<Resource>* resources : { fEarlier, &fMade })
        for (Resource& resource : *resources)
            if (inSelection.Matches(resource)) {
                inAction(resource);
                ++count;
            }
    if (count == 0)
        throw RezError(inPlace, "no resource so far is one of these");
}

void Compiler::Delete(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    const Selection selection = ReadSelection(ioTokens, fNumbers, fTexts);
    ioTokens.Expect(';', "';' after the type or ID");
    ForSelected(selection, place, [this](Resource& resource) {
        fPlaces.erase({ resource.type, resource.id });
    });
    for (std::vector<Resource>* resources : { fEarlier, &fMade })
        std::erase_if(*resources, [&](const Resource& resource) { return selection.Matches(resource); });
}

// change 'TYPE' [(ID)] to 'TYPE' [(ID, "name", attributes)];
void Compiler::Change(TokenCursor& ioTokens)
{
    const Place place = ioTokens.Peek().place;
    const Selection selection = ReadSelection(ioTokens, fNumbers, fTexts);
    if (!ioTokens.AcceptWord("to"))
        ioTokens.Fail("'to' and a type");
    const Renaming renaming = ReadRenaming(ioTokens, fNumbers, fTexts);
    ioTokens.Expect(';', "';' after the type or ID");
    ForSelected(selection, place, [&](Resource& resource) {
        fPlaces.erase({ resource.type, resource.id });
        renaming.Apply(selection, &resource);
    });
}

// enum { NAME, NAME = value }; as in C.
void Compiler::Enumeration(TokenCursor& ioTokens)
{
    if (ioTokens.Peek().kind == Token::Kind::Identifier)
        ioTokens.Next();
    ioTokens.Expect('{', "'{' and names");
    int64_t next = 0;
    while (!ioTokens.Peek().Is('}')) {
        if (ioTokens.Peek().kind != Token::Kind::Identifier)
            ioTokens.Fail("a name or '}'");
        const std::string name = ioTokens.Next().text;
        if (ioTokens.Accept('='))
            next = ReadExpression(ioTokens, fNumbers, "a number");
        fNames[name] = next;
        next = (int64_t)((uint64_t)next + 1);
        if (!ioTokens.Accept(',') && !ioTokens.Peek().Is('}'))
            ioTokens.Fail("',' or '}'");
    }
    ioTokens.Expect('}', "'}'");
    ioTokens.Expect(';', "';' after the names");
}

void Compiler::Add(Resource inResource)
{
    const auto [known, isNew] = fPlaces.try_emplace({ inResource.type, inResource.id }, inResource.place);
    if (!isNew && !fMayRepeat)
        throw RezError(inResource.place, KeyText(inResource.type, inResource.id) +
                                             " was defined before, at " + DescribePlace(known->second));
    fMade.push_back(std::move(inResource));
}

} // namespace lampblack::rsrc
