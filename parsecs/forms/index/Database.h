// SQLite as the index needs it: a connection and its statements, with failures as exceptions.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace plugincs {

/// Says for people what went wrong, the database's name first.
struct DatabaseError : std::runtime_error {
    DatabaseError(const std::string& name, const std::string& reason)
        : std::runtime_error(name + ": " + reason) {}
};

/// A connection, closed with the object; what was not committed is undone then. Everything that
/// can fail throws DatabaseError.
class Database {
  public:
    /// Opens a file that is there, be it empty; errors call it `name`.
    Database(const std::string& path, std::string name);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Runs statements, one after the other.
    void Run(const std::string& sql);

    /// The number that a query answers with; 0 for none.
    std::int64_t Number(std::string_view sql);

    /// Bytes of the file as they stand on disk.
    void Read(std::int64_t offset, void* to, int size) const;

    /// Whether the file has lost its name, be it to another one.
    bool HasMoved() const;

    /// Says that the file is not what it should be.
    [[noreturn]] void FailAsDamaged() const;

  private:
    friend class Statement;
    [[noreturn]] void Fail() const;

    std::string name_;
    sqlite3* connection_ = nullptr;
};

/// A prepared statement; must go before its database does.
class Statement {
  public:
    Statement(Database& database, std::string_view sql);
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    /// Gives the next parameter its value; the text must stay until the statement has run.
    Statement& With(std::int64_t number);
    Statement& With(std::string_view text);
    Statement& WithNull();

    /// The next row of the result; false after the last, when parameters can be given anew.
    bool Next();
    /// Runs a statement without a result.
    void Run();

    /// Of the row's columns, which count from 0; texts are valid until the next row.
    std::int64_t Number(int column) const;
    std::string_view Text(int column) const;

  private:
    void Check(int status) const;

    Database& database_;
    sqlite3_stmt* statement_ = nullptr;
    int given_ = 0;  // parameters
};

}  // namespace plugincs
