#include "rows/Signature.h"

#include "rows/Tokens.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

bool HasParameters(Declares what) {
    return IsFunction(what) || IsType(what) || what == Declares::Indexer;
}

std::size_t EndOfName(const Row& row) {
    return static_cast<std::size_t>(row.name.data() + row.name.size() - row.text.data());
}

// From behind the name to the parameters, or to what stands in their place.
void SkipToParameters(Tokens& tokens) {
    if (tokens.Peek() == '<') tokens.SkipTypeArguments();
    tokens.Peek();
}

// To the "=>" of a body, or the end.
void SkipToBody(Tokens& tokens) {
    while (const char c = tokens.Peek()) {
        if (tokens.IsNext("=>")) return;
        if (c == '(' || c == '[') {
            tokens.SkipBrackets();
        } else if (c == '"' || c == '\'') {
            tokens.SkipLiteral();
        } else {
            tokens.Skip();
        }
    }
}

}  // namespace

std::string_view ParametersOf(const Row& row) {
    if (!HasParameters(row.declares)) return {};
    Tokens tokens(row.text.substr(EndOfName(row)));
    SkipToParameters(tokens);
    const char open = tokens.Peek();
    const std::string_view parameters = tokens.Rest();
    if (open != '(' && open != '[') return {};
    const std::size_t before = tokens.position();
    tokens.SkipBrackets();
    return parameters.substr(0, tokens.position() - before);
}

std::string_view SignatureOf(const Row& row) {
    if (IsType(row.declares)) return row.text;
    const std::size_t name = EndOfName(row);
    Tokens tokens(row.text.substr(name));
    if (HasParameters(row.declares)) {
        SkipToParameters(tokens);
        const char open = tokens.Peek();
        if (open == '(' || open == '[') tokens.SkipBrackets();
        if (row.declares != Declares::Constructor) SkipToBody(tokens);
    }
    // One more name of a declaration that was begun before: ", b".
    const std::size_t begin = row.text.starts_with(',') ? name - row.name.size() : 0;
    return rtrim(row.text.substr(begin, name + tokens.position() - begin));
}

}  // namespace plugincs
