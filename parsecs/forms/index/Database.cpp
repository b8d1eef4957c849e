#include "parsecs/forms/index/Database.h"

#include <sqlite3.h>

#include <utility>

namespace plugincs {

namespace {

// Another run's changes, and readers while they take their place, are waited for that long.
constexpr int kPatience = 30'000;  // milliseconds

}  // namespace

Database::Database(const std::string& path, std::string name) : name_(std::move(name)) {
    // By themselves ":memory:" and "file:x" are no files to the library.
    const std::string file = path.starts_with('/') ? path : std::string("./").append(path);
    if (sqlite3_open_v2(file.c_str(), &connection_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        const DatabaseError error(name_, sqlite3_errmsg(connection_));
        sqlite3_close(connection_);
        throw error;
    }
    sqlite3_busy_timeout(connection_, kPatience);
    Run("PRAGMA trusted_schema = OFF");  // whoever may have written it
}

Database::~Database() { sqlite3_close(connection_); }

void Database::Run(const std::string& sql) {
    if (sqlite3_exec(connection_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

std::int64_t Database::Number(std::string_view sql) {
    Statement statement(*this, sql);
    return statement.Next() ? statement.Number(0) : 0;
}

void Database::Read(std::int64_t offset, void* to, int size) const {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file->pMethods->xRead(file, to, size, offset) != SQLITE_OK) {
        throw DatabaseError(name_, "cannot be read");
    }
}

bool Database::HasMoved() const {
    int moved = 0;
    sqlite3_file_control(connection_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

void Database::FailAsDamaged() const {
    throw DatabaseError(name_, "is damaged or no database, and is left as it is");
}

void Database::Fail() const {
    const int code = sqlite3_errcode(connection_);
    if (code == SQLITE_BUSY) throw DatabaseError(name_, "another program keeps it busy");
    if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB) FailAsDamaged();
    if (sqlite3_extended_errcode(connection_) == SQLITE_READONLY_DBMOVED) {
        throw DatabaseError(name_, "was deleted or replaced meanwhile: run again");
    }
    throw DatabaseError(name_, sqlite3_errmsg(connection_));
}

Statement::Statement(Database& database, std::string_view sql) : database_(database) {
    Check(sqlite3_prepare_v3(database.connection_, sql.data(), static_cast<int>(sql.size()),
                             SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
}

Statement::~Statement() { sqlite3_finalize(statement_); }

Statement& Statement::With(std::int64_t number) {
    Check(sqlite3_bind_int64(statement_, ++given_, number));
    return *this;
}

Statement& Statement::With(std::string_view text) {
    // A null pointer would be a null and no empty text.
    const char* const bytes = text.empty() ? "" : text.data();
    Check(
        sqlite3_bind_text64(statement_, ++given_, bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

Statement& Statement::WithNull() {
    Check(sqlite3_bind_null(statement_, ++given_));
    return *this;
}

bool Statement::Next() {
    const int status = sqlite3_step(statement_);
    if (status == SQLITE_ROW) return true;
    given_ = 0;
    Check(sqlite3_reset(statement_));
    return false;
}

void Statement::Run() {
    while (Next()) {
    }
}

std::int64_t Statement::Number(int column) const {
    return sqlite3_column_int64(statement_, column);
}

std::string_view Statement::Text(int column) const {
    const auto* const bytes = sqlite3_column_text(statement_, column);
    const int size = sqlite3_column_bytes(statement_, column);
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

void Statement::Check(int status) const {
    if (status != SQLITE_OK) database_.Fail();
}

}  // namespace plugincs
