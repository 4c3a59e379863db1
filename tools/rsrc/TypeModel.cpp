#include "TypeModel.h"

#include <algorithm>

namespace lampblack::rsrc {

namespace {

void CollectNames(const std::vector<Token>& inTokens, std::set<std::string>* ioNames)
{
    for (const Token& token : inTokens)
        if (token.kind == Token::Kind::Identifier)
            ioNames->insert(SmallLetters(token.text));
}

void CollectNames(const Fields& inFields, std::set<std::string>* ioNames)
{
    for (const Field& field : inFields) {
        CollectNames(field.fixed, ioNames);
        CollectNames(field.countTokens, ioNames);
        CollectNames(field.fields, ioNames);
        for (const Case& one : field.cases)
            CollectNames(one.fields, ioNames);
    }
}

} // namespace

void TypeTable::Declare(OSType inType, Fields inFields)
{
    fShapes[inType].push_back({ true, 0, 0, std::make_shared<const Fields>(std::move(inFields)) });
}

void TypeTable::Declare(OSType inType, SInt16 inFirst, SInt16 inLast, Fields inFields)
{
    fShapes[inType].push_back(
        { false, inFirst, inLast, std::make_shared<const Fields>(std::move(inFields)) });
}

const Fields* TypeTable::Find(OSType inType, SInt16 inID) const
{
    const auto type = fShapes.find(inType);
    if (type == fShapes.end())
        return nullptr;
    const Fields* general = nullptr;
    for (const Shape& shape : type->second)
        general = shape.isGeneral ? shape.fields.get() : general;
    const Fields* own = general;
    for (const Shape& shape : type->second)
        if (!shape.isGeneral && inID >= shape.first && inID <= shape.last)
            own = shape.fields.get();
    return own;
}

bool TypeTable::Copy(OSType inFrom, OSType inTo)
{
    const auto from = fShapes.find(inFrom);
    if (from == fShapes.end())
        return false;
    const std::vector<Shape> shapes = from->second;
    fShapes[inTo] = shapes;
    return true;
}

bool IsSilent(const Field& inField)
{
    return inField.kind == Field::Kind::Fill || inField.kind == Field::Kind::Align ||
           inField.kind == Field::Kind::Label || !inField.fixed.empty();
}

bool TakesValues(const Fields& inFields)
{
    return std::any_of(inFields.begin(), inFields.end(), [](const Field& field) {
        return !IsSilent(field) && field.kind != Field::Kind::Optional;
    });
}

const Constant* FindConstant(const Field& inField, std::string_view inName)
{
    for (const Constant& constant : inField.constants)
        if (SameWord(constant.name, inName))
            return &constant;
    return nullptr;
}

std::set<std::string> MentionedNames(const Fields& inFields)
{
    std::set<std::string> names;
    CollectNames(inFields, &names);
    return names;
}

std::string SmallLetters(std::string_view inName)
{
    std::string name(inName);
    for (char& letter : name)
        letter = letter >= 'A' && letter <= 'Z' ? (char)(letter + 32) : letter;
    return name;
}

} // namespace lampblack::rsrc
