// A pass over sources: each is read and parsed in some thread, and comes out in its turn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "core/Columns.h"
#include "core/Sources.h"
#include "parsecs/run/Workers.h"

namespace plugincs {

/// What came of a source.
struct Outcome {
    std::string path;
    std::size_t rows = 0;
    std::int32_t stopped = 0;       ///< The line where braces do not match; 0: none.
    std::vector<std::int32_t> cut;  ///< Lines of conditional groups of which one branch was kept.
    std::string failure;            ///< Why there is nothing of it; empty: there is.
    bool unreadable = false;        ///< That it could not be read, and not that it was given up.
};

Outcome OutcomeOfRows(const FileRows& rows);

/// Sources with what came of them so far, for any number of passes in any threads.
class Scan {
  public:
    Scan(std::unique_ptr<const Sources> from, unsigned threadCount, bool goesOnAnyway)
        : sources(std::move(from)), threads(threadCount), goesOn(goesOnAnyway) {}

    const std::unique_ptr<const Sources> sources;
    const unsigned threads;  ///< At work at the same time; 0: as many as there are cores.
    const bool goesOn;       ///< When a source cannot be read.

    /// Of the sources from `first` on.
    void Note(std::size_t first, std::vector<Outcome> outcomes);
    /// Of the first sources, as far as any pass came; behind them what could not be looked at.
    std::vector<Outcome> Outcomes() const;

  private:
    mutable std::mutex mutex_;
    std::vector<Outcome> outcomes_;
};

/// No more is under way than threads need to go on while one of them is at a large source.
class Pass {
  public:
    explicit Pass(std::shared_ptr<Scan> scan);

    /// The columns that come next, null at the end. Waits for them, and works meanwhile. Throws
    /// SourceFailure where the scan does not go on, and what ended a thread's work.
    std::shared_ptr<const Columns> Next();

  private:
    struct Ordered {
        std::size_t first;
        std::uint64_t bytes;
        std::future<Reply> reply;
    };

    bool HasRoom() const;
    void OrderSome();
    void Order();
    void Take();
    Reply Awaited(std::future<Reply>& reply);

    const std::shared_ptr<Scan> scan_;
    const unsigned threads_;
    std::size_t next_ = 0;
    std::deque<Ordered> ordered_;  // and not taken
    std::uint64_t bytes_ = 0;      // of these
    std::deque<std::shared_ptr<const Columns>> taken_;
    Workers workers_;
};

}  // namespace plugincs
