// Searching a text 16 bytes at a time. Most bytes of a source mean nothing to the pass that looks
// at them; these find the next one that does.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#else
#include <array>
#endif

/// 16 bytes side by side, or the answers to a question about each of them.
class Bytes16 {
  public:
    static constexpr std::size_t kSize = 16;

    /// Reads 16 bytes from `at`, which needs no alignment.
    static Bytes16 Load(const char* at);

    /// Where the byte is `c`.
    Bytes16 Is(char c) const;
    /// Where the byte is below `c`, taken as signed: bytes from 128 on are below all of ASCII.
    Bytes16 IsBelow(char c) const;

    Bytes16 operator|(Bytes16 other) const;
    Bytes16 operator&(Bytes16 other) const;
    Bytes16 operator~() const;

    /// Bit i stands for the answer about byte i.
    unsigned Mask() const;

  private:
#ifdef __SSE2__
    using Lanes = __m128i;
#else
    using Lanes = std::array<signed char, kSize>;
#endif
    explicit Bytes16(Lanes lanes) : lanes_(lanes) {}
    Lanes lanes_;
};

#ifdef __SSE2__

inline Bytes16 Bytes16::Load(const char* at) {
    return Bytes16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
}
inline Bytes16 Bytes16::Is(char c) const {
    return Bytes16(_mm_cmpeq_epi8(lanes_, _mm_set1_epi8(c)));
}
inline Bytes16 Bytes16::IsBelow(char c) const {
    return Bytes16(_mm_cmplt_epi8(lanes_, _mm_set1_epi8(c)));
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

/// The first position at or behind `from` whose byte the test says yes to, or the text's size. The
/// test takes Bytes16 and gives Bytes16.
template <typename Test>
std::size_t FindWhere(std::string_view text, std::size_t from, Test test) {
    constexpr std::size_t kStep = Bytes16::kSize;
    for (; from + kStep <= text.size(); from += kStep) {
        const unsigned found = test(Bytes16::Load(text.data() + from)).Mask();
        if (found != 0) return from + static_cast<std::size_t>(__builtin_ctz(found));
    }
    if (from >= text.size()) return text.size();
    // Less than a step is left: look at it once more together with what comes before, or alone.
    const std::size_t left = text.size() - from;
    unsigned found = 0;
    if (text.size() >= kStep) {
        found = test(Bytes16::Load(text.data() + text.size() - kStep)).Mask() >> (kStep - left);
    } else {
        char padded[kStep] = {};
        std::memcpy(padded, text.data() + from, left);
        found = test(Bytes16::Load(padded)).Mask() & ((1U << left) - 1);
    }
    return found == 0 ? text.size() : from + static_cast<std::size_t>(__builtin_ctz(found));
}
