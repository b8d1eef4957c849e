// Hashes of texts, for comparing them when they are gone.
//
// They are polynomials at a point that each run draws by lot: whoever writes a source cannot know
// it, and so cannot make two texts look alike.
#pragma once

#include <cstdint>
#include <string_view>

namespace plugincs {

class HashPoint {
  public:
    /// Another one each time.
    HashPoint();
    std::uint64_t value() const { return value_; }

  private:
    std::uint64_t value_;
};

/// Of a sequence of pieces: where one ends and the next begins counts. Two different sequences of n
/// bytes have the same hash with a probability of n / 2^60 at most.
class TextHash {
  public:
    explicit TextHash(HashPoint point) : point_(point.value()) {}

    void Add(std::string_view piece);
    void Add(std::uint64_t number);

    std::uint64_t value() const { return value_; }

  private:
    void Step(std::uint64_t digit);

    std::uint64_t point_;
    std::uint64_t value_ = 0;
};

/// One hash of two in this order.
std::uint64_t Mixed(std::uint64_t first, std::uint64_t second);

}  // namespace plugincs
