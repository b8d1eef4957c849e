// A checksum of a database's file, within the file. SQLite notices damage of its own structures
// only, and not that of texts and numbers.
#pragma once

#include "parsecs/forms/index/Database.h"

namespace plugincs {

/// Within a transaction: throws DatabaseError if a byte is not as it was when the database was
/// sealed. One that another program has changed since, or a run that was killed has left without
/// its seal, is checked as well as SQLite can.
void CheckSeal(Database& database);

/// Within the transaction that changes the database.
void BreakSeal(Database& database);

/// After that transaction.
void Seal(Database& database);

}  // namespace plugincs
