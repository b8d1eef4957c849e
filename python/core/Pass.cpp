#include "core/Pass.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

#include "parsecs/input/Source.h"

namespace plugincs {

namespace {

// Sources that are parsed in one go, into one piece of a table.
constexpr std::size_t kGroupFiles = 256;
constexpr std::uint64_t kGroupBytes = 512U << 10U;
// What is under way at most, for each thread.
constexpr std::size_t kMostGroups = 4;
constexpr std::uint64_t kMostBytes = 2U << 20U;

struct Made : Piece {
    std::vector<std::shared_ptr<const Columns>> columns;
    std::vector<Outcome> outcomes;
};

Outcome FailureOf(const std::string& path, std::string why, bool unreadable) {
    Outcome outcome;
    outcome.path = path;
    outcome.failure = std::move(why);
    outcome.unreadable = unreadable;
    return outcome;
}

// Parses a source and gives its rows to `use`.
template <typename Use>
Outcome Parsed(const Sources& sources, std::size_t index, Use use) {
    const std::string& path = sources.PathOf(index);
    if (sources.BytesOf(index) > INT32_MAX) throw std::length_error("a source");
    try {
        ReadSource source = sources.Read(index);
        const FileRows rows(std::move(source.path), std::move(source.text));
        use(rows);
        return OutcomeOfRows(rows);
    } catch (const ReadFailure& failure) {
        return FailureOf(path, failure.what(), true);
    }
}

std::unique_ptr<Made> MakeTogether(const Sources& sources, std::size_t first, std::size_t end) {
    auto made = std::make_unique<Made>();
    ColumnsMaker maker;
    for (std::size_t index = first; index < end; ++index) {
        made->outcomes.push_back(
            Parsed(sources, index, [&maker](const FileRows& rows) { maker.Add(rows); }));
    }
    made->columns = maker.Made();
    return made;
}

// Where one of them is too large for the memory, the others are not.
std::unique_ptr<Made> MakeEach(const Sources& sources, std::size_t first, std::size_t end) {
    auto made = std::make_unique<Made>();
    for (std::size_t index = first; index < end; ++index) {
        const std::string& path = sources.PathOf(index);
        try {
            const std::unique_ptr<Made> one = MakeTogether(sources, index, index + 1);
            for (auto& columns : one->columns) made->columns.push_back(std::move(columns));
            made->outcomes.push_back(std::move(one->outcomes.front()));
        } catch (const std::bad_alloc&) {
            made->outcomes.push_back(FailureOf(path, "out of memory", false));
        } catch (const std::length_error&) {
            made->outcomes.push_back(FailureOf(path, "too large", false));
        }
    }
    return made;
}

Reply MakeGroup(const Sources& sources, std::size_t first, std::size_t end) {
    std::unique_ptr<Made> made;
    try {
        made = MakeTogether(sources, first, end);
    } catch (const std::exception&) {
        made = MakeEach(sources, first, end);
    }
    return {Reply::Kind::Made, {{}, std::move(made)}, {}};
}

unsigned ThreadsFor(const Scan& scan) {
    const std::size_t most = std::max<std::size_t>(1, scan.sources->size());
    const unsigned wanted = scan.threads == 0 ? UsableCores() : scan.threads;
    return static_cast<unsigned>(std::min<std::size_t>(wanted, most));
}

}  // namespace

Outcome OutcomeOfRows(const FileRows& rows) {
    return {rows.path(), rows.rows().size(), rows.stoppedAt(), rows.cutAt(), {}, false};
}

void Scan::Note(std::size_t first, std::vector<Outcome> outcomes) {
    const std::lock_guard<std::mutex> lock(mutex_);
    // Another pass may have come further, and saw the same.
    if (outcomes_.size() != first) return;
    std::move(outcomes.begin(), outcomes.end(), std::back_inserter(outcomes_));
}

std::vector<Outcome> Scan::Outcomes() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::vector<Outcome> all = outcomes_;
    for (const auto& [path, reason] : sources->failures) {
        all.push_back(FailureOf(path, reason, true));
    }
    return all;
}

Pass::Pass(std::shared_ptr<Scan> scan)
    : scan_(std::move(scan)), threads_(ThreadsFor(*scan_)), workers_(threads_ - 1) {}

std::shared_ptr<const Columns> Pass::Next() {
    while (taken_.empty()) {
        OrderSome();
        if (ordered_.empty()) return nullptr;
        Take();
    }
    std::shared_ptr<const Columns> columns = std::move(taken_.front());
    taken_.pop_front();
    OrderSome();
    return columns;
}

// One group is always under way, however large.
bool Pass::HasRoom() const {
    return ordered_.empty() ||
           (ordered_.size() < kMostGroups * threads_ && bytes_ < kMostBytes * threads_);
}

void Pass::OrderSome() {
    while (next_ < scan_->sources->size() && HasRoom()) Order();
}

void Pass::Order() {
    const Sources& sources = *scan_->sources;
    const std::size_t first = next_;
    std::uint64_t bytes = 0;
    while (next_ < sources.size() && next_ - first < kGroupFiles && bytes < kGroupBytes) {
        bytes += sources.BytesOf(next_++);
    }
    Workers::Task task([&sources, first, end = next_] { return MakeGroup(sources, first, end); });
    ordered_.push_back({first, bytes, workers_.Order(std::move(task))});
    bytes_ += bytes;
}

void Pass::Take() {
    Ordered ordered = std::move(ordered_.front());
    ordered_.pop_front();
    const Reply reply = Awaited(ordered.reply);
    bytes_ -= ordered.bytes;
    auto& made = static_cast<Made&>(*reply.made.piece);
    const auto failed = std::find_if(made.outcomes.begin(), made.outcomes.end(),
                                     [](const Outcome& outcome) { return outcome.unreadable; });
    if (failed != made.outcomes.end() && !scan_->goesOn) {
        throw SourceFailure(failed->path, failed->failure);
    }
    for (auto& columns : made.columns) taken_.push_back(std::move(columns));
    scan_->Note(ordered.first, std::move(made.outcomes));
}

Reply Pass::Awaited(std::future<Reply>& reply) {
    constexpr std::chrono::seconds kNow(0);
    while (reply.wait_for(kNow) != std::future_status::ready && workers_.Help()) {
    }
    return reply.get();
}

}  // namespace plugincs
