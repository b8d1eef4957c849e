#include "text/ByteSets.h"

#ifdef PLUGINCS_TESTS
#include <cstdlib>
#endif

#include "text/VectorFinders.h"

namespace plugincs {

namespace {

template <std::size_t kCount>
void FindPortably(const char* block, const SetTables& tables, ByteMask* found) {
    for (std::size_t set = 0; set < kCount; ++set) found[set] = 0;
    for (std::size_t at = 0; at < kBlockSize; at += 8) {
        // The members of eight bytes, one in each byte of a word.
        std::uint64_t members = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            const auto byte = static_cast<unsigned char>(block[at + i]);
            members |= std::uint64_t{tables.members[byte]} << 8 * i;
        }
        for (std::size_t set = 0; set < kCount; ++set) {
            // The product gathers the lowest bits of the word's bytes in the highest one.
            const std::uint64_t bits = members >> set & 0x0101010101010101;
            found[set] |= bits * 0x0102040810204080 >> 56 << at;
        }
    }
}

}  // namespace

const SetFinder kPortableFinder{
    "portable",
    {FindPortably<1>, FindPortably<2>, FindPortably<3>, FindPortably<4>, FindPortably<5>,
     FindPortably<6>, FindPortably<7>, FindPortably<8>}};

namespace {

const SetFinder& BestFinder() {
    return VectorFinders().empty() ? kPortableFinder : VectorFinders().back();
}

#ifdef PLUGINCS_TESTS
// Tests run with each way in turn: the environment names it. What is shipped asks no environment.
const SetFinder& ChosenFinder() {
    const char* const chosen = std::getenv("PLUGINCS_FINDER");
    if (chosen == nullptr) return BestFinder();
    const std::string_view name = chosen;
    if (name == kPortableFinder.name) return kPortableFinder;
    for (const SetFinder& finder : VectorFinders()) {
        if (name == finder.name) return finder;
    }
    constexpr int kSkipped = 77;  // as test drivers understand it: the machine has no such way
    std::_Exit(kSkipped);
}
#else
const SetFinder& ChosenFinder() { return BestFinder(); }
#endif

}  // namespace

// Chosen once, as the module is loaded.
const SetFinder& setFinder = ChosenFinder();

}  // namespace plugincs
