#include "rows/MapRole.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "rows/Tokens.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

namespace {

// What may stand before a parenthesis without being called.
constexpr std::array<std::string_view, 17> kNotCalled{
    "if",   "while",  "for",     "foreach", "switch",  "catch",     "using",  "lock",  "fixed",
    "when", "typeof", "default", "sizeof",  "checked", "unchecked", "return", "nameof"};

bool IsCalled(std::string_view word) {
    return std::find(kNotCalled.begin(), kNotCalled.end(), word) == kNotCalled.end();
}

// Whether a parenthesis follows a name, with or without type arguments.
bool Calls(std::string_view text) {
    Tokens tokens(text);
    bool callee = false;  // ends here
    while (const char c = tokens.Peek()) {
        if (c == '(' && callee) return true;
        const bool wasCallee = callee;
        callee = false;
        if (c == '"' || c == '\'') {
            tokens.SkipLiteral();
        } else if (BeginsWord(c) || c == '@') {
            const std::string_view word = tokens.TakeWord();
            if (word.empty()) tokens.Skip();
            callee = !word.empty() && IsCalled(word);
        } else if (c != '<' || !wasCallee || !(callee = tokens.SkipTypeArguments())) {
            tokens.Skip();
        }
    }
    return false;
}

MapRole RoleOfNameless(const Row& row) {
    const bool block = row.last > row.id;
    if (row.kind == KindName::kLogic) return MapRole::Branch;
    if (row.kind == KindName::kLoop) return MapRole::Loop;
    if (row.kind == KindName::kPreprocessor) return MapRole::Symbols;
    if (row.kind.starts_with("error")) return MapRole::Error;
    if (row.kind == KindName::kDefine && !block) return MapRole::Define;
    if (Calls(row.text)) return MapRole::Call;
    return block ? MapRole::Block : MapRole::Statement;
}

}  // namespace

MapRole RoleOf(const Row& row) {
    if (row.declares == Declares::Namespace || IsType(row.declares)) return MapRole::Type;
    if (IsFunction(row.declares)) return MapRole::Function;
    if (IsValue(row.declares)) return MapRole::Variable;
    return RoleOfNameless(row);
}

}  // namespace plugincs
