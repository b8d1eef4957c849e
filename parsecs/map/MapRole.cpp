#include "parsecs/map/MapRole.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

template <std::size_t size>
bool IsOneOf(std::string_view word, const std::array<std::string_view, size>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

constexpr std::array<std::string_view, 6> kTypeWords{"namespace", "class", "struct",
                                                     "interface", "enum",  "record"};
constexpr std::array<std::string_view, 13> kModifiers{
    "public",  "private",  "protected", "internal", "static", "abstract", "sealed",
    "partial", "readonly", "unsafe",    "new",      "file",   "ref"};
// What may stand before a parenthesis without being called.
constexpr std::array<std::string_view, 17> kNotCalled{
    "if",   "while",  "for",     "foreach", "switch",  "catch",     "using",  "lock",  "fixed",
    "when", "typeof", "default", "sizeof",  "checked", "unchecked", "return", "nameof"};

bool IsWordByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool letter = (byte | 0x20U) >= 'a' && (byte | 0x20U) <= 'z';
    return letter || (byte >= '0' && byte <= '9') || byte == '_' || byte >= 0x80;
}

// Takes the next word off the text; empty where none begins it.
std::string_view TakeWord(std::string_view& text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\n')) text.remove_prefix(1);
    std::size_t size = 0;
    while (size < text.size() && IsWordByte(text[size])) ++size;
    const std::string_view word = text.substr(0, size);
    text.remove_prefix(size);
    return word;
}

bool OpensType(std::string_view text) {
    std::string_view word = TakeWord(text);
    while (IsOneOf(word, kModifiers)) word = TakeWord(text);
    return IsOneOf(word, kTypeWords);
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
    return !word.empty() && !IsOneOf(word, kNotCalled);
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

MapRole RoleOfOther(const Row& row) {
    if (OpensType(row.text)) return MapRole::Type;
    const bool block = row.last > row.id;
    if (block && !row.name.empty()) return MapRole::Variable;
    if (!block && row.kind == KindName::kDefine) return MapRole::Define;
    if (Calls(row.text)) return MapRole::Call;
    return block ? MapRole::Block : MapRole::Statement;
}

}  // namespace

MapRole RoleOf(const Row& row) {
    if (row.kind == KindName::kClass || row.kind == KindName::kNamespace) return MapRole::Type;
    if (row.kind == KindName::kFunction) return MapRole::Function;
    // A type inside of a class looks like a declaration of a variable.
    if (row.kind == KindName::kClassVar && !OpensType(row.text)) return MapRole::Variable;
    if (row.kind == KindName::kLogic) return MapRole::Branch;
    if (row.kind == KindName::kLoop) return MapRole::Loop;
    if (row.kind == KindName::kPreprocessor) return MapRole::Symbols;
    if (row.kind.starts_with("error")) return MapRole::Error;
    return RoleOfOther(row);
}
