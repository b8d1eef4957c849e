#include "parsecs/forms/outline/OneLine.h"

#include <algorithm>

#include "rows/Utf8.h"

namespace plugincs {

std::string OneLine(std::string_view text, std::size_t room) {
    std::string line;
    while (!text.empty() && line.size() <= room) {
        const std::size_t length = SequenceLength(text);
        const std::string_view sequence = text.substr(0, std::max<std::size_t>(length, 1));
        const bool blank = sequence == " " || IsControl(sequence);
        if (!blank) line += length == 0 ? kReplacement : sequence;
        if (blank && !line.empty() && line.back() != ' ') line += ' ';
        text.remove_prefix(sequence.size());
    }
    if (line.size() <= room) return line;
    std::size_t cut = std::max<std::size_t>(room, 3) - 3;
    // Not within a UTF-8 sequence.
    while (cut > 0 && (static_cast<unsigned char>(line[cut]) & 0xC0U) == 0x80) --cut;
    return line.substr(0, cut) + "...";
}

}  // namespace plugincs
