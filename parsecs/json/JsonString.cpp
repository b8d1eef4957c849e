#include "parsecs/json/JsonString.h"

#include "rows/Utf8.h"
#include "text/ByteSets.h"

namespace plugincs {

namespace {

// The bytes that may not stand in a string as they are, or begin a longer sequence.
constexpr ByteSets kSpecial{~ByteSet(' ', '~') | ByteSet("\"\\")};

char* Write(std::string_view text, char* out) { return out + text.copy(out, text.size()); }

char* WriteControl(unsigned char byte, char* out) {
    constexpr const char* kDigits = "0123456789abcdef";
    out = Write("\\u00", out);
    *out++ = kDigits[byte >> 4];
    *out++ = kDigits[byte & 15U];
    return out;
}

}  // namespace

char* WriteJsonString(std::string_view text, char* out) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t special = Find(kSpecial, text, at);
        out = Write(text.substr(at, special - at), out);
        if (special == text.size()) break;
        const auto byte = static_cast<unsigned char>(text[special]);
        const std::size_t length = SequenceLength(text.substr(special));
        if (byte == '"' || byte == '\\') *out++ = '\\';
        if (byte < ' ') {
            out = WriteControl(byte, out);
        } else {
            out = Write(length == 0 ? kReplacement : text.substr(special, length), out);
        }
        at = special + (length == 0 ? 1 : length);
    }
    return out;
}

std::string JsonString(std::string_view text) {
    std::string string(JsonStringRoom(text.size()) + 2, '"');
    char* const end = WriteJsonString(text, string.data() + 1);
    *end = '"';
    string.resize(static_cast<std::size_t>(end + 1 - string.data()));
    return string;
}

}  // namespace plugincs
