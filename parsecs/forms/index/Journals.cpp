#include "parsecs/forms/index/Journals.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "parsecs/forms/index/Database.h"

namespace plugincs {

namespace {

constexpr std::string_view kJournalMark = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
constexpr std::string_view kWalMark = "\x37\x7F\x06";  // and a byte for the order of bytes

// The first and the last bytes of a file.
struct Ends {
    char first[8] = {};
    char last[8] = {};
};

Ends EndsOf(const std::string& path) {
    Ends ends;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    if (!file) throw DatabaseError(path, std::strerror(errno));
    std::fread(ends.first, 1, sizeof ends.first, file.get());
    std::fseek(file.get(), -static_cast<long>(sizeof ends.last), SEEK_END);
    std::fread(ends.last, 1, sizeof ends.last, file.get());
    return ends;
}

// Of several databases that were changed at once, another file knows whether they were: the end of
// the journal names it, and SQLite deletes that file. Ours stand alone. A run that was killed may
// have come no further than to make a journal, or to clear it.
bool IsJournal(const Ends& ends, std::string_view mark) {
    const std::string_view first(ends.first, sizeof ends.first);
    const std::string_view last(ends.last, sizeof ends.last);
    const bool blank = first.find_first_not_of('\0') == first.npos;
    return (blank || first.starts_with(mark)) && last != kJournalMark;
}

void CheckJournal(const std::string& path, std::string_view mark) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        if (errno == ENOENT) return;
        throw DatabaseError(path, std::strerror(errno));
    }
    if (!S_ISREG(status.st_mode) || !IsJournal(EndsOf(path), mark)) {
        throw DatabaseError(path,
                            "is no journal of ours, and SQLite would delete it: use another "
                            "name for the database");
    }
}

}  // namespace

void CheckJournals(const std::string& database) {
    constexpr std::size_t kLongestName = 255;
    constexpr std::string_view kJournal = "-journal";
    const std::string name = database.substr(database.rfind('/') + 1);
    if (name.size() + kJournal.size() > kLongestName) {
        throw DatabaseError(database, "has too long a name: SQLite puts -journal behind it");
    }
    CheckJournal(database + std::string(kJournal), kJournalMark);
    CheckJournal(database + "-wal", kWalMark);
}

}  // namespace plugincs
