// The files that SQLite keeps beside a database while it changes it: FILE-journal and FILE-wal.
#pragma once

#include <string>

namespace plugincs {

/// SQLite plays back or deletes what it finds under these names. Throws DatabaseError unless it is
/// a journal, and one that concerns the database alone; also for a database whose journal's name
/// would be too long.
void CheckJournals(const std::string& database);

}  // namespace plugincs
