// Fault injection: a parse when memory runs out, and when signals interrupt its system calls. The
// host replaces the C library's functions that the module calls; sanitizers do so too, so this runs
// without them.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <thread>

#include "tests/support/Corpus.h"
#include "tests/support/Module.h"

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

long allocationsLeft = -1;  // that succeed before one fails; -1: all succeed
bool allFail = false;       // after the first failure all others fail too
long liveBlocks = 0;
bool interrupting = false;  // every other system call gives EINTR; reads and writes come up short

bool AllocationFails() {
    if (allocationsLeft < 0) return false;
    if (allocationsLeft-- > 0) return false;
    if (allFail) allocationsLeft = 0;
    errno = ENOMEM;
    return true;
}

void* Counted(void* block) {
    if (block != nullptr) ++liveBlocks;
    return block;
}

bool CallIsInterrupted() {
    static bool turn = false;
    turn = interrupting && !turn;
    if (turn) errno = EINTR;
    return turn;
}

std::size_t Little(std::size_t size, std::size_t most) {
    return interrupting ? std::min(size, most) : size;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    return AllocationFails() ? nullptr : Counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return AllocationFails() ? nullptr : Counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    if (AllocationFails()) return nullptr;
    return block == nullptr ? Counted(__libc_realloc(block, size)) : __libc_realloc(block, size);
}

void free(void* block) {
    if (block != nullptr) --liveBlocks;
    __libc_free(block);
}

int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return CallIsInterrupted() ? -1 : openat(AT_FDCWD, path, flags, mode);
}

ssize_t read(int file, void* to, std::size_t room) {
    return CallIsInterrupted() ? -1 : syscall(SYS_read, file, to, Little(room, 1000));
}

ssize_t write(int file, const void* bytes, std::size_t size) {
    return CallIsInterrupted() ? -1 : syscall(SYS_write, file, bytes, Little(size, 1000));
}
}

namespace {

// Calls `attempt` with a function that runs a parse with failing allocations: in each round a later
// one fails, until none did; first that one alone, then all after it as well. Before and after each
// round an unhindered parse must give the same text, and nothing may leak.
template <typename Attempt>
void FailEveryAllocation(const Module& module, const std::string& name, Attempt attempt) {
    for (const bool onwards : {false, true}) {
        bool failed = true;
        long first = 0;
        while (failed) {
            const std::string exact = module.Text(name.c_str());
            const long before = liveBlocks;
            attempt([&](auto parse) {
                const QuietStdout quiet;
                allFail = onwards;
                allocationsLeft = first;
                auto result = parse();
                failed = allocationsLeft <= 0;
                allocationsLeft = -1;
                return result;
            });
            module.cleanup();
            EXPECT_EQ(module.Text(name.c_str()), exact);
            EXPECT_EQ(liveBlocks, before) << "a leak when allocation " << first << " failed";
            ++first;
        }
    }
}

TEST(Faults, WithoutMemoryAParseIsGivenUpOrExact) {
    std::filesystem::current_path(CASES);
    const Module module;
    const std::string out = WriteTemporary("faults.json", "");
    for (const std::string& name : CaseNames()) {
        const std::string exact = module.Text(name.c_str());
        FailEveryAllocation(module, name, [&](auto starved) {
            const char* const text = starved([&] { return module.parse(name.c_str()); });
            EXPECT_TRUE(text == nullptr || text == exact) << name;
        });
        FailEveryAllocation(module, name, [&](auto starved) {
            std::ofstream(out) << "kept";
            starved([&] { return module.parseToFile(name.c_str(), out.c_str()), 0; });
            const std::string written = ReadText(out);
            EXPECT_TRUE(written == "kept" || written == exact) << name;
        });
    }
}

TEST(Faults, SignalsAndSmallPiecesChangeNothing) {
    std::filesystem::current_path(CASES);
    const Module module;
    const std::string out = WriteTemporary("pieces.json", "");
    for (const std::string& name : CaseNames()) {
        const std::string exact = module.Text(name.c_str());
        std::ofstream(out) << "none";
        {
            const QuietStdout quiet;
            interrupting = true;
            module.parseToFile(name.c_str(), out.c_str());
            interrupting = false;
        }
        EXPECT_EQ(ReadText(out), exact) << name;
    }
}

TEST(Faults, APipeIsReadToItsEnd) {
    const Module module;
    const std::string path = WriteTemporary("pipe.cs", "");
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string source;
    while (source.size() < 200000) source += "int x = " + std::to_string(source.size()) + ";\n";
    std::thread writer([&] { std::ofstream(path) << source; });
    const std::string text = module.Text(path.c_str());
    writer.join();
    std::filesystem::remove(path);
    EXPECT_EQ(text, module.Text(WriteTemporary("pipe.cs", source).c_str()));
}

}  // namespace
