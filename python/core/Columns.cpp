#include "core/Columns.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "rows/Utf8.h"
#include "text/ByteSets.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

namespace {

constexpr ByteSets kBeyondAscii{~ByteSet('\0', '\x7F')};

void AppendValid(std::string_view text, std::string& out) {
    while (true) {
        const std::size_t ascii = Find(kBeyondAscii, text, 0);
        out.append(text.substr(0, ascii));
        text.remove_prefix(ascii);
        if (text.empty()) return;
        const std::size_t length = SequenceLength(text);
        out.append(length == 0 ? kReplacement : text.substr(0, length));
        text.remove_prefix(std::max<std::size_t>(1, length));
    }
}

std::int8_t KindNumber(std::string_view kind) {
    const auto found = std::find(KindName::kAll.begin(), KindName::kAll.end(), kind);
    return static_cast<std::int8_t>(found - KindName::kAll.begin());
}

template <typename Vector>
void FreeRest(Vector& vector) {
    vector.shrink_to_fit();
}
void FreeRest(TextColumn& column) {
    column.offsets.shrink_to_fit();
    column.bytes.shrink_to_fit();
}
void FreeRest(WordColumn& column) {
    column.numbers.shrink_to_fit();
    FreeRest(column.words);
}

// Tables keep columns for long.
void FreeRest(Columns& c) {
    const auto freeAll = [](auto&... columns) { (FreeRest(columns), ...); };
    freeAll(c.name, c.attributes, c.text, c.file, c.scope, c.modifiers, c.kind, c.declares, c.id,
            c.parent, c.last, c.depth, c.line, c.column, c.endLine, c.endColumn);
}

}  // namespace

void TextColumn::Append(std::string_view text, bool plain) {
    if (plain) {
        bytes.append(text);
    } else {
        AppendValid(text, bytes);
    }
    if (bytes.size() > INT32_MAX) throw std::length_error("a text");
    offsets.push_back(static_cast<std::int32_t>(bytes.size()));
}

std::string_view TextColumn::At(std::size_t index) const {
    const auto begin = static_cast<std::size_t>(offsets[index]);
    const auto end = static_cast<std::size_t>(offsets[index + 1]);
    return std::string_view(bytes).substr(begin, end - begin);
}

void ColumnsMaker::Numbers::Append(std::string_view word, WordColumn& to) {
    // Rows in a row have the same.
    const bool same = word.data() == last_.data() && word.size() == last_.size();
    if (!same || to.numbers.empty()) {
        const auto known = numbers_.find(word);
        if (known != numbers_.end()) {
            lastNumber_ = known->second;
        } else {
            lastNumber_ = static_cast<std::int32_t>(numbers_.size());
            numbers_.emplace(word, lastNumber_);
            to.words.Append(word, false);
        }
        last_ = word;
    }
    to.numbers.push_back(lastNumber_);
}

void ColumnsMaker::Add(const FileRows& file) {
    for (Numbers* numbers : {&files_, &scopes_, &modifiers_}) numbers->BeginFile();
    for (const Row& row : file.rows()) {
        if (!HasRoomFor(row)) EndPiece();
        AddRow(row, file.path());
    }
}

// A column holds up to 2 GiB. An invalid byte becomes three.
bool ColumnsMaker::HasRoomFor(const Row& row) const {
    constexpr std::size_t kMostBytes = std::size_t{256} << 20U;
    constexpr std::size_t kMostRows = std::size_t{1} << 20U;
    const std::size_t had = columns_.name.bytes.size() + columns_.attributes.bytes.size() +
                            columns_.text.bytes.size() + columns_.scope.words.bytes.size();
    const std::size_t more = row.name.size() + row.attributes.size() + row.text.size();
    return columns_.size() == 0 || (columns_.size() < kMostRows && had + more < kMostBytes);
}

void ColumnsMaker::AddRow(const Row& row, std::string_view file) {
    columns_.id.push_back(row.id);
    columns_.parent.push_back(row.parent);
    columns_.last.push_back(row.last);
    columns_.depth.push_back(row.depth);
    columns_.kind.push_back(KindNumber(row.kind));
    columns_.declares.push_back(static_cast<std::int8_t>(row.declares));
    files_.Append(file, columns_.file);
    scopes_.Append(row.scope, columns_.scope);
    modifiers_.Append(row.modifiers, columns_.modifiers);
    columns_.name.Append(row.name, row.plain);
    columns_.attributes.Append(row.attributes, row.attributes.empty());
    columns_.text.Append(row.text, row.plain);
    AddPlaces(row);
}

void ColumnsMaker::AddPlaces(const Row& row) {
    if (row.begin.line == 0) withoutPlace_.push_back(columns_.line.size());
    columns_.line.push_back(row.begin.line);
    columns_.column.push_back(row.begin.column);
    columns_.endLine.push_back(row.end.line);
    columns_.endColumn.push_back(row.end.column);
}

void ColumnsMaker::EndPiece() {
    if (!withoutPlace_.empty()) columns_.hasPlace.assign((columns_.size() + 7) / 8, 0xFF);
    for (const std::size_t index : withoutPlace_) {
        std::uint8_t& bits = columns_.hasPlace[index / 8];
        bits = static_cast<std::uint8_t>(bits & ~(1U << index % 8));
    }
    columns_.withoutPlace = static_cast<std::int64_t>(withoutPlace_.size());
    FreeRest(columns_);
    made_.push_back(std::make_shared<const Columns>(std::move(columns_)));
    columns_ = Columns();
    withoutPlace_.clear();
    for (Numbers* numbers : {&files_, &scopes_, &modifiers_}) numbers->Forget();
}

std::vector<std::shared_ptr<const Columns>> ColumnsMaker::Made() {
    if (columns_.size() > 0) EndPiece();
    return std::move(made_);
}

}  // namespace plugincs
