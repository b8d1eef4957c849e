#include "parsecs/forms/index/Seal.h"

#include <zlib.h>

#include <algorithm>
#include <vector>

namespace plugincs {

namespace {

struct Range {
    std::int64_t begin;
    std::int64_t end;
};

// In the first page: what each transaction changes.
constexpr Range kChangeCounter{24, 28};
constexpr Range kWritersOfIt{92, 100};

void Blank(const Range& range, std::int64_t offset, std::vector<unsigned char>& piece) {
    const auto size = static_cast<std::int64_t>(piece.size());
    const std::int64_t begin = std::clamp<std::int64_t>(range.begin - offset, 0, size);
    const std::int64_t end = std::clamp<std::int64_t>(range.end - offset, 0, size);
    std::fill(piece.begin() + begin, piece.begin() + end, 0);
}

// Of all that the seal does not change itself: its table has one row, which is in a page of its
// own.
std::int64_t ChecksumOf(Database& database) {
    constexpr std::int64_t kPiece = 1 << 18;
    const std::int64_t pageSize = database.Number("PRAGMA page_size");
    const std::int64_t size = pageSize * database.Number("PRAGMA page_count");
    const std::int64_t page =
        database.Number("SELECT rootpage FROM sqlite_schema WHERE name = 'seal'");
    const Range ownPage{(page - 1) * pageSize, page * pageSize};
    uLong checksum = crc32_z(0, nullptr, 0);
    std::vector<unsigned char> piece;
    for (std::int64_t offset = 0; offset < size; offset += kPiece) {
        piece.resize(static_cast<std::size_t>(std::min(kPiece, size - offset)));
        database.Read(offset, piece.data(), static_cast<int>(piece.size()));
        for (const Range& range : {kChangeCounter, kWritersOfIt, ownPage}) {
            Blank(range, offset, piece);
        }
        checksum = crc32_z(checksum, piece.data(), piece.size());
    }
    return static_cast<std::int64_t>(checksum);
}

// How many transactions have changed the file so far.
std::int64_t CountChanges(const Database& database) {
    unsigned char bytes[4];
    database.Read(kChangeCounter.begin, bytes, sizeof bytes);
    std::int64_t count = 0;
    for (const unsigned char byte : bytes) count = count << 8U | byte;
    return count;
}

void CheckThoroughly(Database& database) {
    database.Run(
        "INSERT INTO text_fts(text_fts) VALUES ('integrity-check');"
        "INSERT INTO comment_fts(comment_fts) VALUES ('integrity-check');"
        "INSERT INTO name_fts(name_fts) VALUES ('integrity-check')");
    if (database.Number("SELECT integrity_check = 'ok' FROM pragma_integrity_check(1)") == 0) {
        database.FailAsDamaged();
    }
}

}  // namespace

void CheckSeal(Database& database) {
    std::int64_t checksum = 0;
    std::int64_t changes = -1;
    {
        Statement seal(database, "SELECT checksum, changes FROM seal WHERE changes IS NOT NULL");
        if (seal.Next()) {
            checksum = seal.Number(0);
            changes = seal.Number(1);
        }
    }
    if (changes != CountChanges(database)) return CheckThoroughly(database);
    if (checksum != ChecksumOf(database)) database.FailAsDamaged();
}

void BreakSeal(Database& database) {
    database.Run("UPDATE seal SET checksum = NULL, changes = NULL");
}

void Seal(Database& database) {
    database.Run("BEGIN IMMEDIATE");
    {
        Statement put(database, "UPDATE seal SET checksum = ?, changes = ?");
        const std::int64_t changes = CountChanges(database) + 1;  // with this transaction
        put.With(ChecksumOf(database)).With(changes).Run();
    }
    database.Run("COMMIT");
}

}  // namespace plugincs
