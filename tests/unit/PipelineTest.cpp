// The whole pipeline through the C functions, in process.
#include <PluginCS.h>

#include <algorithm>
#include <cstdint>

#include "output/TextBuffer.h"
#include "process/ModuleState.h"
#include "tests/support/Corpus.h"

using namespace plugincs;

namespace {

std::string Parse(const std::string& path) {
    testing::internal::CaptureStdout();
    const char* const text = ParseCS(path.c_str());
    testing::internal::GetCapturedStdout();
    std::string copy = text == nullptr ? "" : text;
    CleanupCS();
    return copy;
}

// The first record that differs, actual and expected; empty when there is none.
std::string Difference(std::string_view text, std::string_view expected) {
    const auto differs = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end());
    if (differs.first == text.end() && differs.second == expected.end()) return {};
    const auto recordAt = [](std::string_view whole, std::size_t at) {
        const std::size_t begin = whole.rfind("\n  {", at);
        const std::size_t end = whole.find("\n  }", at);
        return std::string(whole.substr(begin + 1, end - begin));
    };
    const auto at = static_cast<std::size_t>(differs.first - text.begin());
    return recordAt(text, at) + "\nand not\n" + recordAt(expected, at);
}

TEST(Pipeline, GivesTheCasesTheirBytes) {
    // The records hold the path, so the cases are parsed by their bare names.
    std::filesystem::current_path(CASES);
    for (const std::string& name : CaseNames()) {
        const std::string expected =
            ReadText(std::filesystem::path(name).replace_extension("json"));
        EXPECT_EQ(Difference(Parse(name), expected), "") << name;
    }
}

TEST(Pipeline, MakesRoomForNumbers) {
    TextBuffer text(1);
    std::string expected;
    for (int i = 0; i < 9; ++i) {
        TextBuffer::Writer(text).PutNumber(INT32_MIN);
        expected += "-2147483648";
    }
    EXPECT_EQ(text.View(), expected);
}

// Escaping can double a text, beyond the estimated size, so that the buffer must grow.
TEST(Pipeline, GrowsWithItsEscapes) {
    std::string statement = "a = \"";
    for (int i = 0; i < 1000; ++i) statement += "\\\"";
    std::string source;
    for (int i = 0; i < 100; ++i) source += statement + "\";\n";
    const std::string text = Parse(WriteTemporary("escapes.cs", source));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\\'), 100 * (3 * 1000 + 2));
    EXPECT_EQ(text.substr(text.size() - 7), "\n  }\n]\n");
}

TEST(Pipeline, CountsWhatItMade) {
    std::filesystem::current_path(CASES);
    Parse("twelve_lines.cs");
    EXPECT_EQ(objectCount, 8);
    EXPECT_EQ(currentIndex, 11);
    Parse("/no/such/file.cs");
    EXPECT_EQ(objectCount, 1);
    EXPECT_EQ(currentIndex, 4);
}

TEST(Pipeline, AnAbandonedBuildLeavesEverythingAsItWas) {
    std::filesystem::current_path(CASES);
    const std::string out = WriteTemporary("kept.json", "kept");
    testing::internal::CaptureStdout();
    char* const before = ParseCS("twelve_lines.cs");
    parseAllFiles("abandoned.cs", out.c_str());
    EXPECT_EQ(ParseCS("abandoned.cs"), before);
    const std::string traces = testing::internal::GetCapturedStdout();
    EXPECT_NE(traces.find("\ncurrent branch is null???\n\nthe final data is "), std::string::npos);
    EXPECT_EQ(ReadText(out), "kept");
    CleanupCS();
}

// The root's contents are the file's name, and are refined like a block's.
TEST(Pipeline, RefinesTheRoot) {
    for (const auto& [name, kind] : {std::pair("return x.cs", "line"), {"int y.cs", "classvar"}}) {
        const std::string text = Parse(testing::TempDir() + name);
        EXPECT_NE(text.find(std::string("\"branchTypeAsString\": \"") + kind), std::string::npos);
    }
}

}  // namespace
