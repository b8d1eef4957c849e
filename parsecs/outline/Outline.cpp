#include "parsecs/outline/Outline.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <unordered_map>

namespace {

using nlohmann::json;

std::size_t TerminalWidth(int descriptor) {
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return SIZE_MAX;
    return size.ws_col;
}

// On one line of at most `room` bytes, white space and control bytes as single blanks.
std::string Fitted(std::string_view text, std::size_t room) {
    std::string line;
    for (const char byte : text) {
        const bool blank = static_cast<unsigned char>(byte) <= ' ' || byte == '\x7F';
        if (!blank) line += byte;
        if (blank && !line.empty() && line.back() != ' ') line += ' ';
    }
    if (line.size() <= room) return line;
    std::size_t cut = std::max<std::size_t>(room, 3) - 3;
    // Not within a UTF-8 sequence.
    while (cut > 0 && (static_cast<unsigned char>(line[cut]) & 0xC0U) == 0x80) --cut;
    return line.substr(0, cut) + "...";
}

bool ShowsColour(int descriptor) {
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(descriptor) != 0 && (noColour == nullptr || *noColour == '\0');
}

std::string Title(const json& record) {
    if (record.at("parentID") == -1) return record.at("filePath");
    const std::string name = record.at("simpleFunctionName");
    return name.empty() ? record.at("contents").get<std::string>() : name;
}

struct OutlineWriter {
    std::size_t width;
    bool colour;
    std::string text;
    std::unordered_map<std::int64_t, std::size_t> depths;  // of the records so far, by id

    void Add(const json& record) {
        const std::string head = Head(record);
        const std::string kind = record.at("branchTypeAsString");
        const std::size_t used = head.size() + kind.size() + 2;
        text += Painted(head, "2") + Painted(kind, "36") + "  ";
        text += Fitted(Title(record), width - std::min(width, used)) + '\n';
    }

    // A file may nest a hundred thousand deep: the lines of its outline would fill a disk if their
    // indentation did not end somewhere.
    std::string Head(const json& record) {
        constexpr std::size_t kNumberWidth = 6;
        constexpr std::size_t kMostLevels = 20;
        const std::int64_t parent = record.at("parentID");
        const std::size_t depth = parent == -1 ? 0 : depths[parent] + 1;
        depths[record.at("nodeID")] = depth;
        // Blocks carry no line number.
        std::string line = record.at("lineNumber") == 0 ? "" : record.at("lineNumber").dump();
        line.insert(0, kNumberWidth - std::min(kNumberWidth, line.size()), ' ');
        return line + std::string(2 + 2 * std::min(depth, kMostLevels), ' ');
    }

    std::string Painted(const std::string& piece, const char* code) const {
        return colour ? std::string("\x1B[") + code + 'm' + piece + "\x1B[0m" : piece;
    }
};

}  // namespace

std::string Outline(std::string_view strict, int descriptor) {
    OutlineWriter writer{TerminalWidth(descriptor), ShowsColour(descriptor), {}, {}};
    // Each record is dropped when it has been written: all of them at once would take gigabytes.
    const auto take = [&writer](int depth, json::parse_event_t event, json& record) {
        if (depth != 1 || event != json::parse_event_t::object_end) return true;
        writer.Add(record);
        return false;
    };
    [[maybe_unused]] const json emptied = json::parse(strict, take);
    return std::move(writer.text);
}
