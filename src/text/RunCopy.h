// Copies runs of a text into a new one.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace plugincs {

/// Builds a text from runs of the source, from left to right, and from bytes that each replace one
/// of the source's: so the result is never longer than the source up to there.
class RunCopy {
  public:
    /// The source must outlive this object. Throws std::bad_alloc.
    explicit RunCopy(std::string_view source)
        : source_(source), result_(source.size() + kAtOnce, '\0') {}

    /// Appends the source from `start` up to `end`.
    void Keep(std::size_t start, std::size_t end) {
        assert(size_ <= start && start <= end && end <= source_.size());
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

    /// Appends `c` in place of one of the source's bytes.
    void Put(char c) {
        assert(size_ < source_.size());
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
    std::string result_;
    std::size_t size_ = 0;
};

}  // namespace plugincs
