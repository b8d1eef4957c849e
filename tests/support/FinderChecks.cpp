#include "tests/support/FinderChecks.h"

#include <vector>

#include "text/VectorFinders.h"

using namespace plugincs;

namespace {

constexpr std::array<ByteSet, SetTables::kMost> kSets{ByteSet(""),
                                                      ByteSet(" "),
                                                      ByteSet('\0', '\x7F'),
                                                      ByteSet("\n'\"\\[];{}"),
                                                      ~ByteSet(' ', '~'),
                                                      ~ByteSet("/Oo\x0F\x7F"),
                                                      ByteSet('a', 'z') | ByteSet('A', 'Z'),
                                                      ~ByteSet("")};

constexpr ByteSets kAll(kSets[0], kSets[1], kSets[2], kSets[3], kSets[4], kSets[5], kSets[6],
                        kSets[7]);

// Whether the mask of set `set`, of which `asked` were asked for, is right; of the others it must
// be left alone.
bool IsRight(ByteMask mask, std::size_t set, std::size_t asked, const char* block) {
    ByteMask expected = 0;
    for (std::size_t i = 0; i < kBlockSize; ++i) {
        expected |= ByteMask{set < asked && kSets[set].Has(block[i])} << i;
    }
    return mask == expected;
}

std::string BrokenBy(const SetFinder& finder, const char* block) {
    for (std::size_t asked = 1; asked <= kSets.size(); ++asked) {
        std::array<ByteMask, kSets.size()> found{};
        finder.functions[asked - 1](block, kAll.Tables(), found.data());
        for (std::size_t set = 0; set < kSets.size(); ++set) {
            if (IsRight(found[set], set, asked, block)) continue;
            return std::string(finder.name) + " finds set " + std::to_string(set) + " of " +
                   std::to_string(asked);
        }
    }
    return {};
}

}  // namespace

std::string BrokenByFinders(std::string_view bytes) {
    std::vector<SetFinder> finders{kPortableFinder};
    finders.insert(finders.end(), VectorFinders().begin(), VectorFinders().end());
    for (; bytes.size() >= kBlockSize; bytes.remove_prefix(kBlockSize)) {
        for (const SetFinder& finder : finders) {
            const std::string broken = BrokenBy(finder, bytes.data());
            if (!broken.empty()) return broken;
        }
    }
    return {};
}
