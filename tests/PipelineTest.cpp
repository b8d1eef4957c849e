// The whole pipeline through the C functions, in process.
#include "plugin/ModuleState.h"
#include "plugin/PluginCS.h"
#include "tests/Corpus.h"

namespace {

std::string Parse(const std::string& path) {
    testing::internal::CaptureStdout();
    const char* const text = ParseCS(path.c_str());
    testing::internal::GetCapturedStdout();
    std::string copy = text == nullptr ? "" : text;
    CleanupCS();
    return copy;
}

TEST(Pipeline, GivesTheCasesTheirBytes) {
    // The records hold the path, so the cases are parsed by their bare names.
    std::filesystem::current_path(CASES);
    for (const std::string& name : CaseNames()) {
        const std::string expected =
            ReadText(std::filesystem::path(name).replace_extension("json"));
        EXPECT_EQ(Parse(name), expected) << name;
    }
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

// The file's name is the root's text, and is refined like any other.
TEST(Pipeline, RefinesTheRoot) {
    for (const auto& [name, kind] : {std::pair("return x.cs", "line"), {"int y.cs", "classvar"}}) {
        const std::string text = Parse(testing::TempDir() + name);
        EXPECT_NE(text.find(std::string("\"branchTypeAsString\": \"") + kind), std::string::npos);
    }
}

}  // namespace
