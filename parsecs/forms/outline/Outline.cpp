#include "parsecs/forms/outline/Outline.h"

#include <algorithm>
#include <string_view>

#include "parsecs/forms/outline/OneLine.h"

namespace plugincs {

namespace {

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
        out.append(OneLine(row.parent == -1 ? file.path() : row.text, room)) += '\n';
    }
}

}  // namespace plugincs
