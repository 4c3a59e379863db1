#include "ValueText.h"

namespace lampblack::rsrc {

namespace {

constexpr size_t kLongestInline = 96;

using Values = std::vector<ShownValue>;

std::string Indent(int inDepth)
{
    return std::string((size_t)inDepth * 4, ' ');
}

bool InlineValues(const Values&, const char* inSeparator, std::string* outText);

// Answers false when the value needs lines of its own.
bool InlineValue(const ShownValue& inValue, std::string* outText)
{
    if (inValue.kind != ShownValue::Kind::Array) {
        if (inValue.lines.size() > 1)
            return false;
        *outText = inValue.lines.empty() ? "" : inValue.lines[0];
        if (inValue.kind == ShownValue::Kind::Plain)
            return true;
        *outText += ' ';
    }
    std::string inside;
    for (size_t i = 0; i < inValue.elements.size(); ++i) {
        std::string element;
        const bool isPlain = inValue.kind == ShownValue::Kind::Case || inValue.elements[i].size() == 1;
        if (!isPlain || !InlineValues(inValue.elements[i], ", ", &element))
            return false;
        inside += (i ? "; " : "") + element;
        if (inside.size() > kLongestInline)
            return false;
    }
    *outText += inside.empty() ? "{ }" : "{ " + inside + " }";
    return true;
}

bool InlineValues(const Values& inValues, const char* inSeparator, std::string* outText)
{
    for (size_t i = 0; i < inValues.size(); ++i) {
        std::string text;
        if (!InlineValue(inValues[i], &text))
            return false;
        *outText += (i ? inSeparator : "") + text;
    }
    return outText->size() <= kLongestInline || inValues.size() == 1;
}

class Printer {
public:
    std::string Take() { return std::move(fText); }

    // Each value on lines of its own, with its label behind it.
    void Values(const rsrc::Values& inValues, int inDepth)
    {
        for (size_t i = 0; i < inValues.size(); ++i)
            Value(inValues[i], i + 1 < inValues.size() ? "," : "", inDepth);
    }

private:
    void Value(const ShownValue& inValue, const std::string& inEnd, int inDepth)
    {
        const std::string comment = inValue.label.empty() ? "" : "  // " + inValue.label;
        std::string text;
        if (InlineValue(inValue, &text)) {
            fText += Indent(inDepth) + text + inEnd + (inValue.explains ? "" : comment) + "\n";
            return;
        }
        if (inValue.kind == ShownValue::Kind::Plain) {
            for (size_t i = 0; i < inValue.lines.size(); ++i)
                fText +=
                    Indent(inDepth) + inValue.lines[i] + (i + 1 < inValue.lines.size() ? "" : inEnd) + "\n";
            return;
        }
        const std::string name = inValue.kind == ShownValue::Kind::Case ? inValue.lines[0] + " " : "";
        fText += Indent(inDepth) + name + "{" + (name.empty() ? comment : "") + "\n";
        for (size_t i = 0; i < inValue.elements.size(); ++i)
            Element(inValue.elements[i], i + 1 < inValue.elements.size(), inDepth + 1);
        fText += Indent(inDepth) + "}" + inEnd + "\n";
    }

    void Element(const rsrc::Values& inValues, bool inMoreFollow, int inDepth)
    {
        std::string text;
        if (InlineValues(inValues, ", ", &text)) {
            fText += Indent(inDepth) + text + (inMoreFollow ? ";\n" : "\n");
            return;
        }
        for (size_t i = 0; i < inValues.size(); ++i)
            Value(inValues[i], i + 1 < inValues.size() ? "," : inMoreFollow ? ";" : "", inDepth);
    }

    std::string fText;
};

} // namespace

std::string StatementText(const std::vector<ShownValue>& inValues)
{
    Printer printer;
    printer.Values(inValues, 1);
    return printer.Take();
}

} // namespace lampblack::rsrc
