#include "host/StrictJson.h"

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

void PutControl(char byte, std::string& strict) {
    constexpr std::string_view kControls = "\b\t\n\f\r";
    constexpr std::string_view kDigits = "0123456789abcdef";
    const std::size_t named = kControls.find(byte);
    strict += '\\';
    if (named != std::string_view::npos) {
        strict += "btnfr"[named];
        return;
    }
    strict += "u00";
    strict += kDigits[static_cast<unsigned char>(byte) >> 4U];
    strict += kDigits[static_cast<unsigned char>(byte) & 15U];
}

// `rest` begins with a backslash. Returns how many bytes were taken from it, as does PutRepaired.
std::size_t PutEscape(std::string_view rest, std::string& strict) {
    const unsigned escaped = ByteAt(rest, 1);
    if (escaped < ' ' || escaped > '~') {
        strict += "\\\\";  // escapes nothing
        return 1;
    }
    strict += escaped == '\'' ? rest.substr(1, 1) : rest.substr(0, 2);
    return 2;
}

std::size_t PutRepaired(std::string_view rest, std::string& strict) {
    if (rest.front() == '\\') return PutEscape(rest, strict);
    if (ByteAt(rest, 0) < ' ') {
        PutControl(rest.front(), strict);
        return 1;
    }
    const std::size_t length = SequenceLength(rest);
    strict += length == 0 ? kReplacement : rest.substr(0, length);
    return length == 0 ? 1 : length;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char byte : text) {
        if (byte == '"' || byte == '\\') quoted += '\\';
        quoted += byte;
    }
    return quoted + '"';
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

std::string OneLine(std::string_view strict) {
    std::string line;
    line.reserve(strict.size());
    bool inString = false;
    bool escaped = false;
    for (const char byte : strict) {
        if (!inString && (byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r')) continue;
        line += byte;
        if (byte == '"' && !escaped) inString = !inString;
        escaped = byte == '\\' && !escaped;
    }
    return line;
}

std::string FileLine(std::string_view file, std::string_view text) {
    const std::string name = StrictJson(Quoted(file));
    return "{\"file\": " + name + ", \"records\": " + OneLine(StrictJson(text)) + "}\n";
}
