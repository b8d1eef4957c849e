#include "parsecs/forms/index/IndexForm.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "parsecs/form/SourceRows.h"
#include "parsecs/forms/index/Journals.h"
#include "parsecs/forms/index/RowStore.h"
#include "parsecs/forms/index/Seal.h"
#include "parsecs/forms/index/Sql.h"
#include "parsecs/input/NormalPath.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/output/Signals.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

namespace {

namespace fs = std::filesystem;

// Marks our databases among those of all programs; a database of another format has another number
// for it.
constexpr std::int64_t kApplication = 0x70726373;
constexpr std::int64_t kFormat = 2;

// Of a statement, a comment, or attribute sections. SQLite takes a billion in a row.
constexpr std::size_t kMostBytes = 400'000'000;

// Throws std::length_error for a file with more than that somewhere.
void CheckSizes(const FilePiece& piece) {
    const auto check = [](std::string_view text) {
        if (text.size() > kMostBytes) throw std::length_error("a text");
    };
    for (const Row& row : piece.file->rows()) {
        check(row.text);
        check(row.attributes);
    }
    for (const Comment& comment : piece.comments) check(comment.text);
}

bool IsEmpty(const std::string& path) {
    std::error_code error;
    return fs::file_size(path, error) == 0;
}

// Returns whether there was none.
bool MakeEmptyFile(const std::string& path) {
    const int number = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (number >= 0) close(number);
    return number >= 0;
}

}  // namespace

IndexForm::IndexForm(std::string path, const Inputs& found)
    : path_(std::move(path)), found_(found) {
    for (const std::string& input : found.named) inputs_.insert(NormalPath(input));
    std::error_code error;
    const fs::file_status old = fs::status(path_, error);
    if (old.type() == fs::file_type::none) throw DatabaseError(path_, error.message());
    if (fs::exists(old) && !fs::is_regular_file(old)) throw DatabaseError(path_, "is no file");
    const bool anew = !fs::exists(old) || IsEmpty(path_);
    CheckJournals(Target());
    anew ? StartAnew() : StartUpdate();
    store_ = std::make_unique<RowStore>(*database_, !anew);
}

IndexForm::~IndexForm() = default;

std::string IndexForm::Target() const {
    try {
        return TargetOf(path_);
    } catch (const std::system_error& error) {
        throw DatabaseError(path_, error.code().message());
    }
}

void IndexForm::StartAnew() {
    try {
        building_.emplace(Target());
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
    PutMeta("root", fs::current_path().string());
    Statement putKind(*database_, "INSERT INTO kind VALUES (?, ?)");
    for (std::size_t i = 0; i < KindName::kAll.size(); ++i) {
        putKind.With(static_cast<std::int64_t>(i)).With(KindName::kAll[i]).Run();
    }
    Statement putDeclares(*database_, "INSERT INTO declares VALUES (?, ?)");
    for (std::size_t i = 0; i < kDeclaresCount; ++i) {
        putDeclares.With(static_cast<std::int64_t>(i)).With(NameOf(static_cast<Declares>(i))).Run();
    }
}

// Another run may have put a database of its own in the place of this one while this run waited.
void IndexForm::StartUpdate() {
    do {
        database_ = std::make_unique<Database>(path_, path_);
        CheckIsOurs(*database_);
        // Pages that were written before the commit would shut readers out from then on.
        database_->Run("PRAGMA cache_spill = OFF; BEGIN IMMEDIATE");
    } while (database_->HasMoved());
    CheckSeal(*database_);
    CheckRoot();
    known_ = FilesOf(*database_);
}

void IndexForm::CheckIsOurs(Database& database) const {
    if (database.Number("PRAGMA application_id") != kApplication) {
        throw DatabaseError(path_, "is a database of another program, and is left as it is");
    }
    const std::int64_t format = database.Number("PRAGMA user_version");
    if (format == kFormat) return;
    throw DatabaseError(path_, "has format " + std::to_string(format) + " and not " +
                                   std::to_string(kFormat) +
                                   ": delete it, and it will be built anew");
}

// Relative paths mean something else in another folder.
void IndexForm::CheckRoot() {
    const std::string root = RootOf(*database_);
    if (root == fs::current_path().string()) return;
    for (const std::string& input : inputs_) {
        if (!input.starts_with('/')) {
            throw DatabaseError(path_, "was made in the folder " + root +
                                           ": run there, or delete it to build it anew");
        }
    }
}

std::string IndexForm::RootOf(Database& database) {
    Statement root(database, "SELECT value FROM meta WHERE name = 'root'");
    return std::string(root.Next() ? root.Text(0) : "");
}

IndexForm::KnownFiles IndexForm::FilesOf(Database& database) {
    KnownFiles files;
    Statement file(database,
                   "SELECT path, id, bytes, mtime, hash, coalesce(stopped, cut) IS NULL FROM file");
    while (file.Next()) {
        const auto bytes = static_cast<std::uint64_t>(file.Number(2));
        const auto hash = static_cast<std::uint64_t>(file.Number(4));
        const bool whole = file.Number(5) != 0;
        files.emplace(file.Text(0), KnownFile{file.Number(1), bytes, file.Number(3), hash, whole});
    }
    return files;
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
    CheckSizes(*piece);
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

// Files that are no longer there, or left out by now, and those of which this run could make
// nothing.
void IndexForm::RemoveLost() {
    for (const auto& [path, known] : known_) {
        const bool unseen = !seen_.contains(path) && IsBelowInputs(path);
        const bool lost = unseen && (found_.LeaveOut(path) || IsGone(path));
        if (!failed_.contains(path) && !lost) continue;
        store_->Remove(known.id);
        changed_ = true;
    }
}

// Only what the system says is gone: what cannot be examined may come back.
bool IndexForm::IsGone(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0) return false;
    if (errno == ENOENT || errno == ENOTDIR) return true;
    failures_.push_back({path, std::strerror(errno)});
    return false;
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
    if (!building_ && !changed_) return;
    database_->Run(building_ ? kSearchSql : kUpdateSql);
    PutMeta("version", PROJECT_VERSION);
    database_->Run("INSERT OR REPLACE INTO meta VALUES ('updated', datetime())");
    BreakSeal(*database_);
    database_->Run("COMMIT");
    store_.reset();
    building_ ? FinishBuilding() : FinishUpdate();
}

void IndexForm::PutMeta(std::string_view name, std::string_view value) {
    Statement(*database_, "INSERT OR REPLACE INTO meta VALUES (?, ?)").With(name).With(value).Run();
}

// What was committed is there: a seal that is missing costs the next run a longer check.
void IndexForm::FinishUpdate() {
    try {
        Seal(*database_);
    } catch (const DatabaseError&) {
    }
    database_.reset();
}

void IndexForm::FinishBuilding() {
    // A connection of its own, as this one counts no further changes.
    database_ = std::make_unique<Database>(building_->path(), path_);
    database_->Run("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
    Seal(*database_);
    const KnownFiles files = FilesOf(*database_);
    database_.reset();
    if (fsync(building_->descriptor()) != 0) throw DatabaseError(path_, std::strerror(errno));
    TakePlace(files);
}

// Only with the lock of the database that has the name by now, so that no run is at work on that.
// An empty one is made where there is none: SQLite removes then what a run that was killed has left
// beside a database that was deleted.
void IndexForm::TakePlace(const KnownFiles& files) {
    const std::string target = Target();
    const SignalsWait wait;  // or the empty one would stay
    while (true) {
        const bool made = MakeEmptyFile(target);
        Database there(target, path_);
        there.Run("BEGIN EXCLUSIVE");
        if (there.HasMoved()) continue;
        if (!IsEmpty(target)) return CheckHas(files, there);
        try {
            return building_->TakePlace();
        } catch (const std::system_error& error) {
            if (made) unlink(target.c_str());
            throw DatabaseError(path_, error.code().message());
        }
    }
}

// Another run has been faster. What it has made is as good as ours if all that is ours is in it.
void IndexForm::CheckHas(const KnownFiles& files, Database& there) const {
    CheckIsOurs(there);
    const KnownFiles others = FilesOf(there);
    const bool all = std::all_of(files.begin(), files.end(), [&others](const auto& ours) {
        const auto found = others.find(ours.first);
        return found != others.end() && found->second.IsOf(ours.second);
    });
    if (all && RootOf(there) == fs::current_path().string()) return;
    throw DatabaseError(path_,
                        "was made by another run meanwhile, and is left as it is: run again");
}

constinit const FormKind kIndexForm{
    .option = "db",
    .argument = "FILE",
    .help = "An SQLite database to ask questions of. An existing one is brought up to date.",
    .suffix = "",
    .streams = false,
    .make = [](const Options& options, const Inputs& inputs) -> std::unique_ptr<Form> {
        return std::make_unique<IndexForm>(options.output, inputs);
    },
};

}  // namespace plugincs
