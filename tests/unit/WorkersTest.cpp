#include "parsecs/run/Workers.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

using Replies = std::vector<std::pair<FileNumber, Reply>>;

// An answer as it goes over the socket.
std::string Answer(Reply::Kind kind, const std::string& text) {
    const ReplyHead head{kind, {FileOutcome::Kind::StoppedEarly, 7}, text.size()};
    std::string bytes(sizeof head, '\0');
    std::memcpy(bytes.data(), &head, sizeof head);
    return bytes + text;
}

// A worker that sends the next piece of the bytes for each order, then dies.
std::function<void(int)> Sender(const std::string& bytes, std::size_t size, int signal = 0) {
    return [bytes, size, signal](int socket) {
        FileNumber file = 0;
        for (std::size_t at = 0; at < bytes.size(); at += size) {
            const std::string piece = bytes.substr(at, size);
            if (read(socket, &file, sizeof file) != sizeof file) _exit(1);
            if (write(socket, piece.data(), piece.size()) < 0) _exit(1);
        }
        if (signal != 0) raise(signal);
        _exit(0);
    };
}

// A worker that answers with the numbers of its files.
void Count(int socket) {
    FileNumber file = 0;
    while (read(socket, &file, sizeof file) == sizeof file) {
        const std::string answer = Answer(Reply::Kind::Made, std::to_string(file));
        if (write(socket, answer.data(), answer.size()) < 0) break;
    }
    _exit(0);
}

// Has the worker send all of its pieces, and hears each of them alone.
Replies Heard(WorkerProcess& worker, std::size_t pieces) {
    Replies replies;
    for (std::size_t i = 0; i < pieces; ++i) {
        worker.Order(static_cast<FileNumber>(100 + i));
        EXPECT_TRUE(worker.Receive(replies));
    }
    EXPECT_FALSE(worker.Receive(replies));
    return replies;
}

std::string Described(const Replies& replies) {
    std::string text;
    for (const auto& [file, reply] : replies) {
        text += std::to_string(file) + (reply.kind == Reply::Kind::Made ? ":" : "!") + reply.text;
        text += reply.outcome.line == 7 ? " " : "another outcome";
    }
    return text;
}

TEST(WorkerProcess, PutsCutAnswersTogether) {
    const std::string bytes = Answer(Reply::Kind::Made, "some text") +
                              Answer(Reply::Kind::Unreadable, "") + Answer(Reply::Kind::Made, "x");
    for (const std::size_t size : {std::size_t{1}, std::size_t{5}, sizeof(ReplyHead) + 1}) {
        WorkerProcess worker;
        worker.Start(Sender(bytes, size));
        const Replies replies = Heard(worker, (bytes.size() + size - 1) / size);
        EXPECT_EQ(Described(replies), "100:some text 101! 102:x ") << size;
    }
}

TEST(WorkerProcess, StartsAnewBehindTheFileItDiedOf) {
    const struct {
        std::size_t sent;  // bytes of the answer that it dies in
        int signal;
        const char* cause;
    } rows[] = {
        {3, SIGKILL, "its worker process died: Killed"},
        {sizeof(ReplyHead) + 2, 0, "its worker process ended"},
    };
    for (const auto& [sent, signal, cause] : rows) {
        WorkerProcess worker;
        worker.Start(Sender(Answer(Reply::Kind::Made, "lost").substr(0, sent), 1, signal));
        EXPECT_TRUE(Heard(worker, sent).empty());
        EXPECT_EQ(worker.CauseOfDeath(), cause);
        EXPECT_FALSE(worker.isRunning());
        EXPECT_EQ(worker.TakeFirst(), 100U);
        std::string expected;
        for (FileNumber file : worker.queue()) {
            const std::string number = std::to_string(file);
            expected.append(number).append(":").append(number).append(" ");
        }
        worker.Start(Count);
        Replies replies;
        while (!worker.queue().empty() && worker.Receive(replies)) {
        }
        EXPECT_EQ(Described(replies), expected);
    }
}

// What becomes of a file is told by its time.
enum Fate : std::int64_t { kFine, kNoMemory, kDeath, kStopped, kLarge, kAwaited };

struct FatefulForm : Form {
    FatefulForm() { EXPECT_EQ(pipe(ends_), 0); }
    ~FatefulForm() override {
        close(ends_[0]);
        close(ends_[1]);
    }
    // Lets an awaited file be made.
    void LetGo() const { EXPECT_EQ(write(ends_[1], "x", 1), 1); }

    FileOutcome Make(ReadSource source, std::string& made) const override {
        made += "made";
        if (source.modified == kNoMemory) throw std::bad_alloc();
        if (source.modified == kDeath) raise(SIGKILL);
        if (source.modified == kLarge) made.append(64U << 20U, 'x');
        char byte = 0;
        if (source.modified == kAwaited && read(ends_[0], &byte, 1) != 1) _exit(1);
        if (source.modified == kStopped) return {FileOutcome::Kind::StoppedEarly, 7};
        return {};
    }
    void Take(const FoundFile& /*file*/, std::string_view /*made*/) override {}
    void Finish(bool /*complete*/) override {}

  private:
    int ends_[2];
};

TEST(Workers, LoseOnlyTheFilesThatFail) {
    const struct {
        FoundFile file;
        Reply::Kind kind;
        std::int32_t line;
        const char* text;
    } rows[] = {
        {{"/dev/null", 0, kDeath}, Reply::Kind::Crashed, 0, "its worker process died: Killed"},
        {{"/dev/null", 0, kFine}, Reply::Kind::Made, 0, "made"},
        {{"/dev/null", 0, kNoMemory}, Reply::Kind::NoMemory, 0, "out of memory"},
        {{"/", 0, kFine}, Reply::Kind::Unreadable, 0, "Is a directory"},
        {{"/dev/null", 0, kDeath}, Reply::Kind::Crashed, 0, "its worker process died: Killed"},
        {{"/dev/null", 0, kDeath}, Reply::Kind::Crashed, 0, "its worker process died: Killed"},
        {{"/dev/null", 0, kStopped}, Reply::Kind::Made, 7, "made"},
    };
    std::vector<FoundFile> files;
    for (const auto& row : rows) files.push_back(row.file);
    const FatefulForm form;
    std::signal(SIGPIPE, SIG_IGN);  // as in the program: a worker may die while it gets an order
    for (const unsigned jobs : {1U, 2U, 5U}) {
        Workers workers(jobs, form, files, false);
        FileNumber next = 0;
        for (FileNumber file = 0; file < files.size(); ++file) {
            for (; next < files.size() && workers.HasRoom(); ++next) workers.Order(next);
            ASSERT_LT(file, next);
            while (!workers.IsDone(file)) workers.Wait(file);
            const Reply reply = workers.Take(file);
            EXPECT_EQ(reply.kind, rows[file].kind) << file;
            EXPECT_EQ(reply.outcome.line, rows[file].line) << file;
            EXPECT_EQ(reply.text, rows[file].text) << file;
        }
    }
}

TEST(Workers, HoldOnlySoMuchAndStillGoOn) {
    const FatefulForm form;
    const std::vector<FoundFile> files{{"/dev/null", 0, kAwaited}, {"/dev/null", 0, kLarge}};
    Workers workers(2, form, files, false);
    workers.Order(0);
    workers.Order(1);
    EXPECT_TRUE(workers.HasRoom());
    while (!workers.IsDone(1)) workers.Wait(0);
    EXPECT_FALSE(workers.HasRoom());
    form.LetGo();
    while (!workers.IsDone(0)) workers.Wait(0);
    EXPECT_EQ(workers.Take(0).text, "made");
    EXPECT_FALSE(workers.HasRoom());
    EXPECT_GT(workers.Take(1).text.size(), 64U << 20U);
    EXPECT_TRUE(workers.HasRoom());
}

}  // namespace
