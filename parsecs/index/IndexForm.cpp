#include "parsecs/index/IndexForm.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "parsecs/index/Bases.h"
#include "parsecs/index/Sql.h"
#include "parsecs/input/NormalPath.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/rows/Outcome.h"
#include "parsecs/rows/RowKinds.h"

namespace {

namespace fs = std::filesystem;

// Marks our databases among those of all programs; a database of another format has another number
// for it.
constexpr std::int64_t kApplication = 0x70726373;
constexpr std::int64_t kFormat = 1;

// Only a path of which the system says so: what cannot be examined may come back.
bool IsGone(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

// FNV-1a, 64 bits.
std::uint64_t HashOf(std::string_view bytes) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    return hash;
}

std::int64_t KindNumber(std::string_view kind) {
    return std::find(kRowKinds.begin(), kRowKinds.end(), kind) - kRowKinds.begin();
}

std::int64_t NumberOf(Database& database, std::string_view sql) {
    Statement statement(database, sql);
    return statement.Next() ? statement.Number(0) : 0;
}

}  // namespace

struct IndexForm::FilePiece : Piece {
    explicit FilePiece(std::uint64_t hashOfText) : hash(hashOfText) {}
    FilePiece(std::uint64_t hashOfText, ReadSource source) : hash(hashOfText) {
        file.emplace(std::move(source));
        functions = FiguresOf(file->rows());
    }

    std::uint64_t hash;
    std::optional<ParsedFile> file;       // nothing where the hash is the one that was known
    std::optional<std::int32_t> stopped;  // in this line, unless it went through
    std::vector<FunctionFigures> functions;
};

struct IndexForm::Statements {
    explicit Statements(Database& database)
        : putFile(database, "INSERT INTO file VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
          touchFile(database, "UPDATE file SET bytes = ?, mtime = ? WHERE id = ?"),
          putNode(database, "INSERT INTO node VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          putFunction(database, "INSERT INTO function VALUES (?, ?, ?, ?, ?, ?)"),
          putBase(database, "INSERT OR IGNORE INTO base VALUES (?, ?)") {}

    Statement putFile;
    Statement touchFile;
    Statement putNode;
    Statement putFunction;
    Statement putBase;
};

IndexForm::IndexForm(std::string path, const std::vector<std::string>& inputs)
    : path_(std::move(path)) {
    for (const std::string& input : inputs) inputs_.insert(NormalPath(input));
    std::error_code error;
    const fs::file_status old = fs::status(path_, error);
    if (old.type() == fs::file_type::none) throw DatabaseError(path_, error.message());
    if (fs::exists(old) && !fs::is_regular_file(old)) throw DatabaseError(path_, "is no file");
    const bool anew = !fs::exists(old) || fs::file_size(path_, error) == 0;
    anew ? StartAnew() : StartUpdate();
    statements_ = std::make_unique<Statements>(*database_);
}

IndexForm::~IndexForm() = default;

void IndexForm::StartAnew() {
    try {
        building_.emplace(TargetOf(path_));
    } catch (const std::system_error& error) {
        throw DatabaseError(path_, error.code().message());
    }
    database_ = std::make_unique<Database>(building_->path(), path_);
    database_->Run(
        "PRAGMA page_size = 8192; PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF;"
        "PRAGMA locking_mode = EXCLUSIVE; PRAGMA cache_size = -65536; BEGIN");
    database_->Run("PRAGMA application_id = " + std::to_string(kApplication));
    database_->Run("PRAGMA user_version = " + std::to_string(kFormat));
    database_->Run(kSchemaSql);
    Statement putKind(*database_, "INSERT INTO kind VALUES (?, ?)");
    for (std::size_t i = 0; i < kRowKinds.size(); ++i) {
        putKind.With(static_cast<std::int64_t>(i)).With(kRowKinds[i]).Run();
    }
}

void IndexForm::StartUpdate() {
    database_ = std::make_unique<Database>(path_, path_);
    CheckIsOurs();
    // Pages that were written before the commit would shut readers out from then on.
    database_->Run("PRAGMA cache_spill = OFF; BEGIN IMMEDIATE");
    CheckRoot();
    LoadFiles();
    nextFile_ = NumberOf(*database_, "SELECT max(id) FROM file") + 1;
    nextNode_ = NumberOf(*database_, "SELECT max(id) FROM node") + 1;
    database_->Run("CREATE TEMP TABLE lost (first INTEGER PRIMARY KEY, last INTEGER)");
    database_->Run("CREATE TEMP TABLE added AS SELECT " + std::to_string(nextNode_) + " AS first");
}

void IndexForm::CheckIsOurs() {
    if (NumberOf(*database_, "PRAGMA application_id") != kApplication) {
        throw DatabaseError(path_, "is a database of another program, and is left as it is");
    }
    const std::int64_t format = NumberOf(*database_, "PRAGMA user_version");
    if (format == kFormat) return;
    throw DatabaseError(path_, "has format " + std::to_string(format) + " and not " +
                                   std::to_string(kFormat) +
                                   ": delete it, and it will be built anew");
}

// Relative paths mean something else in another folder.
void IndexForm::CheckRoot() {
    Statement root(*database_, "SELECT value FROM meta WHERE name = 'root'");
    const std::string old(root.Next() ? root.Text(0) : "");
    if (old == fs::current_path().string()) return;
    for (const std::string& input : inputs_) {
        if (!input.starts_with('/')) {
            throw DatabaseError(path_, "was made in the folder " + old +
                                           ": run there, or delete it to build it anew");
        }
    }
}

void IndexForm::LoadFiles() {
    Statement file(*database_, "SELECT path, id, bytes, mtime, hash, stopped IS NULL FROM file");
    while (file.Next()) {
        const auto bytes = static_cast<std::uint64_t>(file.Number(2));
        const auto hash = static_cast<std::uint64_t>(file.Number(4));
        const bool whole = file.Number(5) != 0;
        known_.emplace(file.Text(0), KnownFile{file.Number(1), bytes, file.Number(3), hash, whole});
    }
}

bool IndexForm::Wants(const FoundFile& file) {
    const std::string path = NormalPath(file.path);
    seen_.insert(path);
    const KnownFile* const known = Known(path);
    const bool unchanged = known != nullptr && known->whole && !IsTouched(*known, file);
    if (!unchanged) failed_.insert(path);
    return !unchanged;
}

MadeFile IndexForm::Make(ReadSource source) const {
    const std::uint64_t hash = HashOf(source.text);
    const KnownFile* const known = Known(NormalPath(source.path));
    if (known != nullptr && known->whole && known->hash == hash) {
        return {{FileOutcome::Kind::Unchanged, 0}, std::make_unique<FilePiece>(hash)};
    }
    auto piece = std::make_unique<FilePiece>(hash, std::move(source));
    const FileOutcome outcome = OutcomeOf(*piece->file);
    if (outcome.kind == FileOutcome::Kind::GivenUp) return {outcome, nullptr};
    if (outcome.kind == FileOutcome::Kind::StoppedEarly) piece->stopped = outcome.line;
    return {outcome, std::move(piece)};
}

void IndexForm::Take(const FoundFile& file, Piece& made) {
    const auto& piece = static_cast<const FilePiece&>(made);
    const std::string path = NormalPath(file.path);
    const KnownFile* const known = Known(path);
    failed_.erase(path);
    const bool same = known != nullptr && known->hash == piece.hash;
    if (same && !IsTouched(*known, file)) return;
    changed_ = true;
    if (same) return Touch(known->id, file);
    if (known != nullptr) Remove(known->id);
    PutFile(known == nullptr ? nextFile_++ : known->id, path, file, piece);
}

const IndexForm::KnownFile* IndexForm::Known(const std::string& path) const {
    const auto found = known_.find(path);
    return found == known_.end() ? nullptr : &found->second;
}

bool IndexForm::IsTouched(const KnownFile& known, const FoundFile& file) {
    return known.bytes != file.bytes || known.modified != file.modified;
}

void IndexForm::Touch(std::int64_t id, const FoundFile& file) {
    const auto bytes = static_cast<std::int64_t>(file.bytes);
    statements_->touchFile.With(bytes).With(file.modified).With(id).Run();
}

void IndexForm::PutFile(std::int64_t id, const std::string& path, const FoundFile& file,
                        const FilePiece& piece) {
    const std::int64_t first = nextNode_;
    for (const FunctionFigures& figures : piece.functions) {
        statements_->putFunction.With(first + figures.id).With(first + figures.last);
        statements_->putFunction.With(figures.size).With(figures.nesting);
        statements_->putFunction.With(figures.branches).With(figures.loops).Run();
    }
    for (const Row& row : piece.file->rows()) PutRow(id, first, row);
    Statement& put = statements_->putFile;
    put.With(id).With(path).With(static_cast<std::int64_t>(file.bytes));
    put.With(file.modified).With(static_cast<std::int64_t>(piece.hash));
    piece.stopped ? put.With(*piece.stopped) : put.WithNull();
    put.With(first).With(nextNode_ - 1).Run();
}

void IndexForm::PutRow(std::int64_t file, std::int64_t first, const Row& row) {
    Statement& put = statements_->putNode;
    put.With(first + row.id).With(file);
    row.parent < 0 ? put.WithNull() : put.With(row.id - row.parent);
    put.With(row.last - row.id).With(row.depth).With(KindNumber(row.kind));
    put.With(row.begin.line).With(row.begin.column).With(row.end.line - row.begin.line);
    row.name.empty() ? put.WithNull() : put.With(row.name);
    put.With(row.text).Run();
    if (row.declares == Declaration::Kind::Type) PutBases(first + row.id, row.text);
    nextNode_ = first + row.id + 1;
}

void IndexForm::PutBases(std::int64_t type, std::string_view header) {
    for (const std::string_view base : BasesOf(header)) {
        statements_->putBase.With(type).With(base).Run();
    }
}

// The rows themselves go when the update ends.
void IndexForm::Remove(std::int64_t file) {
    Statement(*database_, "INSERT INTO lost SELECT first, last FROM file WHERE id = ?")
        .With(file)
        .Run();
    Statement(*database_, "DELETE FROM file WHERE id = ?").With(file).Run();
    changed_ = true;
}

// Files that are no longer there, and those of which this run could make nothing.
void IndexForm::RemoveLost() {
    for (const auto& [path, known] : known_) {
        const bool vanished = !seen_.contains(path) && IsBelowInputs(path) && IsGone(path);
        if (vanished || failed_.contains(path)) Remove(known.id);
    }
}

// There may be as many inputs as files.
bool IndexForm::IsBelowInputs(const std::string& path) const {
    for (std::size_t end = path.size(); end != 0 && end != std::string::npos;
         end = path.rfind('/', end - 1)) {
        if (inputs_.contains(path.substr(0, end))) return true;
    }
    if (path.starts_with('/')) return inputs_.contains("/");
    return inputs_.contains(".") && !path.starts_with("../");
}

void IndexForm::Finish(bool complete) {
    if (!complete) return;
    RemoveLost();
    if (building_ || changed_) {
        database_->Run(building_ ? kSearchSql : kUpdateSql);
        PutMeta();
        database_->Run("COMMIT");
    }
    statements_.reset();
    database_.reset();
    if (building_) TakePlace();
}

void IndexForm::PutMeta() {
    Statement put(*database_, "INSERT OR REPLACE INTO meta VALUES (?, ?)");
    put.With("version").With(PROJECT_VERSION).Run();
    put.With("root").With(fs::current_path().string()).Run();
    database_->Run("INSERT OR REPLACE INTO meta VALUES ('updated', datetime())");
}

void IndexForm::TakePlace() {
    if (fsync(building_->descriptor()) != 0) throw DatabaseError(path_, std::strerror(errno));
    try {
        // What a run that was killed left beside a database deleted since would be taken for this
        // one's.
        const std::string target = TargetOf(path_);
        for (const char* const rest : {"-journal", "-wal"}) unlink((target + rest).c_str());
        building_->TakePlace();
    } catch (const std::system_error& error) {
        throw DatabaseError(path_, error.code().message());
    }
}
