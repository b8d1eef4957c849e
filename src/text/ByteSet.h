// A set of bytes, made at compile time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace plugincs {

/// Of the bytes from 128 on a set holds all or none, as the instructions that search for it ask.
class ByteSet {
  public:
    /// The characters, which are ASCII.
    constexpr explicit ByteSet(std::string_view characters) {
        for (const char c : characters) Add(c);
    }
    /// `first` to `last`, both ASCII.
    constexpr ByteSet(char first, char last) {
        for (char c = first; c < last; ++c) Add(c);
        Add(last);
    }

    constexpr ByteSet operator|(ByteSet other) const {
        for (std::size_t i = 0; i < rows_.size(); ++i) other.rows_[i] |= rows_[i];
        other.high_ = other.high_ || high_;
        return other;
    }
    constexpr ByteSet operator~() const {
        ByteSet others = *this;
        for (std::uint8_t& row : others.rows_) row = static_cast<std::uint8_t>(~row);
        others.high_ = !high_;
        return others;
    }

    constexpr bool Has(char c) const {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 128 ? high_ : (rows_[byte % 16] >> byte / 16 & 1) != 0;
    }

    /// Of each value of a byte's low four bits, a row: a bit for each value of its high ones
    /// below 8.
    constexpr const std::array<std::uint8_t, 16>& Rows() const { return rows_; }
    /// Whether the bytes from 128 on are in the set.
    constexpr bool HasHigh() const { return high_; }

  private:
    constexpr void Add(char c) {
        const auto byte = static_cast<unsigned char>(c);
        rows_[byte % 16] = static_cast<std::uint8_t>(rows_[byte % 16] | 1U << byte / 16);
    }

    std::array<std::uint8_t, 16> rows_{};
    bool high_ = false;
};

}  // namespace plugincs
