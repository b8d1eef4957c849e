// The rows of a code base as an SQLite database, made anew or brought up to date.
//
// A new database is built under another name and takes its place when it is complete. An existing
// one is changed in one transaction, held in memory until it is committed: readers see the old
// state until then, and so does everybody after a run that ended before. All runs wait for each
// other: with SQLite's locks, on the file that has the name.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "parsecs/form/FormKind.h"
#include "parsecs/forms/index/Database.h"
#include "parsecs/forms/index/RowStore.h"
#include "parsecs/output/Temporary.h"

namespace plugincs {

class IndexForm : public Form {
  public:
    /// Files below the inputs that are no longer there, or left out by now, leave the database.
    /// What was found must outlive this. Throws DatabaseError: the file is another program's,
    /// damaged, of another format, or of another folder.
    IndexForm(std::string path, const Inputs& found);
    ~IndexForm() override;

    /// Not if the database has it with this size and time.
    bool Wants(const FoundFile& file) override;
    MadeFile Make(ReadSource source) const override;
    void Take(const FoundFile& file, Piece& made) override;
    void Finish(bool complete) override;
    std::vector<InputFailure> Failures() const override { return failures_; }

  private:
    /// A file as the database had it before this run.
    struct KnownFile {
        std::int64_t id;
        std::uint64_t bytes;
        std::int64_t modified;
        std::uint64_t hash;
        bool whole;  ///< Others are parsed again, so that each run can name them.

        bool IsOf(const KnownFile& other) const {
            return bytes == other.bytes && modified == other.modified && hash == other.hash;
        }
    };
    using KnownFiles = std::unordered_map<std::string, KnownFile>;  // by path

    std::string Target() const;
    void StartAnew();
    void StartUpdate();
    void CheckIsOurs(Database& database) const;
    void CheckRoot();
    static std::string RootOf(Database& database);
    static KnownFiles FilesOf(Database& database);
    const KnownFile* Known(const std::string& path) const;
    static bool IsTouched(const KnownFile& known, const FoundFile& file);
    void RemoveLost();
    bool IsGone(const std::string& path);
    bool IsBelowInputs(const std::string& path) const;
    void PutMeta(std::string_view name, std::string_view value);
    void FinishUpdate();
    void FinishBuilding();
    void TakePlace(const KnownFiles& files);
    void CheckHas(const KnownFiles& files, Database& there) const;

    std::string path_;
    const Inputs& found_;
    std::unordered_set<std::string> inputs_;  // as they were given
    std::optional<TemporaryFile> building_;   // none for an update
    std::unique_ptr<Database> database_;
    std::unique_ptr<RowStore> store_;
    KnownFiles known_;                        // Threads read it, so it stays as it was loaded.
    std::unordered_set<std::string> seen_;    // among the inputs
    std::unordered_set<std::string> failed_;  // wanted, and not taken so far
    std::vector<InputFailure> failures_;
    bool changed_ = false;
};

extern const FormKind kIndexForm;

}  // namespace plugincs
