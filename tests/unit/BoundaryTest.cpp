// The module as hosts use it: loaded with dlopen, called through its C names. Runs against the
// release build as well, because visibility and unloading differ between builds.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <PluginCS.h>
#include "tests/support/Corpus.h"
#include "tests/support/Module.h"

// A host may export a `chunk` of its own, which the module must not use.
extern "C" {
__attribute__((visibility("default"))) std::string chunk = "the host's";
}

namespace {

using std::string_literals::operator""s;

TEST(Boundary, ExportsExactlyNineNames) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> names(
        popen("nm -D --defined-only '" MODULE_PATH "' | awk '{print $3}' | LC_ALL=C sort", "r"),
        pclose);
    std::string exported;
    for (std::array<char, 256> line{}; std::fgets(line.data(), line.size(), names.get());) {
        exported += line.data();
    }
    EXPECT_EQ(exported,
              "AllBranches\nCleanupCS\nInfo\nParseCS\nchunk\ncurrentIndex\nobjectCount\n"
              "parseAllFiles\nstartPath\n");
}

TEST(Boundary, StartsFreshAndIsGoneWhenClosed) {
    for (int round = 0; round < 2; ++round) {
        const Module module;
        EXPECT_EQ(*module.Get<int*>("objectCount"), 1);
        EXPECT_EQ(*module.Get<int*>("currentIndex"), 0);
        EXPECT_TRUE(module.Get<std::string*>("chunk")->empty());
        module.cleanup();
        const std::string path = WriteTemporary("rest.cs", "a; the rest");
        module.Text(path.c_str());
        EXPECT_EQ(*module.Get<std::string*>("chunk"), " the rest");
        EXPECT_EQ(chunk, "the host's");
    }
    EXPECT_EQ(dlopen(MODULE_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

// The program links the module's objects, but has its own code to read files.
TEST(Boundary, TheProgramGivesTheModulesBytes) {
    std::filesystem::current_path(CASES);
    const Module module;
    for (const std::string& name : CaseNames()) {
        const std::string command = "'" PARSECS_PATH "' 2>/dev/null " + name;
        std::FILE* const pipe = popen(command.c_str(), "r");
        std::string text(1 << 20, '\0');
        text.resize(std::fread(text.data(), 1, text.size(), pipe));
        pclose(pipe);
        EXPECT_EQ(text.empty() ? "none" : text, module.Text(name.c_str())) << name;
    }
}

TEST(Boundary, InfoGivesANewBlockWithTheSameText) {
    const Module module;
    char* const first = module.info();
    char* const second = module.info();
    EXPECT_NE(first, second);
    EXPECT_STREQ(first, second);
    EXPECT_EQ(std::string(first).find("Address of resPtr: 0x"), 0U);
    EXPECT_EQ(std::string(first).back(), '\n');
    std::free(first);
    std::free(second);
}

TEST(Boundary, TwoTextsLiveUntilTheirOwnersLetGo) {
    const Module module;
    const std::string path = WriteTemporary("two.cs", "a;");
    char* const first = module.parse(path.c_str());
    const std::string copy = first;
    char* const second = module.parse(path.c_str());
    EXPECT_NE(first, second);
    EXPECT_STREQ(first, second);
    module.parseToFile(path.c_str(), (path + ".json").c_str());
    EXPECT_EQ(copy, second) << "a parse to a file touched the text that is held";
    module.parseToFile(path.c_str(), nullptr);
    EXPECT_EQ(copy, second) << "a third text in memory touched the second";
    module.cleanup();
    module.cleanup();
    EXPECT_EQ(copy, first) << "CleanupCS released a text that it no longer knew";
    std::free(second);
    std::free(first);
}

TEST(Boundary, FilesAreReplacedWhole) {
    const Module module;
    const std::string path = WriteTemporary("in.cs", "a;");
    const std::string out = WriteTemporary("out.json", std::string(100000, 'x'));
    module.parseToFile(path.c_str(), out.c_str());
    EXPECT_EQ(ReadText(out), module.Text(path.c_str()));
    module.parseToFile(path.c_str(), "/no/such/folder/out.json");
}

std::string WithName(std::string text, const std::string& name) {
    for (std::size_t at = 0; (at = text.find("empty.cs", at)) != std::string::npos;) {
        text.replace(at, 8, name);
        at += name.size();
    }
    return text;
}

// Run in the files' folder, where path and name are the same: an empty file's records hold both.
TEST(Boundary, UnreadablePathsAreEmptyFiles) {
    const Module module;
    const std::string empty = ReadText(std::filesystem::path(CASES) / "empty.json");
    std::filesystem::current_path(std::filesystem::path(WriteTemporary("x", "")).parent_path());
    std::filesystem::create_directory("folder.cs");
    for (const char* path : {"missing.cs", "folder.cs", "", static_cast<const char*>(nullptr)}) {
        const std::string name = path == nullptr ? "" : path;
        EXPECT_EQ(module.Text(path), WithName(empty, name));
    }
}

TEST(Boundary, AParseIsTheSameWhateverCameBefore) {
    std::filesystem::current_path(CASES);
    for (const std::string& name : CaseNames()) {
        const std::string fresh = Module().Outcome(name);
        const Module module;
        for (const std::string& before :
             {name, std::string("abandoned.cs"), std::string("error_stop.cs")}) {
            module.Outcome(before);
            EXPECT_EQ(module.Outcome(name), fresh) << name << " after " << before;
        }
    }
}

// Resident memory in pages; 0 on systems without /proc.
long Resident() {
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident;
}

TEST(Boundary, ManyParsesDoNotGrowTheProcess) {
    std::filesystem::current_path(CASES);
    const Module module;
    const auto parse = [&module](int rounds) {
        const QuietStdout quiet;
        for (int round = 0; round < rounds; ++round) {
            module.Text(round % 2 == 0 ? "twelve_lines.cs" : "abandoned.cs");
        }
    };
    parse(1000);
    const long before = Resident();
    parse(SANITIZED ? 1000 : 100000);
    // Sanitizers keep freed memory in quarantine.
    const long allowed = SANITIZED ? LONG_MAX : 256;
    EXPECT_LT(Resident() - before, allowed);
}

TEST(Boundary, SurvivesDepthAndSize) {
    const Module module;
    testing::internal::CaptureStdout();
    const std::string noise("\xFF\n\0x", 4);
    for (const std::string& unit : {"{"s, "a;"s, "}"s, "(\n"s, "\""s, "{}"s, noise}) {
        std::string text;
        while (text.size() < 1000000) text += unit;
        EXPECT_EQ(module.Text(WriteTemporary("big.cs", text).c_str()).substr(0, 2), "[\n") << unit;
    }
    EXPECT_EQ(
        module.Text(WriteTemporary("big.cs", std::string(20000000, ';')).c_str()).substr(0, 2),
        "[\n");
    testing::internal::GetCapturedStdout();
}

}  // namespace
