// Puts rows into the database's tables, and takes them out again.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "parsecs/forms/index/Database.h"
#include "parsecs/forms/index/FilePiece.h"

namespace plugincs {

/// Everything that can fail throws DatabaseError. Must go before the database does.
class RowStore {
  public:
    /// Of a database whose tables are there. With `isUpdate` there are rows in it too, and what is
    /// put and removed is noted for update.sql.
    RowStore(Database& database, bool isUpdate);

    /// The id for a file that the database does not have.
    std::int64_t NewFile() { return nextFile_++; }

    void Put(std::int64_t id, const std::string& path, const FoundFile& file,
             const FilePiece& piece);

    /// Its content is what it was.
    void Touch(std::int64_t id, const FoundFile& file);

    /// The file's rows themselves go when the update ends.
    void Remove(std::int64_t id);

  private:
    void PutRow(std::int64_t file, const Row& row);
    void PutDeclaration(std::int64_t id, const Row& row);
    void PutComments(std::int64_t file, const FilePiece& piece);
    std::int64_t ScopeId(std::string_view scope);

    Database& database_;
    Statement putFile_;
    Statement touchFile_;
    Statement putNode_;
    Statement putScope_;
    Statement putDeclaration_;
    Statement putAttribute_;
    Statement putFunction_;
    Statement putBase_;
    Statement putComment_;
    std::int64_t nextFile_ = 1;
    std::int64_t firstNode_ = 1;  // of the file that is put
    std::int64_t nextNode_ = 1;
    std::int64_t nextComment_ = 1;
    std::unordered_map<std::string, std::int64_t> scopes_;
    std::string_view lastScope_;
    std::int64_t lastScopeId_ = 0;
};

}  // namespace plugincs
