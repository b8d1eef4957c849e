#include "parsecs/forms/strict/StrictJson.h"

#include <cstdio>

#include "rows/Utf8.h"

namespace plugincs {

namespace {

// Within a string. Returns how many bytes were taken from the rest.
std::size_t PutRepaired(std::string_view rest, std::string& strict) {
    if (rest.front() == '\\') {
        strict += rest.substr(1, 1) == "'" ? rest.substr(1, 1) : rest.substr(0, 2);
        return 2;
    }
    if (static_cast<unsigned char>(rest.front()) < ' ') {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(rest.front()));
        strict += escape;
        return 1;
    }
    const std::size_t length = SequenceLength(rest);
    strict += length == 0 ? kReplacement : rest.substr(0, length);
    return length == 0 ? 1 : length;
}

}  // namespace

std::string StrictJson(std::string_view text) {
    std::string strict;
    strict.reserve(text.size());
    bool inString = false;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '"') inString = !inString;
        if (inString && text[at] != '"') {
            at += PutRepaired(text.substr(at), strict);
        } else {
            strict += text[at++];
        }
    }
    return strict;
}

}  // namespace plugincs
