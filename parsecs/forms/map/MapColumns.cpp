#include "parsecs/forms/map/MapColumns.h"

#include <algorithm>

namespace plugincs {

namespace {

constexpr std::uint32_t kFormat = 3;
constexpr std::uint32_t kDeclares = 32;  // more than there are roles

void AppendNumber(std::uint32_t number, std::string& out) {
    for (; number >= 0x80; number >>= 7U) out += static_cast<char>(number | 0x80U);
    out += static_cast<char>(number);
}

std::uint32_t ZigZag(std::int32_t number) {
    return (static_cast<std::uint32_t>(number) << 1U) ^ static_cast<std::uint32_t>(number >> 31);
}

void AppendLine(std::string_view text, std::string& out) {
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        out.append(text.substr(0, end)).append("\r");
        text.remove_prefix(end + 1);
    }
    out.append(text).append("\n");
}

bool IsBranch(MapRole role) { return role == MapRole::Branch || role == MapRole::Loop; }

// What holds others, or errors.
bool IsDefinition(const Row& row, MapRole role) {
    return role == MapRole::Type || role == MapRole::Function || role == MapRole::Error ||
           (role == MapRole::Variable && row.last > row.id);
}

std::uint32_t WhatOf(const Row& row, MapRole role) {
    if (row.declares == Declares::Nothing) return static_cast<std::uint32_t>(role);
    return kDeclares + static_cast<std::uint32_t>(row.declares);
}

// The file stands in the list of files, and all that a file has lies in its global namespace.
bool IsFrame(const Row& row) {
    return row.depth == 0 || (row.depth == 1 && row.kind == KindName::kNamespace) ||
           (row.kind == KindName::kPreprocessor && row.text.empty());
}

}  // namespace

MapColumns::MapColumns(MapDetail detail, const MapSetting& setting)
    : detail_(detail), hasBegins_(setting.link.find("{column}") != std::string::npos) {
    AppendLine(setting.folder, about_);
    AppendLine(setting.link, about_);
}

void MapColumns::Add(const FileRows& file) {
    const std::vector<Row>& rows = file.rows();
    Choose(rows);
    const MapRow* before = nullptr;
    for (const MapRow& row : chosen_) {
        Append(row, before);
        before = &row;
    }
    ++files_;
    rows_ += chosen_.size();
    rowsRead_ += rows.size();
    AppendLine(file.path(), paths_);
    AppendNumber(static_cast<std::uint32_t>(file.stoppedAt()), fileStops_);
    const std::int32_t cut = file.cutAt().empty() ? 0 : file.cutAt().front();
    AppendNumber(static_cast<std::uint32_t>(cut), fileCuts_);
    AppendNumber(static_cast<std::uint32_t>(chosen_.size()), fileRows_);
    AppendNumber(static_cast<std::uint32_t>(rows.front().end.line), fileLines_);
    AppendNumber(statementsOutside_, fileStatements_);
}

// What is left out counts with the row that it lies in, or else with the file.
void MapColumns::Choose(const std::vector<Row>& rows) {
    struct Open {
        std::int32_t last;
        std::int32_t depth;      // on the map
        std::size_t chosen;      // the row on the map that it is or lies in
        std::uint32_t branches;  // between that row and what lies here
    };
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::vector<Open> open{{INT32_MAX, 0, kNone, 0}};
    chosen_.clear();
    statementsOutside_ = 0;
    for (const Row& row : rows) {
        while (open.back().last < row.id) open.pop_back();
        const Open& above = open.back();
        const MapRole role = RoleOf(row);
        const std::uint32_t branch = IsBranch(role) ? 1 : 0;
        const std::uint32_t statement = row.kind == KindName::kPreprocessor ? 0 : 1;
        Open here{row.last, above.depth, above.chosen, above.branches + branch};
        const bool all = detail_ == MapDetail::Statements;
        if (IsFrame(row)) {
            // Nothing of its own.
        } else if (all || IsDefinition(row, role)) {
            chosen_.push_back({&row, role, ++here.depth, statement, branch, 0, here.branches});
            here.chosen = chosen_.size() - 1;
            here.branches = 0;
        } else if (above.chosen == kNone) {
            statementsOutside_ += statement;
        } else {
            MapRow& in = chosen_[above.chosen];
            in.statements += 1;
            in.branches += branch;
            in.nesting = std::max(in.nesting, here.branches);
        }
        open.push_back(here);
    }
}

void MapColumns::Append(const MapRow& row, const MapRow* before) {
    const std::int32_t depthBefore = before == nullptr ? 0 : before->depth;
    const std::int32_t lineBefore = before == nullptr ? 0 : before->row->begin.line;
    const std::int32_t line = row.row->begin.line;
    const std::uint32_t text = TextCode(row.row->text, rowTexts_);
    names_.last = rowTexts_.last;  // a name is told best by the text that it is in
    const std::array<std::uint32_t, ColumnCount> numbers{
        static_cast<std::uint32_t>(depthBefore + 1 - row.depth),
        WhatOf(*row.row, row.role),
        ZigZag(line - lineBefore),
        ZigZag(row.row->end.line - line),
        text,
        TextCode(row.row->name, names_),
        row.statements,
        row.branches,
        row.nesting,
        row.step,
        static_cast<std::uint32_t>(row.row->begin.column),
    };
    const std::size_t count = hasBegins_ ? ColumnCount : Begin;
    for (std::size_t i = 0; i < count; ++i) AppendNumber(numbers[i], columns_[i]);
}

// Copies, and files that are alike, have the same texts one after another.
std::uint32_t MapColumns::TextCode(std::string_view text, Followers& followers) {
    if (text.empty()) return 0;
    const auto next = static_cast<std::int32_t>(textIds_.size());
    const auto [place, isNew] = textIds_.try_emplace(std::string(text), next);
    if (isNew) AppendLine(text, texts_);
    const std::int32_t id = place->second;
    followers.of.resize(textIds_.size(), -1);
    std::int32_t& expected = followers.of[static_cast<std::size_t>(followers.last)];
    const std::uint32_t code = isNew ? 1 : id == expected ? 2 : ZigZag(id - followers.last) + 3;
    expected = followers.last = id;
    return code;
}

std::vector<std::string_view> MapColumns::Pieces() {
    std::string head;
    AppendNumber(kFormat, head);
    AppendNumber(detail_ == MapDetail::Definitions ? 1 : 0, head);
    for (const std::size_t number : {files_, rows_, textIds_.size(), rowsRead_}) {
        AppendNumber(static_cast<std::uint32_t>(number), head);
    }
    std::vector<std::string_view> sections{fileRows_, fileLines_, fileStatements_, fileStops_,
                                           fileCuts_};
    sections.insert(sections.end(), columns_.begin(), columns_.end());
    sections.insert(sections.end(), {about_, paths_, texts_});

    numbers_.clear();
    numbers_.reserve(sections.size() + 1);
    std::vector<std::string_view> pieces{numbers_.emplace_back(std::move(head))};
    for (const std::string_view section : sections) {
        std::string size;
        AppendNumber(static_cast<std::uint32_t>(section.size()), size);
        pieces.push_back(numbers_.emplace_back(std::move(size)));
        pieces.push_back(section);
    }
    return pieces;
}

}  // namespace plugincs
