#include "host/Outline.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

namespace {

using nlohmann::json;

constexpr std::size_t kNumberWidth = 6;
constexpr std::string_view kEllipsis = "...";

// Where indentation ends: a file may nest a hundred thousand deep, and the lines of such an outline
// would fill a disk.
constexpr std::size_t kMostLevels = 20;

std::string Indentation(std::size_t depth) {
    std::string blanks(2 * std::min(depth, kMostLevels), ' ');
    return depth <= kMostLevels ? blanks : blanks + '[' + std::to_string(depth) + "] ";
}

std::string Coloured(const std::string& text, const char* code, bool colour) {
    return colour ? std::string("\x1B[") + code + 'm' + text + "\x1B[0m" : text;
}

class OutlineWriter {
  public:
    explicit OutlineWriter(const OutlineStyle& style) : style_(style) {}

    void Add(const json& record) {
        // Blocks carry no line number.
        const auto line = record.at("lineNumber").get<std::int64_t>();
        std::string head = line == 0 ? "" : std::to_string(line);
        head.insert(0, kNumberWidth - std::min(kNumberWidth, head.size()), ' ');
        head += "  " + Indentation(Depth(record));
        const auto kind = record.at("branchTypeAsString").get<std::string>();
        text_ += Coloured(head, "2", style_.colour) + Coloured(kind, "36", style_.colour) + "  " +
                 Fitted(Title(record), Room(head.size() + kind.size() + 2)) + '\n';
    }

    std::string& Text() { return text_; }

  private:
    // Parents come before their children, so the open ones are all that is needed.
    std::size_t Depth(const json& record) {
        const auto parent = record.at("parentID").get<std::int64_t>();
        while (!open_.empty() && open_.back() != parent) open_.pop_back();
        open_.push_back(record.at("nodeID").get<std::int64_t>());
        return open_.size() - 1;
    }

    static std::string Title(const json& record) {
        if (record.at("parentID") == -1) return record.at("filePath");
        const auto name = record.at("simpleFunctionName").get<std::string>();
        return name.empty() ? record.at("contents").get<std::string>() : name;
    }

    // A line that is nearly full after its head still shows a bit of the text.
    std::size_t Room(std::size_t used) const {
        constexpr std::size_t kLeast = 10;
        if (style_.width == 0) return SIZE_MAX;
        return std::max(kLeast, style_.width - std::min(style_.width, used));
    }

    OutlineStyle style_;
    std::string text_;
    std::vector<std::int64_t> open_;  // ids of the last record and what it lies in
};

}  // namespace

std::string Outline(std::string_view strict, const OutlineStyle& style) {
    OutlineWriter writer(style);
    // Each record is dropped when it has been written: all of them at once would take gigabytes.
    const auto take = [&writer](int depth, json::parse_event_t event, json& record) {
        const bool complete = depth == 1 && event == json::parse_event_t::object_end;
        if (complete) writer.Add(record);
        return !complete;
    };
    [[maybe_unused]] const json emptied = json::parse(strict, take);
    return std::move(writer.Text());
}

std::string Fitted(std::string_view text, std::size_t room) {
    std::string fitted;
    std::size_t columns = 0;
    std::size_t cut = 0;  // where the ellipsis goes should the text turn out too long
    for (const char byte : text) {
        const bool blank = static_cast<unsigned char>(byte) <= ' ' || byte == '\x7F';
        if (blank && (fitted.empty() || fitted.back() == ' ')) continue;
        const bool continuation = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
        if (!continuation) {
            if (columns + kEllipsis.size() == room) cut = fitted.size();
            if (columns == room) return fitted.substr(0, cut).append(kEllipsis);
            ++columns;
        }
        fitted += blank ? ' ' : byte;
    }
    return fitted;
}
