#include "text/VectorFinders.h"

#if defined(__x86_64__) && !defined(PLUGINCS_PORTABLE)
#include <immintrin.h>

namespace plugincs {

namespace {

// A byte is in a set if the row of its low four bits has the bit of its high ones. Shuffles look
// both up; those of bytes from 128 on give an empty row.
alignas(kBlockSize) constexpr std::array<unsigned char, kBlockSize> kBits = [] {
    std::array<unsigned char, kBlockSize> bits{};
    for (std::size_t i = 0; i < bits.size(); ++i) {
        bits[i] = static_cast<unsigned char>(i % 16 < 8 ? 1U << i % 16 : 0xFFU);
    }
    return bits;
}();

[[gnu::target("ssse3")]] __m128i Load16(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

// Of each byte, the bit of its high four bits.
[[gnu::target("ssse3")]] __m128i BitsOf(__m128i bytes) {
    const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(15));
    return _mm_shuffle_epi8(Load16(kBits.data()), high);
}

// 16 bytes' part of a mask.
[[gnu::target("ssse3")]] ByteMask Hits(__m128i rows, __m128i bytes, __m128i bits) {
    const __m128i found = _mm_and_si128(_mm_shuffle_epi8(rows, bytes), bits);
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(found, bits)));
}

template <std::size_t kCount>
[[gnu::target("ssse3")]] void FindWithSsse3(const char* block, const SetTables& tables,
                                            ByteMask* found) {
    const __m128i bytes[] = {Load16(block), Load16(block + 16), Load16(block + 32),
                             Load16(block + 48)};
    const __m128i bits[] = {BitsOf(bytes[0]), BitsOf(bytes[1]), BitsOf(bytes[2]), BitsOf(bytes[3])};
    for (std::size_t set = 0; set < kCount; ++set) {
        const __m128i rows = Load16(tables.rows[set].data());
        const ByteMask hits = Hits(rows, bytes[0], bits[0]) | Hits(rows, bytes[1], bits[1]) << 16 |
                              Hits(rows, bytes[2], bits[2]) << 32 |
                              Hits(rows, bytes[3], bits[3]) << 48;
        found[set] = hits ^ tables.inverted[set];
    }
}

[[gnu::target("avx2")]] __m256i Load32(const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

[[gnu::target("avx2")]] __m256i BitsOf(__m256i bytes) {
    const __m256i high = _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(15));
    return _mm256_shuffle_epi8(Load32(kBits.data()), high);
}

[[gnu::target("avx2")]] ByteMask Hits(__m256i rows, __m256i bytes, __m256i bits) {
    const __m256i found = _mm256_and_si256(_mm256_shuffle_epi8(rows, bytes), bits);
    return static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(found, bits)));
}

template <std::size_t kCount>
[[gnu::target("avx2")]] void FindWithAvx2(const char* block, const SetTables& tables,
                                          ByteMask* found) {
    const __m256i bytes[] = {Load32(block), Load32(block + 32)};
    const __m256i bits[] = {BitsOf(bytes[0]), BitsOf(bytes[1])};
    for (std::size_t set = 0; set < kCount; ++set) {
        const __m256i rows = _mm256_broadcastsi128_si256(Load16(tables.rows[set].data()));
        const ByteMask hits = Hits(rows, bytes[0], bits[0]) | Hits(rows, bytes[1], bits[1]) << 32;
        found[set] = hits ^ tables.inverted[set];
    }
}

template <std::size_t kCount>
[[gnu::target("avx512bw")]] void FindWithAvx512(const char* block, const SetTables& tables,
                                                ByteMask* found) {
    const __m512i bytes = _mm512_loadu_si512(block);
    const __m512i high = _mm512_and_si512(_mm512_srli_epi16(bytes, 4), _mm512_set1_epi8(15));
    const __m512i bits = _mm512_shuffle_epi8(_mm512_load_si512(kBits.data()), high);
    for (std::size_t set = 0; set < kCount; ++set) {
        const __m128i row = Load16(tables.rows[set].data());
        const __m512i rows = _mm512_maskz_broadcast_i32x4(0xFFFF, row);
        const __m512i found64 = _mm512_shuffle_epi8(rows, bytes);
        found[set] = _mm512_test_epi8_mask(found64, bits) ^ tables.inverted[set];
    }
}

constexpr SetFinder kFinders[] = {
    {"SSSE3",
     {FindWithSsse3<1>, FindWithSsse3<2>, FindWithSsse3<3>, FindWithSsse3<4>, FindWithSsse3<5>,
      FindWithSsse3<6>, FindWithSsse3<7>, FindWithSsse3<8>}},
    {"AVX2",
     {FindWithAvx2<1>, FindWithAvx2<2>, FindWithAvx2<3>, FindWithAvx2<4>, FindWithAvx2<5>,
      FindWithAvx2<6>, FindWithAvx2<7>, FindWithAvx2<8>}},
    {"AVX-512",
     {FindWithAvx512<1>, FindWithAvx512<2>, FindWithAvx512<3>, FindWithAvx512<4>, FindWithAvx512<5>,
      FindWithAvx512<6>, FindWithAvx512<7>, FindWithAvx512<8>}},
};

// How many of them the machine has.
std::size_t CountFinders() {
    __builtin_cpu_init();  // we may come before the runtime's own call
    if (!__builtin_cpu_supports("ssse3")) return 0;
#ifdef _WIN32
    return 1;  // GCC does not align the stack there for longer vectors
#else
    if (!__builtin_cpu_supports("avx2")) return 1;
    // VBMI is not used, but processors that have it do not slow down for the longest vectors.
    const bool fast = __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vbmi");
    return fast ? 3 : 2;
#endif
}

}  // namespace

std::span<const SetFinder> VectorFinders() { return std::span(kFinders).first(CountFinders()); }

}  // namespace plugincs

#else

namespace plugincs {

std::span<const SetFinder> VectorFinders() { return {}; }

}  // namespace plugincs

#endif
