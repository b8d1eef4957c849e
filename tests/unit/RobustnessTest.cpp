// Files that are cut off, damaged or deeply nested: nothing crashes, leaks, hangs or breaks an
// invariant.
#include <cstdlib>
#include <random>

#include "tests/support/Corpus.h"
#include "tests/support/PipelineChecks.h"

namespace {

using namespace std::literals;

std::vector<std::string> Sources() {
    std::vector<std::string> sources{ReadText(SAMPLE).substr(0, 1500)};
    for (const std::string& name : CaseNames()) {
        sources.push_back(ReadText(std::filesystem::path(CASES) / name));
    }
    return sources;
}

TEST(Robustness, CutAtEveryByte) {
    for (const std::string& source : Sources()) {
        for (std::size_t size = 0; size < source.size(); ++size) {
            ASSERT_EQ(BrokenPromise(source.substr(0, size)), "") << source.substr(0, size);
        }
    }
}

// Setting NOISE_SEED in the environment repeats a run.
TEST(Robustness, OneByteMoreOrLess) {
    constexpr std::string_view kNoise = "\"'\\\n\r\t\0\x0B\x7F\xFF{}()[];:#/*.=<T "sv;
    const char* const given = std::getenv("NOISE_SEED");
    const unsigned long seed = given == nullptr ? std::random_device()() : std::stoul(given);
    std::fprintf(stderr, "NOISE_SEED=%lu\n", seed);
    std::mt19937 draw(static_cast<std::mt19937::result_type>(seed));
    for (const std::string& source : Sources()) {
        for (int round = 0; round < 300; ++round) {
            std::string text = source;
            const std::size_t place = draw() % (text.size() + 1);
            if (round % 2 == 0) {
                text.insert(place, 1, kNoise[draw() % kNoise.size()]);
            } else {
                text.erase(place, 1);
            }
            ASSERT_EQ(BrokenPromise(text), "") << text;
        }
    }
}

TEST(Robustness, DeepNesting) {
    for (const std::string_view unit : {"{", "(", "\"", "#if\n", "{ #region\n"}) {
        std::string text;
        for (const std::size_t depth : {100U, 1000U, 100000U}) {
            while (text.size() < depth * unit.size()) text += unit;
            EXPECT_EQ(BrokenPromise(text), "") << unit << depth;
        }
    }
}

}  // namespace
