// A process holds as many parses as it likes, in as many threads.
#include <array>
#include <cstdio>
#include <memory>
#include <thread>

#include "parsecs/forms/rows/JsonLines.h"
#include "plugin/Pipeline.h"
#include "tests/support/Corpus.h"

using namespace plugincs;

namespace {

// All that a parse tells: messages, text, counters, what is left over, and the rows.
std::string Told(const std::string& path, const std::string& source) {
    char* messages = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&messages, &size);
    Parse parse(path, source, Traces(file));
    ParseSource(parse, "");
    std::fclose(file);
    std::string told(messages, size);
    std::free(messages);
    if (parse.result) told += parse.result.get();
    told.append(*parse.leftOver).append(std::to_string(parse.nextId));
    AppendJsonLines(FileRows(path, source), told);
    return told;
}

TEST(Threads, TellTheSameAsOne) {
    std::vector<std::string> sources{ReadText(SAMPLE)};
    for (const std::string& name : CaseNames()) {
        sources.push_back(ReadText(std::filesystem::path(CASES) / name));
    }
    std::vector<std::string> expected;
    for (const std::string& source : sources) expected.push_back(Told("a.cs", source));
    std::array<int, 8> different{};
    std::vector<std::thread> threads;
    for (int& mine : different) {
        threads.emplace_back([&sources, &expected, &mine] {
            for (int round = 0; round < 40; ++round) {
                for (std::size_t i = 0; i < sources.size(); ++i) {
                    mine += Told("a.cs", sources[i]) == expected[i] ? 0 : 1;
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(different, (std::array<int, 8>{}));
}

}  // namespace
