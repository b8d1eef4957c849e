#include "parsecs/run/Progress.h"
#include "parsecs/run/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using namespace plugincs;

namespace {

// What becomes of a file is told by its time.
enum Fate : std::int64_t { kFine, kStopped, kGivenUp, kNoMemory, kTooLarge, kBroken, kStrange };

struct FatefulForm : Form {
    MadeFile Make(ReadSource source) const override {
        switch (source.modified) {
            case kStopped: return {{FileOutcome::Kind::StoppedEarly, 7}, Some()};
            case kGivenUp: return {{FileOutcome::Kind::GivenUp, 0}, nullptr};
            case kNoMemory: throw std::bad_alloc();
            case kTooLarge: throw std::length_error("a word of the library");
            case kBroken: throw std::runtime_error("broken in a way of its own");
            case kStrange: throw 7;
            default: return {{}, Some()};
        }
    }
    static std::unique_ptr<Piece> Some() { return std::make_unique<Piece>(); }
    void Take(const FoundFile& /*file*/, Piece& /*piece*/) override {}
    void Finish(bool /*complete*/) override {}
};

TEST(Reply, TellsWhateverFails) {
    const struct {
        FoundFile file;
        Reply::Kind kind;
        const char* reason;
        std::int32_t line = 0;
    } rows[] = {
        {{SAMPLE, FoundFile::Kind::File, 0, kFine}, Reply::Kind::Made, ""},
        {{SAMPLE, FoundFile::Kind::File, 0, kStopped}, Reply::Kind::Made, "", 7},
        {{SAMPLE, FoundFile::Kind::File, 0, kGivenUp}, Reply::Kind::Made, ""},
        {{"/", FoundFile::Kind::File, 0, kFine}, Reply::Kind::Unreadable, "is no file any more"},
        {{SAMPLE, FoundFile::Kind::File, 0, kNoMemory}, Reply::Kind::Failed, "out of memory"},
        {{SAMPLE, FoundFile::Kind::File, 0, kTooLarge}, Reply::Kind::Failed, "too large"},
        {{SAMPLE, FoundFile::Kind::File, 0, kBroken},
         Reply::Kind::Failed,
         "broken in a way of its own"},
        {{SAMPLE, FoundFile::Kind::File, 0, kStrange}, Reply::Kind::Failed, "unknown reason"},
    };
    for (const auto& row : rows) {
        const Reply reply = ReplyTo(row.file, FatefulForm(), Traces(nullptr));
        EXPECT_EQ(reply.kind, row.kind) << row.file.modified;
        EXPECT_EQ(reply.reason, row.reason);
        EXPECT_EQ(reply.made.outcome.line, row.line);
        const bool made = row.kind == Reply::Kind::Made && row.file.modified != kGivenUp;
        EXPECT_EQ(reply.made.piece != nullptr, made) << row.file.modified;
    }
}

TEST(Workers, DoEachTaskOnceInAllTheirThreads) {
    for (const unsigned helpers : {0U, 1U, 7U}) {
        std::atomic<int> calls = 0;
        std::vector<std::future<Reply>> replies;
        Workers workers(helpers);
        for (int file = 0; file < 1000; ++file) {
            replies.push_back(workers.Order(Workers::Task([&calls, file] {
                ++calls;
                return Reply{Reply::Kind::Made, {}, std::to_string(file)};
            })));
        }
        while (workers.Help()) {
        }
        for (std::size_t file = 0; file < replies.size(); ++file) {
            EXPECT_EQ(replies[file].get().reason, std::to_string(file));
        }
        EXPECT_EQ(calls, 1000);
    }
}

// Who stops them is told of what is being done; what was only ordered is dropped.
TEST(Workers, TellOfATaskThatHangs) {
    std::promise<void> letGo;
    std::promise<void> begun;
    bool dropped = true;
    {
        Workers workers(1);
        const auto hanging = workers.Order(Workers::Task([&] {
            begun.set_value();
            letGo.get_future().wait();
            return Reply();
        }));
        begun.get_future().wait();
        const auto other = workers.Order(Workers::Task([&] {
            dropped = false;
            return Reply();
        }));
        EXPECT_FALSE(workers.Stop());
        letGo.set_value();
    }
    EXPECT_TRUE(dropped);
    Workers idle(1);
    EXPECT_TRUE(idle.Stop());
}

TEST(Progress, TellsWhatIsLeft) {
    EXPECT_EQ(ProgressLine({2, 4'000'000}, {9, 10'000'000}, 2), "2 of 9 files, 2.0 MB/s, 3 s left");
}

}  // namespace
