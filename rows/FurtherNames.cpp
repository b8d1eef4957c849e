#include "rows/FurtherNames.h"

#include "rows/Tokens.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

// To the next comma outside of brackets, or the end.
void SkipValue(Tokens& tokens) {
    while (const char c = tokens.Peek()) {
        if (c == ',') return;
        if (c == '"' || c == '\'') {
            tokens.SkipLiteral();
        } else if (c == '(' || c == '[') {
            tokens.SkipBrackets();
        } else if (c == '<') {
            Tokens ahead = tokens;
            ahead.SkipTypeArguments() ? void(tokens = ahead) : tokens.Skip();
        } else {
            tokens.Skip();
        }
    }
}

}  // namespace

std::vector<FurtherName> FindFurtherNames(std::string_view rest) {
    std::vector<FurtherName> names;
    Tokens tokens(rest);
    SkipValue(tokens);
    while (tokens.Peek() == ',') {
        tokens.Skip();
        const std::string_view name = tokens.TakeWord();
        const char next = tokens.Peek();
        SkipValue(tokens);
        const bool isName = next == '\0' || next == '=' || next == ',' || next == '[';
        if (!name.empty() && isName) names.push_back({name, rtrim(tokens.Since(name))});
    }
    return names;
}

}  // namespace plugincs
