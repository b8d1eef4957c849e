#include "text/ByteSets.h"

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

// Chosen once, as the module is loaded.
const SetFinder& setFinder = VectorFinders().empty() ? kPortableFinder : VectorFinders().back();

}  // namespace plugincs
