#include "parsecs/map/MapRole.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

// What may stand before a parenthesis without being called.
constexpr std::array<std::string_view, 17> kNotCalled{
    "if",   "while",  "for",     "foreach", "switch",  "catch",     "using",  "lock",  "fixed",
    "when", "typeof", "default", "sizeof",  "checked", "unchecked", "return", "nameof"};

bool IsWordByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool letter = (byte | 0x20U) >= 'a' && (byte | 0x20U) <= 'z';
    return letter || (byte >= '0' && byte <= '9') || byte == '_' || byte >= 0x80;
}

// The end of the literal that begins at `i`, or of the text.
std::size_t SkipLiteral(std::string_view text, std::size_t i) {
    const char quote = text[i];
    for (++i; i < text.size() && text[i] != quote; ++i) {
        if (text[i] == '\\') ++i;
    }
    return i;
}

bool EndsWithCallee(std::string_view before) {
    while (!before.empty() && before.back() == ' ') before.remove_suffix(1);
    if (before.ends_with('>')) return !before.ends_with("=>") && before.size() > 1;
    std::size_t begin = before.size();
    while (begin > 0 && IsWordByte(before[begin - 1])) --begin;
    const std::string_view word = before.substr(begin);
    return !word.empty() &&
           std::find(kNotCalled.begin(), kNotCalled.end(), word) == kNotCalled.end();
}

bool Calls(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"' || text[i] == '\'') {
            i = SkipLiteral(text, i);
        } else if (text[i] == '(' && EndsWithCallee(text.substr(0, i))) {
            return true;
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
    switch (row.declares) {
        case Declaration::Kind::Namespace:
        case Declaration::Kind::Type: return MapRole::Type;
        case Declaration::Kind::Function: return MapRole::Function;
        case Declaration::Kind::Value: return MapRole::Variable;
        case Declaration::Kind::None: break;
    }
    return RoleOfNameless(row);
}
