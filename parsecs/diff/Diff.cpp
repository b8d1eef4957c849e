// The road of a file: both its states are read and compared in some thread, unless they have the
// same bytes. What is left without a partner then is looked for in all other files.
#include "parsecs/diff/Diff.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <iterator>
#include <utility>

#include "parsecs/diff/Change.h"
#include "parsecs/diff/DiffLines.h"
#include "parsecs/diff/Matching.h"
#include "parsecs/diff/Moves.h"
#include "parsecs/form/FormKind.h"
#include "parsecs/form/SourceRows.h"
#include "parsecs/messages/Messages.h"
#include "parsecs/options/ExitCode.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/output/Terminal.h"
#include "parsecs/run/Workers.h"

namespace plugincs {

namespace {

// What came of a pair of files.
struct ComparedPair : Piece {
    std::vector<Change> changes;
    std::unique_ptr<DeclaredFile> old;  // both null where all is matched
    std::unique_ptr<DeclaredFile> now;
    std::vector<std::string> messages;
    bool failed = false;
};

// A file that was read, or the reason why not.
struct StateText {
    std::string text;
    std::string failure;
};

class PairReader {
  public:
    PairReader(const Options& options, const FilePair& pair, HashPoint point)
        : pair_(pair), point_(point), traces_(options.traces ? stderr : nullptr) {}

    // What git has was read before.
    std::unique_ptr<ComparedPair> Compare(StateText old, StateText now, std::size_t number) {
        Read(pair_.old, old);
        Read(pair_.now, now);
        const bool isSame = pair_.old.isThere == pair_.now.isThere && old.text == now.text;
        if (result_->failed || (isSame && !pair_.moved)) return std::move(result_);
        result_->old = Listed(pair_.old, std::move(old.text), number);
        result_->now = Listed(pair_.now, std::move(now.text), number);
        if (result_->failed) return std::move(result_);
        if (result_->old && result_->now) Match();
        return std::move(result_);
    }

  private:
    void Read(const StateFile& file, StateText& state) {
        if (!file.isThere) return;
        try {
            if (file.blob.empty()) state.text = ReadFound(file.found).text;
        } catch (const std::exception& failure) {
            state.failure = ReasonOf(failure);
        }
        if (!state.failure.empty()) Fail(file.label + ": " + state.failure);
    }

    void Fail(std::string message) {
        result_->messages.push_back(std::move(message));
        result_->failed = true;
    }

    std::unique_ptr<DeclaredFile> Listed(const StateFile& state, std::string text,
                                         std::size_t number) {
        if (!state.isThere) return nullptr;
        try {
            const FileRows rows = RowsOf({state.path, std::move(text), 0, traces_});
            auto file = std::make_unique<DeclaredFile>();
            file->path = state.path;
            file->pair = number;
            ListDeclared(rows, point_, *file);
            if (rows.stoppedAt() > 0) NoteStop(state, rows.stoppedAt());
            return file;
        } catch (const std::exception& failure) {
            Fail(state.label + ": given up: " + std::string(ReasonOf(failure)));
            return nullptr;
        }
    }

    void NoteStop(const StateFile& state, std::int32_t line) {
        result_->messages.push_back(state.label + ":" + std::to_string(line) +
                                    ": stopped early, as braces do not match: no declaration "
                                    "behind this is seen, its text is the file's own");
    }

    void Match() {
        Declared& old = result_->old->declared.front();
        Declared& now = result_->now->declared.front();
        if (pair_.moved) result_->changes.push_back(MakeChange(ChangeKind::Moved, &old, &now));
        plugincs::Match(old, now, result_->changes);
        // Those that stay know each other by their addresses.
        if (!IsAllMatched(*result_->old) || !IsAllMatched(*result_->now)) return;
        result_->old.reset();
        result_->now.reset();
    }

    static bool IsAllMatched(const DeclaredFile& file) {
        return std::all_of(file.declared.begin(), file.declared.end(),
                           [](const Declared& each) { return each.partner != nullptr; });
    }

    const FilePair& pair_;
    const HashPoint point_;
    const Traces traces_;
    std::unique_ptr<ComparedPair> result_ = std::make_unique<ComparedPair>();
};

class Differ {
  public:
    Differ(const Options& options, States& states)
        : options_(options),
          states_(states),
          workers_(ThreadsFor(options, states.pairs.size()) - 1) {
        for (const FilePair& pair : states_.pairs) {
            if (!pair.old.blob.empty()) states_.blobs->Ask(pair.old.blob);
            if (!pair.now.blob.empty()) states_.blobs->Ask(pair.now.blob);
        }
    }

    void CompareAll() {
        for (const auto& [path, reason] : states_.failures) Fail(path + ": " + reason);
        while (true) {
            OrderSome();
            if (ordered_.empty()) break;
            const Reply reply = workers_.Await(ordered_.front().reply);
            Take(static_cast<ComparedPair&>(*reply.made.piece));
            bytes_ -= ordered_.front().bytes;
            ordered_.pop_front();
        }
        FindMoves(old_, now_, changes_);
        Sort(changes_);
    }

    const std::vector<Change>& changes() const { return changes_; }
    bool failed() const { return failed_; }

  private:
    struct Ordered {
        std::uint64_t bytes;
        std::future<Reply> reply;
    };

    // One pair is always under way, however large.
    bool HasRoom() const {
        constexpr std::size_t kMostPairs = 256;
        constexpr std::uint64_t kMostBytes = 8U << 20U;
        return ordered_.empty() || (ordered_.size() < kMostPairs && bytes_ < kMostBytes);
    }

    void OrderSome() {
        for (; next_ < states_.pairs.size() && HasRoom(); ++next_) Order(next_);
    }

    void Order(std::size_t number) {
        const FilePair& pair = states_.pairs[number];
        StateText old = FromGit(pair.old);
        StateText now = FromGit(pair.now);
        const std::uint64_t bytes =
            pair.old.found.bytes + pair.now.found.bytes + old.text.size() + now.text.size();
        Workers::Task task(
            [this, &pair, number, one = std::move(old), other = std::move(now)]() mutable {
                PairReader reader(options_, pair, point_);
                MadeFile made;
                made.piece = reader.Compare(std::move(one), std::move(other), number);
                return Reply{Reply::Kind::Made, std::move(made), {}};
            });
        bytes_ += bytes;
        ordered_.push_back({bytes, workers_.Order(std::move(task))});
    }

    // git hands them over one by one.
    StateText FromGit(const StateFile& file) {
        if (file.blob.empty()) return {};
        try {
            return {states_.blobs->Take(), {}};
        } catch (const ReadFailure& failure) {
            return {{}, failure.what()};
        }
    }

    void Take(ComparedPair& pair) {
        for (const std::string& message : pair.messages) Say(message);
        failed_ = failed_ || pair.failed;
        if (pair.failed) return;
        std::move(pair.changes.begin(), pair.changes.end(), std::back_inserter(changes_));
        if (pair.old) old_.push_back(std::move(pair.old));
        if (pair.now) now_.push_back(std::move(pair.now));
    }

    void Fail(const std::string& message) {
        Say(message);
        failed_ = true;
    }

    const Options& options_;
    States& states_;
    const HashPoint point_;
    std::size_t next_ = 0;
    std::uint64_t bytes_ = 0;  // of what is under way
    std::deque<Ordered> ordered_;
    std::vector<Change> changes_;
    std::vector<std::unique_ptr<DeclaredFile>> old_;  // with something that has no partner
    std::vector<std::unique_ptr<DeclaredFile>> now_;
    bool failed_ = false;
    Workers workers_;
};

void WriteChanges(const Options& options, const std::vector<Change>& changes) {
    constexpr std::size_t kAtOnce = 65536;
    const bool rows = !options.form->option.empty();
    const bool colour = WantsColour(options);
    OutputFile output(options.output);
    std::string text(rows ? kDiffRowsHead : "");
    for (const Change& change : changes) {
        rows ? AppendDiffRow(change, text) : AppendDiffLine(change, colour, text);
        if (text.size() < kAtOnce) continue;
        output.Write(text);
        text.clear();
    }
    output.Write(text);
    output.Finish();
}

}  // namespace

int Diff(const Options& options, States& states) {
    Differ differ(options, states);
    differ.CompareAll();
    WriteChanges(options, differ.changes());
    if (differ.failed()) return kNotWritten;
    return differ.changes().empty() ? 0 : 1;
}

}  // namespace plugincs
