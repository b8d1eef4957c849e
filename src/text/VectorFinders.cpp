#include "text/VectorFinders.h"

#ifdef PLUGINCS_PORTABLE

namespace plugincs {

std::span<const SetFinder> VectorFinders() { return {}; }

}  // namespace plugincs

#else

// One text for all instruction sets: the library has this file compiled once for each of them, in a
// namespace of its own. Those left out are no faster here than what is there, or are vectors of no
// fixed size, of which there can be no arrays.
#define HWY_WANT_SSSE3 1
#define HWY_COMPILE_ALL_ATTAINABLE
#define HWY_DISABLED_TARGETS (HWY_SSE4 | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "text/VectorFinders.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <cstring>

HWY_BEFORE_NAMESPACE();

namespace plugincs::HWY_NAMESPACE {

namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Tag = hn::CappedTag<std::uint8_t, kBlockSize>;
using Bytes = hn::Vec<Tag>;
constexpr std::size_t kSize = hn::MaxLanes(Tag());
constexpr std::size_t kParts = kBlockSize / kSize;

// A byte is in a set if the row of its low four bits has the bit of its high ones. Shuffles look
// both up; bytes from 128 on have an empty row, and any bit.
alignas(16) constexpr std::uint8_t kBits[16] = {1,   2,   4,   8,   16,  32,  64,  128,
                                                128, 128, 128, 128, 128, 128, 128, 128};

// What a byte's row is looked up by.
HWY_ATTR Bytes RowIndex(Bytes bytes) {
#if HWY_ARCH_X86
    return bytes;  // the instruction does without the bits between
#else
    return hn::And(bytes, hn::Set(Tag(), 0x8F));
#endif
}

template <std::size_t kCount>
HWY_ATTR void Find(const char* block, const SetTables& tables, ByteMask* found) {
    const Bytes bitTable = hn::LoadDup128(Tag(), kBits);
    Bytes indices[kParts];
    Bytes bits[kParts];
    for (std::size_t part = 0; part < kParts; ++part) {
        const auto* const from = reinterpret_cast<const std::uint8_t*>(block) + part * kSize;
        const Bytes bytes = hn::LoadU(Tag(), from);
        indices[part] = RowIndex(bytes);
        bits[part] = hn::TableLookupBytes(bitTable, hn::ShiftRight<4>(bytes));
    }
    for (std::size_t set = 0; set < kCount; ++set) {
        const Bytes rowTable = hn::LoadDup128(Tag(), tables.rows[set].data());
        std::uint8_t hits[sizeof(ByteMask)];
        for (std::size_t part = 0; part < kParts; ++part) {
            const Bytes rows = hn::TableLookupBytesOr0(rowTable, indices[part]);
            hn::StoreMaskBits(Tag(), hn::TestBit(rows, bits[part]), hits + part * kSize / 8);
        }
        ByteMask mask = 0;
        std::memcpy(&mask, hits, sizeof mask);
        found[set] = mask ^ tables.inverted[set];
    }
}

[[maybe_unused]] constexpr std::array<SetFinder::Function, SetTables::kMost> kFunctions{
    Find<1>, Find<2>, Find<3>, Find<4>, Find<5>, Find<6>, Find<7>, Find<8>};

}  // namespace

}  // namespace plugincs::HWY_NAMESPACE

HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace plugincs {

#if HWY_ARCH_X86

namespace {

bool HasSsse3() {
    __builtin_cpu_init();  // we may come before the runtime's own call
    return __builtin_cpu_supports("ssse3");
}

#ifdef _WIN32
// GCC does not align the stack there for longer vectors.
constexpr SetFinder kFinders[] = {{"SSSE3", N_SSSE3::kFunctions}};

std::size_t CountFinders() { return HasSsse3() ? 1 : 0; }
#else
constexpr SetFinder kFinders[] = {
    {"SSSE3", N_SSSE3::kFunctions}, {"AVX2", N_AVX2::kFunctions}, {"AVX-512", N_AVX3::kFunctions}};

bool HasAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
           __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
}

// VBMI is not used, but processors that have it do not slow down for the longest vectors.
bool HasFastAvx512() {
    return __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vbmi");
}

// How many of them the machine has.
std::size_t CountFinders() {
    if (!HasSsse3()) return 0;
    if (!HasAvx2()) return 1;
    return HasFastAvx512() ? 3 : 2;
}
#endif

}  // namespace

std::span<const SetFinder> VectorFinders() { return std::span(kFinders).first(CountFinders()); }

#elif HWY_TARGET == HWY_NEON

namespace {

constexpr SetFinder kNeon{"NEON", N_NEON::kFunctions};  // all machines of this kind have it

}  // namespace

std::span<const SetFinder> VectorFinders() { return {&kNeon, 1}; }

#else

std::span<const SetFinder> VectorFinders() { return {}; }

#endif

}  // namespace plugincs

#endif
#endif
