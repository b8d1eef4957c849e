#include "parsecs/forms/outline/Outline.h"

#include <algorithm>
#include <string_view>

#include "rows/Utf8.h"

namespace plugincs {

namespace {

// On one line of at most `room` bytes.
std::string Fitted(std::string_view text, std::size_t room) {
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

// A file may nest a hundred thousand deep: the lines of its outline would fill a disk if their
// indentation did not end somewhere.
std::string Head(const Row& row) {
    constexpr std::size_t kNumberWidth = 6;
    constexpr std::size_t kMostLevels = 20;
    std::string line = row.begin.line == 0 ? "" : std::to_string(row.begin.line);
    line.insert(0, kNumberWidth - std::min(kNumberWidth, line.size()), ' ');
    return line.append(2 + 2 * std::min(static_cast<std::size_t>(row.depth), kMostLevels), ' ');
}

void Paint(std::string_view piece, const char* code, bool colour, std::string& out) {
    if (colour) out.append("\x1B[").append(code).append("m");
    out += piece;
    if (colour) out += "\x1B[0m";
}

}  // namespace

void AppendOutline(const FileRows& file, OutlineStyle style, std::string& out) {
    for (const Row& row : file.rows()) {
        const std::string head = Head(row);
        const std::string_view kind =
            row.declares == Declares::Nothing ? row.kind : NameOf(row.declares);
        const std::size_t used = head.size() + kind.size() + 2;
        const std::size_t room =
            style.width == 0 ? std::string::npos - 1 : style.width - std::min(style.width, used);
        Paint(head, "2", style.colour, out);
        Paint(kind, "36", style.colour, out);
        out += "  ";
        out.append(Fitted(row.parent == -1 ? file.path() : row.text, room)) += '\n';
    }
}

}  // namespace plugincs
