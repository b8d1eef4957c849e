// Copies runs of a text into a new one.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "text/SourceMap.h"

/// Builds a text from runs of the source, from left to right, and from bytes that each replace one
/// of the source's: so the result is never longer than the source up to there.
class RunCopy {
  public:
    /// The source must outlive this object. `map`, unless it is null, receives where the bytes came
    /// from. Throws std::bad_alloc.
    RunCopy(std::string_view source, SourceMap* map)
        : source_(source), map_(map), result_(source.size() + kAtOnce, '\0') {}

    /// Appends the source from `start` up to `end`.
    void Keep(std::size_t start, std::size_t end) {
        assert(size_ <= start && start <= end && end <= source_.size());
        if (map_ != nullptr) map_->Add(size_, start, end - start);
        const char* const from = source_.data() + start;
        char* const to = result_.data() + size_;
        size_ += end - start;
        // Most runs are short. A copy of fixed size compiles to a few vector moves, which costs
        // less than memcpy's branches on the length; the next run overwrites the excess.
        if (source_.size() - start < kAtOnce) {
            std::memcpy(to, from, end - start);
            return;
        }
        std::memcpy(to, from, kAtOnce);
        if (end - start > kAtOnce) std::memcpy(to + kAtOnce, from + kAtOnce, end - start - kAtOnce);
    }

    /// Appends `c` in place of the source's byte at `at`.
    void Put(char c, std::size_t at) {
        assert(size_ <= at && at < source_.size());
        if (map_ != nullptr) map_->Add(size_, at, 1);
        result_[size_++] = c;
    }

    /// Moves the result out; nothing can be appended afterwards.
    std::string Take() {
        result_.resize(size_);
        return std::move(result_);
    }

  private:
    static constexpr std::size_t kAtOnce = 64;

    std::string_view source_;
    SourceMap* map_;
    std::string result_;
    std::size_t size_ = 0;
};
