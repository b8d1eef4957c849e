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
struct ComparedPair {
    std::vector<Change> changes;
    std::unique_ptr<DeclaredFile> old;  // both null where all is matched
    std::unique_ptr<DeclaredFile> now;
    std::vector<std::string> messages;
    bool failed = false;

    bool TellsSomething() const { return !changes.empty() || old || now || !messages.empty(); }
};

// Of the pairs of a lot.
struct ComparedLot : Piece {
    std::vector<ComparedPair> pairs;
};

// A file that was read, or the reason why not.
struct StateText {
    std::string text;
    std::string failure;
};

// Pairs that one thread compares at once. What git has was read before.
struct Lot {
    struct Item {
        std::size_t number;
        StateText old;
        StateText now;
    };
    std::vector<Item> items;
    std::uint64_t bytes = 0;
};

class PairReader {
  public:
    PairReader(const Options& options, const FilePair& pair, HashPoint point)
        : pair_(pair), point_(point), traces_(options.traces ? stderr : nullptr) {}

    ComparedPair Compare(StateText old, StateText now, std::size_t number) {
        Read(pair_.old, old);
        Read(pair_.now, now);
        const bool isSame = pair_.old.isThere == pair_.now.isThere && old.text == now.text;
        if (result_.failed || (isSame && !pair_.moved)) return std::move(result_);
        result_.old = Listed(pair_.old, std::move(old.text), number);
        result_.now = Listed(pair_.now, std::move(now.text), number);
        if (result_.failed) return std::move(result_);
        if (result_.old && result_.now) Match();
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
        if (!state.failure.empty()) Fail(file.Label() + ": " + state.failure);
    }

    void Fail(std::string message) {
        result_.messages.push_back(std::move(message));
        result_.failed = true;
    }

    std::unique_ptr<DeclaredFile> Listed(const StateFile& state, std::string text,
                                         std::size_t number) {
        if (!state.isThere) return nullptr;
        try {
            const FileRows rows = RowsOf({state.Path(), std::move(text), 0, traces_});
            auto file = std::make_unique<DeclaredFile>();
            file->path = state.Path();
            file->pair = number;
            ListDeclared(rows, point_, *file);
            if (rows.stoppedAt() > 0) NoteStop(state, rows.stoppedAt());
            return file;
        } catch (const std::exception& failure) {
            Fail(state.Label() + ": given up: " + std::string(ReasonOf(failure)));
            return nullptr;
        }
    }

    void NoteStop(const StateFile& state, std::int32_t line) {
        result_.messages.push_back(state.Label() + ":" + std::to_string(line) +
                                   ": stopped early, as braces do not match: no declaration "
                                   "behind this is seen, its text is the file's own");
    }

    void Match() {
        Declared& old = result_.old->declared.front();
        Declared& now = result_.now->declared.front();
        if (pair_.moved) result_.changes.push_back(MakeChange(ChangeKind::Moved, &old, &now));
        plugincs::Match(old, now, result_.changes);
        // Those that stay know each other by their addresses.
        if (!IsAllMatched(*result_.old) || !IsAllMatched(*result_.now)) return;
        result_.old.reset();
        result_.now.reset();
    }

    static bool IsAllMatched(const DeclaredFile& file) {
        return std::all_of(file.declared.begin(), file.declared.end(),
                           [](const Declared& each) { return each.partner != nullptr; });
    }

    const FilePair& pair_;
    const HashPoint point_;
    const Traces traces_;
    ComparedPair result_;
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
        for (const InputFailure& failure : states_.failures) {
            Say(failure.path + ": " + failure.reason);
            failed_ = true;
        }
        while (true) {
            OrderSome();
            if (ordered_.empty()) break;
            const Reply reply = workers_.Await(ordered_.front().reply);
            for (ComparedPair& pair : static_cast<ComparedLot&>(*reply.made.piece).pairs)
                Take(pair);
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

    // One lot is always under way, however large.
    bool HasRoom() const {
        constexpr std::size_t kMostLots = 64;
        constexpr std::uint64_t kMostBytes = 8U << 20U;
        return ordered_.empty() || (ordered_.size() < kMostLots && bytes_ < kMostBytes);
    }

    void OrderSome() {
        while (next_ < states_.pairs.size() && HasRoom()) Order(NextLot());
    }

    // Small files are soon compared: to order each by itself would take longer.
    Lot NextLot() {
        constexpr std::size_t kMostPairs = 64;
        constexpr std::uint64_t kMostBytes = 1U << 18U;
        Lot lot;
        while (next_ < states_.pairs.size() && lot.items.size() < kMostPairs &&
               lot.bytes < kMostBytes) {
            const FilePair& pair = states_.pairs[next_];
            Lot::Item item{next_, FromGit(pair.old), FromGit(pair.now)};
            lot.bytes += pair.old.found.bytes + pair.now.found.bytes + item.old.text.size() +
                         item.now.text.size();
            lot.items.push_back(std::move(item));
            ++next_;
        }
        return lot;
    }

    void Order(Lot lot) {
        const std::uint64_t bytes = lot.bytes;
        Workers::Task task([this, ordered = std::move(lot)]() mutable {
            MadeFile made;
            made.piece = Compare(ordered);
            return Reply{Reply::Kind::Made, std::move(made), {}};
        });
        bytes_ += bytes;
        ordered_.push_back({bytes, workers_.Order(std::move(task))});
    }

    // In any thread.
    std::unique_ptr<ComparedLot> Compare(Lot& lot) const {
        auto compared = std::make_unique<ComparedLot>();
        for (Lot::Item& item : lot.items) {
            PairReader reader(options_, states_.pairs[item.number], point_);
            ComparedPair pair =
                reader.Compare(std::move(item.old), std::move(item.now), item.number);
            if (pair.TellsSomething()) compared->pairs.push_back(std::move(pair));
        }
        return compared;
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
