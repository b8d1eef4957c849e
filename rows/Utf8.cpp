#include "rows/Utf8.h"

#include <algorithm>
#include <array>

namespace plugincs {

namespace {

// The byte at the index, or 0 behind the end.
unsigned ByteAt(std::string_view text, std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

}  // namespace

// The narrower ranges of the second byte rule out overlong forms, surrogates, and what lies above
// U+10FFFF.
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

bool IsControl(std::string_view sequence) {
    const unsigned lead = ByteAt(sequence, 0);
    if (sequence.size() == 1) return lead < ' ' || lead == 0x7F;
    return lead == 0xC2 && ByteAt(sequence, 1) < 0xA0;
}

bool IsWideSpace(std::string_view sequence) {
    constexpr std::array<std::string_view, 9> kSpaces{
        "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\xA8", "\xE2\x80\xA9",
        "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80", "\xEF\xBB\xBF"};
    if (std::find(kSpaces.begin(), kSpaces.end(), sequence) != kSpaces.end()) return true;
    return sequence.size() == 3 && sequence.starts_with("\xE2\x80") && sequence[2] <= '\x8A';
}

}  // namespace plugincs
