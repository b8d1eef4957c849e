// Bytes compared 16 at a time, with vector instructions where there are any.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

#if defined(__SSE2__) && !defined(PLUGINCS_PORTABLE)
#include <emmintrin.h>
#else
#include <array>
#include "text/CharClass.h"
#endif

/// 16 lanes of a byte each: bytes of a text, or the result of a comparison, 0xFF in lanes that
/// match and 0 elsewhere.
class Bytes16 {
  public:
    static constexpr std::size_t kSize = 16;

    /// Reads 16 bytes from `at`, which needs no alignment.
    static Bytes16 Load(const char* at);

    Bytes16 Is(char c) const;
    /// An ASCII letter or digit, or '_'.
    Bytes16 AreIdentifier() const;
    /// Below 32 or above 126.
    Bytes16 AreNotPrintable() const;
    /// Signed: bytes from 128 on are below all of ASCII.
    Bytes16 IsBelow(char c) const;

    /// One of the characters, of which there is one at least.
    Bytes16 IsOneOf(std::string_view characters) const {
        Bytes16 found = Is(characters[0]);
        for (std::size_t i = 1; i < characters.size(); ++i) found = found | Is(characters[i]);
        return found;
    }

    Bytes16 operator|(Bytes16 other) const;
    Bytes16 operator&(Bytes16 other) const;
    Bytes16 operator~() const;
    Bytes16 Without(Bytes16 other) const { return *this & ~other; }

    /// Bit i tells whether lane i matched. Only for the result of a comparison.
    unsigned Mask() const;

  private:
#if defined(__SSE2__) && !defined(PLUGINCS_PORTABLE)
    using Lanes = __m128i;
#else
    using Lanes = std::array<signed char, kSize>;
#endif
    explicit Bytes16(Lanes lanes) : lanes_(lanes) {}
    Lanes lanes_;
};

#if defined(__SSE2__) && !defined(PLUGINCS_PORTABLE)

inline Bytes16 Bytes16::Load(const char* at) {
    return Bytes16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
}
inline Bytes16 Bytes16::Is(char c) const {
    return Bytes16(_mm_cmpeq_epi8(lanes_, _mm_set1_epi8(c)));
}
inline Bytes16 Bytes16::IsBelow(char c) const {
    return Bytes16(_mm_cmplt_epi8(lanes_, _mm_set1_epi8(c)));
}
inline Bytes16 Bytes16::AreIdentifier() const {
    // The range is shifted to end at 127, the largest value: one signed comparison tests it.
    const auto inRange = [](__m128i bytes, char first, char last) {
        const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(127 - last)));
        return _mm_cmpgt_epi8(moved, _mm_set1_epi8(static_cast<char>(126 - (last - first))));
    };
    const __m128i lower = _mm_or_si128(lanes_, _mm_set1_epi8(0x20));
    return Bytes16(_mm_or_si128(inRange(lower, 'a', 'z'), inRange(lanes_, '0', '9'))) | Is('_');
}
inline Bytes16 Bytes16::AreNotPrintable() const {
    // Plus one, 127 and all above wrap around to values below 33 (signed).
    return Bytes16(_mm_cmplt_epi8(_mm_add_epi8(lanes_, _mm_set1_epi8(1)), _mm_set1_epi8(33)));
}
inline Bytes16 Bytes16::operator|(Bytes16 other) const {
    return Bytes16(_mm_or_si128(lanes_, other.lanes_));
}
inline Bytes16 Bytes16::operator&(Bytes16 other) const {
    return Bytes16(_mm_and_si128(lanes_, other.lanes_));
}
inline Bytes16 Bytes16::operator~() const {
    return Bytes16(_mm_xor_si128(lanes_, _mm_set1_epi8(-1)));
}
inline unsigned Bytes16::Mask() const { return static_cast<unsigned>(_mm_movemask_epi8(lanes_)); }

#else

inline Bytes16 Bytes16::Load(const char* at) {
    Lanes lanes;
    std::memcpy(lanes.data(), at, kSize);
    return Bytes16(lanes);
}
inline Bytes16 Bytes16::Is(char c) const {
    Lanes answers;
    for (std::size_t i = 0; i < kSize; ++i) answers[i] = lanes_[i] == c ? -1 : 0;
    return Bytes16(answers);
}
inline Bytes16 Bytes16::IsBelow(char c) const {
    Lanes answers;
    for (std::size_t i = 0; i < kSize; ++i) answers[i] = lanes_[i] < c ? -1 : 0;
    return Bytes16(answers);
}
inline Bytes16 Bytes16::AreIdentifier() const {
    Lanes answers;
    for (std::size_t i = 0; i < kSize; ++i) {
        const char c = static_cast<char>(lanes_[i]);
        answers[i] = IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' ? -1 : 0;
    }
    return Bytes16(answers);
}
inline Bytes16 Bytes16::AreNotPrintable() const { return IsBelow(' ') | Is(127); }
inline Bytes16 Bytes16::operator|(Bytes16 other) const {
    for (std::size_t i = 0; i < kSize; ++i) other.lanes_[i] |= lanes_[i];
    return other;
}
inline Bytes16 Bytes16::operator&(Bytes16 other) const {
    for (std::size_t i = 0; i < kSize; ++i) other.lanes_[i] &= lanes_[i];
    return other;
}
inline Bytes16 Bytes16::operator~() const {
    Lanes answers;
    for (std::size_t i = 0; i < kSize; ++i) answers[i] = static_cast<signed char>(~lanes_[i]);
    return Bytes16(answers);
}
inline unsigned Bytes16::Mask() const {
    unsigned mask = 0;
    for (std::size_t i = 0; i < kSize; ++i) mask |= static_cast<unsigned>(lanes_[i] & 1) << i;
    return mask;
}

#endif

/// The first position at or after `from` whose byte the test matches, or the text's size. The test
/// takes a Bytes16 and returns the result of a comparison.
template <typename Test>
std::size_t FindWhere(std::string_view text, std::size_t from, Test test) {
    constexpr std::size_t kStep = Bytes16::kSize;
    for (; from + kStep <= text.size(); from += kStep) {
        const unsigned found = test(Bytes16::Load(text.data() + from)).Mask();
        if (found != 0) return from + static_cast<unsigned>(std::countr_zero(found));
    }
    if (from >= text.size()) return text.size();
    // The tail is shorter than a vector: load the text's last 16 bytes and shift the others out, or
    // pad a text that is shorter.
    const std::size_t left = text.size() - from;
    unsigned found = 0;
    if (text.size() >= kStep) {
        found = test(Bytes16::Load(text.data() + text.size() - kStep)).Mask() >> (kStep - left);
    } else {
        char padded[kStep] = {};
        std::memcpy(padded, text.data() + from, left);
        found = test(Bytes16::Load(padded)).Mask();
    }
    const std::size_t at = from + static_cast<unsigned>(std::countr_zero(found));
    return found == 0 || at > text.size() ? text.size() : at;
}

/// The first position at or after `from` where the test matches a byte and the one after it, or the
/// text's size; the last byte begins no pair.
template <typename Test>
std::size_t FindPair(std::string_view text, std::size_t from, Test test) {
    constexpr std::size_t kStep = Bytes16::kSize;
    const auto find = [test](const char* at) {
        return test(Bytes16::Load(at), Bytes16::Load(at + 1)).Mask();
    };
    for (; from + kStep < text.size(); from += kStep) {
        const unsigned found = find(text.data() + from);
        if (found != 0) return from + static_cast<unsigned>(std::countr_zero(found));
    }
    if (from + 1 >= text.size()) return text.size();
    const std::size_t left = text.size() - from - 1;
    unsigned found = 0;
    if (text.size() > kStep) {
        found = find(text.data() + text.size() - kStep - 1) >> (kStep - left);
    } else {
        char padded[kStep + 1] = {};
        std::memcpy(padded, text.data() + from, left + 1);
        found = find(padded) & ((1U << left) - 1);
    }
    return found == 0 ? text.size() : from + static_cast<unsigned>(std::countr_zero(found));
}
