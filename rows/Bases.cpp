#include "rows/Bases.h"

#include "rows/Tokens.h"

namespace plugincs {

namespace {

// Steps over what stands in brackets of any kind; false where there are none.
bool SkipGroup(Tokens& tokens) {
    const char c = tokens.Peek();
    if (c == '<') return tokens.SkipTypeArguments();
    if (c != '(' && c != '[') return false;
    tokens.SkipBrackets();
    return true;
}

// Up to behind the colon that begins the list; false where there is none before the constraints.
bool SkipToList(Tokens& tokens) {
    while (const char c = tokens.Peek()) {
        if (SkipGroup(tokens)) continue;
        const std::string_view word = tokens.TakeWord();
        if (word == "where") return false;
        if (word.empty()) tokens.Skip();
        if (c == ':') return true;
    }
    return false;
}

}  // namespace

// Parameters and type arguments hold colons and commas of their own.
std::vector<std::string_view> BasesOf(std::string_view header) {
    std::vector<std::string_view> bases;
    Tokens tokens(header);
    if (!SkipToList(tokens)) return bases;
    std::string_view base;
    bool qualified = true;  // a name is to come: none did, or a dot after one
    while (const char c = tokens.Peek()) {
        if (SkipGroup(tokens)) continue;
        if (BeginsWord(c) || c == '@') {
            if (!qualified) break;  // "where"
            base = tokens.TakeWord();
            qualified = base.empty();
            continue;
        }
        if (c == ',' && !base.empty()) bases.push_back(base);
        qualified = true;
        tokens.Skip();
    }
    if (!base.empty()) bases.push_back(base);
    return bases;
}

}  // namespace plugincs
