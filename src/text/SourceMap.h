// Maps positions in an edited text back to the text that it was made from.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// Filled by an edit that copies runs of a text from left to right, with ascending targets.
class SourceMap {
  public:
    /// `length` bytes from `source` on were copied to `target`.
    void Add(std::size_t target, std::size_t source, std::size_t length) {
        if (length == 0 || (!runs_.empty() && Of(runs_.back(), target) == source)) return;
        runs_.push_back({target, source});
    }

    /// Where the byte at `target` came from. Targets between and after runs continue the run
    /// before them. Logarithmic in the number of runs, constant for targets in the last one.
    std::size_t SourceOf(std::size_t target) const {
        // While the edit is going on, most look-ups are for its last run.
        if (!runs_.empty() && runs_.back().target <= target) return Of(runs_.back(), target);
        const auto next = std::upper_bound(
            runs_.begin(), runs_.end(), target,
            [](std::size_t position, const Run& run) { return position < run.target; });
        return next == runs_.begin() ? target : Of(*std::prev(next), target);
    }

    /// A cursor for look-ups in mostly ascending order: each takes time linear in the number of
    /// runs between its target and the previous one. The map must outlive it, unchanged.
    class Reader {
      public:
        explicit Reader(const SourceMap& map) : map_(map) {}

        std::size_t SourceOf(std::size_t target) {
            const std::vector<Run>& runs = map_.runs_;
            while (next_ < runs.size() && runs[next_].target <= target) ++next_;
            while (next_ > 0 && runs[next_ - 1].target > target) --next_;
            return next_ == 0 ? target : Of(runs[next_ - 1], target);
        }

      private:
        const SourceMap& map_;
        std::size_t next_ = 0;  // the first run after the last target
    };

  private:
    struct Run {
        std::size_t target;
        std::size_t source;
    };

    static std::size_t Of(const Run& run, std::size_t target) {
        return run.source + (target - run.target);
    }

    std::vector<Run> runs_;
};
