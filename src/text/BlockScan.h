// Searches a text for classes of bytes with bit masks, 64 bytes at a time.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/ByteScan.h"

/// A bit mask over a block: bit i stands for byte i.
using ByteMask = std::uint64_t;

/// 64 bytes of text, held in vector registers where there are any.
class Block64 {
  public:
    static constexpr std::size_t kSize = 64;

    /// Reads 64 bytes from `at`, which needs no alignment.
    explicit Block64(const char* at)
        : parts_{Bytes16::Load(at), Bytes16::Load(at + 16), Bytes16::Load(at + 32),
                 Bytes16::Load(at + 48)} {}

    /// Where the byte is `c`.
    ByteMask Is(char c) const {
        return Gather([c](Bytes16 part) { return part.Is(c); });
    }

    /// Where the byte is one of the characters.
    ByteMask IsOneOf(std::string_view characters) const {
        return Gather([characters](Bytes16 part) { return part.IsOneOf(characters); });
    }

    /// Where the byte is below `c` as a signed value: bytes from 128 on are below all of ASCII.
    ByteMask IsBelow(char c) const {
        return Gather([c](Bytes16 part) { return part.IsBelow(c); });
    }

    /// Where the byte is below 32 or above 126, or one of the characters.
    ByteMask AreNotPrintable(std::string_view others) const {
        return Gather(
            [others](Bytes16 part) { return part.AreNotPrintable() | part.IsOneOf(others); });
    }

    /// As `AreNotPrintable`, but line feeds only where they are one of the characters.
    ByteMask AreFiltered(std::string_view others) const {
        return Gather([others](Bytes16 part) {
            return part.AreNotPrintable().Without(part.Is('\n')) | part.IsOneOf(others);
        });
    }

  private:
    template <typename Test>
    ByteMask Gather(Test test) const {
        return ByteMask{test(parts_[0]).Mask()} | ByteMask{test(parts_[1]).Mask()} << 16 |
               ByteMask{test(parts_[2]).Mask()} << 32 | ByteMask{test(parts_[3]).Mask()} << 48;
    }

    Bytes16 parts_[4];
};

/// Searches a text from left to right and caches the masks of the current block, so that each block
/// is loaded once, however many searches end in it. `Masks` is built from a `Block64` and has one
/// ByteMask a class of bytes. The text must outlive the scan; bytes before the start of a search
/// may change, later ones not.
template <typename Masks>
class BlockScan {
  public:
    explicit BlockScan(std::string_view text) : text_(text) {}

    /// The first position at or after `from` whose byte is of the class, or the text's size.
    std::size_t Find(std::size_t from, ByteMask Masks::*byteClass) {
        while (from < text_.size()) {
            const ByteMask found = At(from).*byteClass >> from % Block64::kSize;
            if (found != 0) {
                return std::min(text_.size(),
                                from + static_cast<unsigned>(std::countr_zero(found)));
            }
            from = (from | (Block64::kSize - 1)) + 1;
        }
        return text_.size();
    }

    /// The masks of the block that holds the position.
    const Masks& At(std::size_t position) {
        const std::size_t block = position / Block64::kSize;
        if (block != block_) Load(block);
        return masks_;
    }

  private:
    void Load(std::size_t block) {
        block_ = block;
        const std::string_view rest = text_.substr(block * Block64::kSize);
        if (rest.size() >= Block64::kSize) {
            masks_ = Masks(Block64(rest.data()));
            return;
        }
        // A match in the padding lies past the text's end, and `Find` clamps it.
        char padded[Block64::kSize] = {};
        std::memcpy(padded, rest.data(), rest.size());
        masks_ = Masks(Block64(padded));
    }

    static constexpr std::size_t kNone = ~std::size_t{0};

    std::string_view text_;
    std::size_t block_ = kNone;  // index of the block whose masks are cached
    Masks masks_{};
};
