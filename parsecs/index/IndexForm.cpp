#include "parsecs/index/IndexForm.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "parsecs/index/RowStore.h"
#include "parsecs/index/Sql.h"
#include "parsecs/input/NormalPath.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/rows/Outcome.h"
#include "rows/RowKinds.h"

namespace {

namespace fs = std::filesystem;

// Marks our databases among those of all programs; a database of another format has another number
// for it.
constexpr std::int64_t kApplication = 0x70726373;
constexpr std::int64_t kFormat = 2;

// Only a path of which the system says so: what cannot be examined may come back.
bool IsGone(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

}  // namespace

IndexForm::IndexForm(std::string path, const std::vector<std::string>& inputs)
    : path_(std::move(path)) {
    for (const std::string& input : inputs) inputs_.insert(NormalPath(input));
    std::error_code error;
    const fs::file_status old = fs::status(path_, error);
    if (old.type() == fs::file_type::none) throw DatabaseError(path_, error.message());
    if (fs::exists(old) && !fs::is_regular_file(old)) throw DatabaseError(path_, "is no file");
    const bool anew = !fs::exists(old) || fs::file_size(path_, error) == 0;
    anew ? StartAnew() : StartUpdate();
    store_ = std::make_unique<RowStore>(*database_, !anew);
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
    Statement putDeclares(*database_, "INSERT INTO declares VALUES (?, ?)");
    for (std::size_t i = 0; i < kDeclaresCount; ++i) {
        putDeclares.With(static_cast<std::int64_t>(i)).With(NameOf(static_cast<Declares>(i))).Run();
    }
}

void IndexForm::StartUpdate() {
    database_ = std::make_unique<Database>(path_, path_);
    CheckIsOurs();
    // Pages that were written before the commit would shut readers out from then on.
    database_->Run("PRAGMA cache_spill = OFF; BEGIN IMMEDIATE");
    CheckRoot();
    LoadFiles();
}

void IndexForm::CheckIsOurs() {
    if (database_->Number("PRAGMA application_id") != kApplication) {
        throw DatabaseError(path_, "is a database of another program, and is left as it is");
    }
    const std::int64_t format = database_->Number("PRAGMA user_version");
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
    Statement file(*database_,
                   "SELECT path, id, bytes, mtime, hash, coalesce(stopped, cut) IS NULL FROM file");
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
    if (same) return store_->Touch(known->id, file);
    if (known != nullptr) store_->Remove(known->id);
    store_->Put(known == nullptr ? store_->NewFile() : known->id, path, file, piece);
}

const IndexForm::KnownFile* IndexForm::Known(const std::string& path) const {
    const auto found = known_.find(path);
    return found == known_.end() ? nullptr : &found->second;
}

bool IndexForm::IsTouched(const KnownFile& known, const FoundFile& file) {
    return known.bytes != file.bytes || known.modified != file.modified;
}

// Files that are no longer there, and those of which this run could make nothing.
void IndexForm::RemoveLost() {
    for (const auto& [path, known] : known_) {
        const bool vanished = !seen_.contains(path) && IsBelowInputs(path) && IsGone(path);
        if (!vanished && !failed_.contains(path)) continue;
        store_->Remove(known.id);
        changed_ = true;
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
    store_.reset();
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
