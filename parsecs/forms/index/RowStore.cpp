#include "parsecs/forms/index/RowStore.h"

#include <algorithm>

#include "rows/Bases.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

namespace {

std::int64_t KindNumber(std::string_view kind) {
    return std::find(KindName::kAll.begin(), KindName::kAll.end(), kind) - KindName::kAll.begin();
}

// Updates never come that far.
std::int64_t NextId(Database& database, std::string_view last) {
    const std::int64_t id = database.Number(last);
    if (id < 0 || id > INT64_MAX / 2) database.FailAsDamaged();
    return id + 1;
}

std::int64_t CountBranches(const std::vector<Row>& rows) {
    return std::count_if(rows.begin(), rows.end(), [](const Row& row) {
        return row.kind == KindName::kLogic || row.kind == KindName::kLoop;
    });
}

}  // namespace

RowStore::RowStore(Database& database, bool isUpdate)
    : database_(database),
      putFile_(database, "INSERT INTO file VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      touchFile_(database, "UPDATE file SET bytes = ?, mtime = ? WHERE id = ?"),
      putNode_(database, "INSERT INTO node VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      putScope_(database, "INSERT INTO scope VALUES (?, ?)"),
      putDeclaration_(database, "INSERT INTO declaration VALUES (?, ?, ?)"),
      putAttribute_(database, "INSERT INTO attribute VALUES (?, ?)"),
      putFunction_(database, "INSERT INTO function VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
      putBase_(database, "INSERT OR IGNORE INTO base VALUES (?, ?)"),
      putComment_(database, "INSERT INTO comment VALUES (?, ?, ?, ?, ?)") {
    if (!isUpdate) return;
    nextFile_ = NextId(database, "SELECT max(id) FROM file");
    nextNode_ = NextId(database, "SELECT max(id) FROM node");
    nextComment_ = NextId(database, "SELECT max(id) FROM comment");
    Statement scope(database, "SELECT name, id FROM scope");
    while (scope.Next()) scopes_.emplace(scope.Text(0), scope.Number(1));
    database.Run(
        "CREATE TEMP TABLE lost (first INTEGER PRIMARY KEY, last INTEGER,"
        " firstComment INTEGER, lastComment INTEGER)");
    database.Run("CREATE TEMP TABLE added AS SELECT " + std::to_string(nextNode_) + " AS first, " +
                 std::to_string(nextComment_) + " AS firstComment");
}

void RowStore::Put(std::int64_t id, const std::string& path, const FoundFile& file,
                   const FilePiece& piece) {
    const std::vector<Row>& rows = piece.file->rows();
    firstNode_ = nextNode_;
    lastScopeId_ = 0;
    for (const FunctionFigures& figures : piece.functions) {
        putFunction_.With(firstNode_ + figures.id).With(firstNode_ + figures.last);
        putFunction_.With(figures.size).With(figures.nesting);
        putFunction_.With(figures.branches).With(figures.loops).With(figures.parameters);
        figures.body ? putFunction_.With(static_cast<std::int64_t>(*figures.body))
                     : putFunction_.WithNull();
        putFunction_.Run();
    }
    for (const Row& row : rows) PutRow(id, row);
    nextNode_ += static_cast<std::int64_t>(rows.size());
    putFile_.With(id).With(path).With(static_cast<std::int64_t>(file.bytes));
    putFile_.With(file.modified).With(static_cast<std::int64_t>(piece.hash));
    const FileRows& parsed = *piece.file;
    parsed.stoppedAt() > 0 ? putFile_.With(parsed.stoppedAt()) : putFile_.WithNull();
    parsed.cutAt().empty() ? putFile_.WithNull() : putFile_.With(parsed.cutAt().front());
    putFile_.With(CountBranches(rows)).With(firstNode_).With(nextNode_ - 1);
    putFile_.With(nextComment_);
    PutComments(id, piece);
    putFile_.With(nextComment_ - 1).Run();
}

void RowStore::PutRow(std::int64_t file, const Row& row) {
    const std::int64_t id = firstNode_ + row.id;
    putNode_.With(id).With(file);
    row.parent < 0 ? putNode_.WithNull() : putNode_.With(row.id - row.parent);
    putNode_.With(row.last - row.id).With(row.depth).With(KindNumber(row.kind));
    putNode_.With(static_cast<std::int64_t>(row.declares)).With(row.begin.line);
    putNode_.With(row.begin.column).With(row.end.line - row.begin.line);
    row.name.empty() ? putNode_.WithNull() : putNode_.With(row.name);
    putNode_.With(row.text).Run();
    if (!row.attributes.empty()) putAttribute_.With(id).With(row.attributes).Run();
    if (row.declares != Declares::Nothing) PutDeclaration(id, row);
}

void RowStore::PutDeclaration(std::int64_t id, const Row& row) {
    putDeclaration_.With(id).With(ScopeId(row.scope)).With(row.modifiers).Run();
    if (!IsType(row.declares)) return;
    for (const std::string_view base : BasesOf(row.text)) putBase_.With(id).With(base).Run();
}

// Rows after one another mostly have the same.
std::int64_t RowStore::ScopeId(std::string_view scope) {
    if (lastScopeId_ != 0 && scope.data() == lastScope_.data() &&
        scope.size() == lastScope_.size()) {
        return lastScopeId_;
    }
    const auto next = static_cast<std::int64_t>(scopes_.size()) + 1;
    const auto [found, isNew] = scopes_.emplace(scope, next);
    if (isNew) putScope_.With(next).With(scope).Run();
    lastScope_ = scope;
    lastScopeId_ = found->second;
    return lastScopeId_;
}

void RowStore::PutComments(std::int64_t file, const FilePiece& piece) {
    for (const Comment& comment : piece.comments) {
        putComment_.With(nextComment_++).With(file);
        putComment_.With(comment.begin.line).With(comment.begin.column).With(comment.text).Run();
    }
}

void RowStore::Touch(std::int64_t id, const FoundFile& file) {
    const auto bytes = static_cast<std::int64_t>(file.bytes);
    touchFile_.With(bytes).With(file.modified).With(id).Run();
}

void RowStore::Remove(std::int64_t id) {
    Statement(database_,
              "INSERT INTO lost SELECT first, last, firstComment, lastComment FROM file"
              " WHERE id = ?")
        .With(id)
        .Run();
    Statement(database_, "DELETE FROM file WHERE id = ?").With(id).Run();
}

}  // namespace plugincs
