#include "parsecs/index/Bases.h"

#include <algorithm>

namespace {

std::string_view BareName(std::string_view base) {
    base = base.substr(0, base.find_first_of("<("));
    while (base.ends_with(' ')) base.remove_suffix(1);
    const std::size_t qualified = base.find_last_of(".: ");
    return qualified == std::string_view::npos ? base : base.substr(qualified + 1);
}

// The position of the literal's closing quote, or of the last byte.
std::size_t EndOfLiteral(std::string_view text, std::size_t quote) {
    std::size_t i = quote + 1;
    while (i < text.size() && text[i] != '"') i += text[i] == '\\' ? 2 : 1;
    return std::min(i, text.size() - 1);
}

}  // namespace

// Parameters and type arguments hold colons and commas of their own.
std::vector<std::string_view> BasesOf(std::string_view header) {
    std::vector<std::string_view> bases;
    std::size_t begin = std::string_view::npos;  // of the base at hand
    const auto end = [&](std::size_t at) {
        if (begin != std::string_view::npos)
            bases.push_back(BareName(header.substr(begin, at - begin)));
        begin = at + 1;
    };
    int level = 0;
    for (std::size_t i = 0; i < header.size(); ++i) {
        const char c = header[i];
        if (c == '"') i = EndOfLiteral(header, i);
        if (c == '<' || c == '(') ++level;
        if (c == '>' || c == ')') --level;
        if (level != 0) continue;
        if (header.substr(i).starts_with("::")) {
            ++i;
        } else if (header.substr(i).starts_with(" where ")) {
            header = header.substr(0, i);
        } else if (begin == std::string_view::npos ? c == ':' : c == ',') {
            end(i);
        }
    }
    if (begin != std::string_view::npos) end(header.size());
    return bases;
}
