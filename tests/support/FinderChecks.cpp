#include "tests/support/FinderChecks.h"

#include <vector>

#include "text/VectorFinders.h"

namespace {

constexpr std::array<ByteSet, SetTables::kMost> kSets{ByteSet(""),
                                                      ByteSet(" "),
                                                      ByteSet('\0', '\x7F'),
                                                      ByteSet("\n'\"\\[];{}"),
                                                      ~ByteSet(' ', '~'),
                                                      ~ByteSet("/Oo\x0F\x7F"),
                                                      ByteSet('a', 'z') | ByteSet('A', 'Z'),
                                                      ~ByteSet("")};

template <std::size_t kCount>
std::string BrokenBy(const SetFinder& finder, const ByteSets<kCount>& sets, const char* block) {
    std::array<ByteMask, kCount> found;
    finder.functions[kCount - 1](block, sets.Tables(), found.data());
    for (std::size_t i = 0; i < kCount * kBlockSize; ++i) {
        const bool has = (found[i / kBlockSize] >> i % kBlockSize & 1) != 0;
        if (has != kSets[i / kBlockSize].Has(block[i % kBlockSize])) {
            return std::string(finder.name) + " finds set " + std::to_string(i / kBlockSize);
        }
    }
    return {};
}

}  // namespace

std::string BrokenByFinders(std::string_view bytes) {
    static constexpr ByteSets kThree(kSets[0], kSets[1], kSets[2]);
    static constexpr ByteSets kAll(kSets[0], kSets[1], kSets[2], kSets[3], kSets[4], kSets[5],
                                   kSets[6], kSets[7]);
    std::vector<SetFinder> finders{kPortableFinder};
    finders.insert(finders.end(), VectorFinders().begin(), VectorFinders().end());
    for (; bytes.size() >= kBlockSize; bytes.remove_prefix(kBlockSize)) {
        for (const SetFinder& finder : finders) {
            std::string broken = BrokenBy(finder, kThree, bytes.data());
            if (broken.empty()) broken = BrokenBy(finder, kAll, bytes.data());
            if (!broken.empty()) return broken;
        }
    }
    return {};
}
