#include "parsecs/rows/RowCodec.h"

#include <algorithm>

namespace {

// The first byte of a row: its kind, and above that what it declares.
constexpr unsigned kKindBits = 5;
static_assert(kRowKinds.size() <= 1U << kKindBits);

// Seven bits a byte, the lowest first; all but the last byte have the eighth set.
void AppendNumber(std::uint32_t number, std::string& out) {
    for (; number >= 0x80; number >>= 7U) out += static_cast<char>(number | 0x80U);
    out += static_cast<char>(number);
}

// Small numbers of either sign as small ones without.
void AppendDifference(std::int32_t from, std::int32_t to, std::string& out) {
    const auto difference = static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from);
    const std::uint32_t sign = (difference >> 31U) == 0 ? 0 : UINT32_MAX;
    AppendNumber((difference << 1U) ^ sign, out);
}

void AppendText(std::string_view text, std::string& out) {
    AppendNumber(static_cast<std::uint32_t>(text.size()), out);
    out += text;
}

}  // namespace

std::uint8_t KindNumber(std::string_view kind) {
    const auto* const found = std::find(kRowKinds.begin(), kRowKinds.end(), kind);
    return static_cast<std::uint8_t>(found - kRowKinds.begin());
}

void EncodeRows(const ParsedFile& file, std::string& out) {
    Row before{};
    for (const Row& row : file.rows()) {
        const auto declares = static_cast<unsigned>(row.declares);
        out += static_cast<char>(KindNumber(row.kind) | declares << kKindBits);
        AppendDifference(before.id, row.id, out);
        AppendDifference(row.id, row.parent, out);
        AppendDifference(row.id, row.last, out);
        AppendDifference(0, row.depth, out);
        AppendDifference(before.begin.line, row.begin.line, out);
        AppendDifference(0, row.begin.column, out);
        AppendDifference(row.begin.line, row.end.line, out);
        AppendDifference(0, row.end.column, out);
        AppendText(row.name, out);
        AppendText(row.text, out);
        before = row;
    }
}

bool RowReader::Next(Row& row) {
    if (rest_.empty()) return false;
    const auto first = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    const std::size_t kind = first % (1U << kKindBits);
    row.kind = kRowKinds[std::min(kind, kRowKinds.size() - 1)];
    row.declares = static_cast<Declaration::Kind>(first >> kKindBits);
    row.id = id_ = NumberFrom(id_);
    row.parent = NumberFrom(row.id);
    row.last = NumberFrom(row.id);
    row.depth = NumberFrom(0);
    row.begin.line = line_ = NumberFrom(line_);
    row.begin.column = NumberFrom(0);
    row.end.line = NumberFrom(row.begin.line);
    row.end.column = NumberFrom(0);
    row.name = Text();
    row.text = Text();
    return true;
}

std::uint32_t RowReader::Number() {
    std::uint32_t number = 0;
    unsigned char byte = 0x80;
    for (unsigned shift = 0; byte >= 0x80 && shift < 32 && !rest_.empty(); shift += 7) {
        byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        number |= (byte & 0x7FU) << shift;
    }
    return number;
}

std::int32_t RowReader::NumberFrom(std::int32_t base) {
    const std::uint32_t number = Number();
    const std::uint32_t difference = (number >> 1U) ^ (0U - (number & 1U));
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(base) + difference);
}

std::string_view RowReader::Text() {
    const std::uint32_t size = Number();
    const std::string_view text = rest_.substr(0, size);
    rest_.remove_prefix(text.size());
    return text;
}
