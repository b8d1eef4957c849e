// Where the bytes of an edited text came from.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// Filled by an edit that copies runs of a text from left to right, each behind the one before.
class SourceMap {
  public:
    /// `length` bytes from `source` on were copied to `target`.
    void Add(std::size_t target, std::size_t source, std::size_t length) {
        if (length == 0 || (!runs_.empty() && Of(runs_.back(), target) == source)) return;
        runs_.push_back({target, source});
    }

    /// Where the byte at `target` came from. Targets between and behind runs continue the run
    /// before them.
    std::size_t SourceOf(std::size_t target) const {
        const auto next = std::upper_bound(
            runs_.begin(), runs_.end(), target,
            [](std::size_t position, const Run& run) { return position < run.target; });
        return next == runs_.begin() ? target : Of(*std::prev(next), target);
    }

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
