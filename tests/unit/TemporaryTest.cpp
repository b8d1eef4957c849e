#include "parsecs/output/Temporary.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <system_error>

#include "tests/support/Corpus.h"

using namespace plugincs;

namespace {

namespace fs = std::filesystem;

// A folder of its own, which goes with it.
class Folder {
  public:
    Folder() : path_(testing::TempDir() + "XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr)
            throw std::system_error(errno, std::generic_category());
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { fs::remove_all(path_); }

    std::string operator/(const char* name) const { return path_ + "/" + name; }
    auto Count() const {
        return std::distance(fs::directory_iterator(path_), fs::directory_iterator());
    }

  private:
    std::string path_;
};

void Write(const TemporaryFile& file, std::string_view text) {
    ASSERT_EQ(write(file.descriptor(), text.data(), text.size()),
              static_cast<ssize_t>(text.size()));
}

// Only within one file system is a file renamed at once.
TEST(TemporaryFile, StandsBesideItsTargetUntilItTakesItsPlace) {
    const Folder folder;
    const std::string target = folder / "target";
    std::optional<TemporaryFile> file(target);
    EXPECT_EQ(fs::path(file->path()).parent_path(), fs::path(target).parent_path());
    Write(*file, "old");
    file->TakePlace();
    chmod(target.c_str(), 0640);
    file.emplace(target);
    Write(*file, "given up");
    EXPECT_EQ(folder.Count(), 2);
    file.reset();
    EXPECT_EQ(folder.Count(), 1);
    EXPECT_EQ(ReadText(target), "old");
    file.emplace(target);
    Write(*file, "new");
    file->TakePlace();
    file.reset();
    EXPECT_EQ(folder.Count(), 1);
    EXPECT_EQ(ReadText(target), "new");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms{0640});
    EXPECT_THROW(TemporaryFile(folder / "missing/x"), std::system_error);
}

TEST(TemporaryFile, LeavesRoomForOthersWhenItIsGone) {
    const Folder folder;
    for (int round = 0; round < 20; ++round) {
        TemporaryFile taken(folder / "taken");
        const TemporaryFile dropped(folder / "dropped");
        taken.TakePlace();
        EXPECT_EQ(folder.Count(), 2);
    }
    EXPECT_EQ(folder.Count(), 1);
}

}  // namespace
