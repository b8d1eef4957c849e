// Finds sets of bytes in a text as bit masks, 64 bytes at a time, with the best vector instructions
// that the machine has.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/ByteSet.h"

namespace plugincs {

/// A bit mask over a block of 64 bytes: bit i stands for byte i.
using ByteMask = std::uint64_t;

inline constexpr std::size_t kBlockSize = 64;

/// The position of the first byte in the mask, or the block's size.
inline std::size_t First(ByteMask mask) { return static_cast<std::size_t>(std::countr_zero(mask)); }

/// The mask of a block's first `count` bytes; of all where it has no more. Without a branch: how
/// long texts are cannot be predicted.
inline ByteMask MaskOfFirst(std::size_t count) {
    const ByteMask rest = (ByteMask{1} << count % kBlockSize) - 1;
    return rest | (ByteMask{0} - ByteMask{count >= kBlockSize});
}

/// The first byte of the mask alone; none if there is none.
inline ByteMask Lowest(ByteMask mask) { return mask & (~mask + 1); }

/// The mask of the bytes before the first one in the mask; of all if there is none.
inline ByteMask Below(ByteMask mask) { return Lowest(mask) - 1; }

/// How many bytes are in the mask, in sums of ever more neighbouring bits: where the target lacks
/// the instruction, std::popcount is a library call.
inline int CountBits(ByteMask mask) {
    mask -= mask >> 1 & 0x5555555555555555;
    mask = (mask & 0x3333333333333333) + (mask >> 2 & 0x3333333333333333);
    mask = (mask + (mask >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<int>(mask * 0x0101010101010101 >> 56);
}

/// Some sets in the forms that the instructions need.
struct SetTables {
    static constexpr std::size_t kMost = 8;

    /// The rows of each set, or of its complement if that is the one without high bytes.
    alignas(kBlockSize) std::array<std::array<std::uint8_t, 16>, kMost> rows{};
    std::array<ByteMask, kMost> inverted{};   ///< All bits, if the rows are the complement's.
    std::array<std::uint8_t, 256> members{};  ///< By byte: bit i tells whether it is in set i.
};

/// A way to find sets: functions for one set, for two and so on, which write one mask for each.
struct SetFinder {
    using Function = void (*)(const char* block, const SetTables& tables, ByteMask* found);

    const char* name;
    std::array<Function, SetTables::kMost> functions;
};

/// The way for every machine, and the best one for this.
extern const SetFinder kPortableFinder;
extern const SetFinder& setFinder;

/// Up to eight sets that are looked for together: one constant for each place that looks.
template <std::size_t kCount>
class ByteSets {
  public:
    using Masks = std::array<ByteMask, kCount>;

    template <typename... Sets>
    constexpr explicit ByteSets(const Sets&... sets) {
        std::size_t next = 0;
        (Add(sets, next++), ...);
    }

    /// Where the sets' bytes are in the 64 bytes from `block` on, which needs no alignment.
    Masks In(const char* block) const {
        Masks found;
        setFinder.functions[kCount - 1](block, tables_, found.data());
        return found;
    }

    /// The same from `at` on; past the text's end nothing is found.
    Masks In(std::string_view text, std::size_t at) const {
        return at + kBlockSize <= text.size() ? In(text.data() + at) : InLast(text, at);
    }

    const SetTables& Tables() const { return tables_; }

    /// Whether the byte is in any of the sets.
    bool Have(char c) const { return tables_.members[static_cast<unsigned char>(c)] != 0; }

  private:
    Masks InLast(std::string_view text, std::size_t at) const {
        char padded[kBlockSize] = {};
        text.copy(padded, kBlockSize, at);
        Masks found = In(padded);
        for (ByteMask& mask : found) mask &= MaskOfFirst(text.size() - at);
        return found;
    }

    constexpr void Add(const ByteSet& set, std::size_t index) {
        tables_.inverted[index] = set.HasHigh() ? ~ByteMask{0} : 0;
        const ByteSet low = set.HasHigh() ? ~set : set;
        tables_.rows[index] = low.Rows();
        for (std::size_t byte = 0; byte < tables_.members.size(); ++byte) {
            const unsigned member = set.Has(static_cast<char>(byte)) ? 1 : 0;
            tables_.members[byte] =
                static_cast<std::uint8_t>(tables_.members[byte] | member << index);
        }
    }

    SetTables tables_;
};
template <typename... Sets>
ByteSets(const Sets&...) -> ByteSets<sizeof...(Sets)>;

/// The first position at or after `from` of a byte in the set, or the text's size.
inline std::size_t Find(const ByteSets<1>& set, std::string_view text, std::size_t from) {
    for (; from + kBlockSize <= text.size(); from += kBlockSize) {
        const ByteMask found = set.In(text.data() + from)[0];
        if (found != 0) return from + First(found);
    }
    while (from < text.size() && !set.Have(text[from])) ++from;
    return from;
}

}  // namespace plugincs
