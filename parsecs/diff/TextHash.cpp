#include "parsecs/diff/TextHash.h"

#include <algorithm>
#include <cstddef>
#include <random>

namespace plugincs {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr unsigned kBits = 61;
constexpr std::uint64_t kPrime = (std::uint64_t{1} << kBits) - 1;

std::uint64_t Reduced(Wide number) {
    const std::uint64_t folded =
        static_cast<std::uint64_t>(number & kPrime) + static_cast<std::uint64_t>(number >> kBits);
    return folded >= kPrime ? folded - kPrime : folded;
}

}  // namespace

HashPoint::HashPoint() {
    std::random_device lot;
    std::uniform_int_distribution<std::uint64_t> points(kPrime / 2, kPrime - 1);
    value_ = points(lot);
}

void TextHash::Step(std::uint64_t digit) { value_ = Reduced(Wide{value_} * point_ + digit); }

// Seven bytes are a digit. The last digit has up to six, and says how many.
void TextHash::Add(std::string_view piece) {
    constexpr std::size_t kBytes = 7;
    while (true) {
        const std::size_t length = std::min(piece.size(), kBytes);
        std::uint64_t digit = length < kBytes ? length + 1 : 0;
        for (std::size_t i = 0; i < kBytes; ++i) {
            digit = digit << 8U | (i < length ? static_cast<unsigned char>(piece[i]) : 0U);
        }
        Step(digit);
        if (length < kBytes) return;
        piece.remove_prefix(kBytes);
    }
}

void TextHash::Add(std::uint64_t number) {
    Step(number >> 32U);
    Step(number & UINT32_MAX);
}

std::uint64_t Mixed(std::uint64_t first, std::uint64_t second) {
    std::uint64_t mixed = first * 0x9E3779B97F4A7C15U + second;
    mixed = (mixed ^ mixed >> 30U) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ mixed >> 27U) * 0x94D049BB133111EBU;
    return mixed ^ mixed >> 31U;
}

}  // namespace plugincs
