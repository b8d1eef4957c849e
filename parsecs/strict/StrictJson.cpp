#include "parsecs/strict/StrictJson.h"

#include <cstdio>

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// The byte at the index, or 0 behind the end.
unsigned ByteAt(std::string_view text, std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

// The length of the UTF-8 sequence that begins the text, or 0. The narrower ranges of the second
// byte rule out overlong forms, surrogates, and what lies above U+10FFFF.
std::size_t SequenceLength(std::string_view text) {
    const unsigned lead = ByteAt(text, 0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (ByteAt(text, 1) < lowest || ByteAt(text, 1) > highest) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    for (std::size_t index = 2; index < length; ++index) {
        if ((ByteAt(text, index) & 0xC0U) != 0x80) return 0;
    }
    return length;
}

// Within a string. Returns how many bytes were taken from the rest.
std::size_t PutRepaired(std::string_view rest, std::string& strict) {
    if (rest.front() == '\\') {
        strict += ByteAt(rest, 1) == '\'' ? rest.substr(1, 1) : rest.substr(0, 2);
        return 2;
    }
    if (ByteAt(rest, 0) < ' ') {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", ByteAt(rest, 0));
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
