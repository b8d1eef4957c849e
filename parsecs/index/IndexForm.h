// The rows of a code base as an SQLite database, made anew or brought up to date.
//
// A new database is built under another name and takes its place when it is complete. An existing
// one is changed in one transaction, held in memory until it is committed: readers see the old
// state until then, and so does everybody after a run that ended before.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "parsecs/Form.h"
#include "parsecs/index/Database.h"
#include "parsecs/index/FileIndex.h"
#include "parsecs/output/Temporary.h"

/// Made in the parent before its workers are: they need to know the files as they were. It is the
/// parent's to destroy.
class IndexForm : public Form {
  public:
    /// The inputs are files and folders as they were given; files below them that are no longer
    /// there leave the database. Throws DatabaseError: the file is another program's, damaged,
    /// of another format, or of another folder.
    IndexForm(std::string path, const std::vector<std::string>& inputs);
    ~IndexForm() override;

    /// Not if the database has it with this size and time.
    bool Wants(const FoundFile& file) override;
    FileOutcome Make(ReadSource source, std::string& made) const override;
    void Take(const FoundFile& file, std::string_view made) override;
    void Finish(bool complete) override;

  private:
    struct KnownFile {
        std::int64_t id = 0;  ///< 0 for one that the database does not have.
        std::uint64_t bytes = 0;
        std::int64_t modified = 0;
        std::uint64_t hash = 0;
        bool whole = false;   ///< Others are parsed again, so that each run can name them.
        bool seen = false;    ///< Among the inputs.
        bool failed = false;  ///< Wanted, and not taken so far.
    };
    struct Statements;

    void StartAnew();
    void StartUpdate();
    void CheckIsOurs();
    void CheckRoot();
    void LoadFiles();
    void Touch(const KnownFile& file);
    void PutFile(const std::string& path, const KnownFile& file, const FileIndex& index);
    void PutRows(std::int64_t file, std::string_view rows);
    void PutBases(std::int64_t type, std::string_view header);
    void Remove(std::int64_t file);
    void RemoveLost();
    bool IsBelowInputs(const std::string& path) const;
    void PutMeta();
    void TakePlace();

    std::string path_;
    std::unordered_set<std::string> inputs_;
    std::optional<TemporaryFile> building_;  // none for an update
    std::unique_ptr<Database> database_;
    std::unique_ptr<Statements> statements_;
    std::unordered_map<std::string, KnownFile> files_;  // by path
    std::int64_t nextFile_ = 1;
    std::int64_t nextNode_ = 1;
    bool changed_ = false;
};
