#include "process/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include "process/HugePages.h"

namespace plugincs {

#ifndef O_BINARY
#define O_BINARY 0  // only Windows translates line ends
#endif
#ifndef O_CLOEXEC
#define O_CLOEXEC 0  // only Windows has no exec
#endif

namespace {

#ifdef _WIN32
using IoSize = unsigned int;
#else
using IoSize = std::size_t;
#endif

// Limits one read or write to 1 GiB: some systems refuse more than INT_MAX, and the callers handle
// short counts anyway.
IoSize AtOnce(std::size_t bytes) {
    constexpr std::size_t kMost = std::size_t{1} << 30;
    return static_cast<IoSize>(std::min(bytes, kMost));
}

// Retries a system call on EINTR: the host may have signal handlers.
template <typename Call>
auto Retried(Call call) {
    while (true) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

// RAII for a file descriptor.
class Descriptor {
  public:
    explicit Descriptor(const std::string& path, int flags)
        : number_(Retried([&] { return open(path.c_str(), flags | O_BINARY | O_CLOEXEC, 0666); })) {
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (IsOpen()) close(number_);
    }

    bool IsOpen() const { return number_ >= 0; }

    // Returns how many bytes were read, 0 at the end of the file or on an error.
    std::size_t Read(char* to, std::size_t room) const {
        const auto got = Retried([&] { return read(number_, to, AtOnce(room)); });
        return got > 0 ? static_cast<std::size_t>(got) : 0;
    }

    // Returns how many of the bytes were written, 0 on an error.
    std::size_t Write(std::string_view bytes) const {
        const auto done =
            Retried([&] { return write(number_, bytes.data(), AtOnce(bytes.size())); });
        return done > 0 ? static_cast<std::size_t>(done) : 0;
    }

    // The size of a regular file, 0 for all others. Only for reserving: the file may change.
    std::size_t SizeHint() const {
        struct stat status {};
        const bool regular = fstat(number_, &status) == 0 && S_ISREG(status.st_mode);
        return regular ? static_cast<std::size_t>(status.st_size) : 0;
    }

  private:
    int number_;
};

// Adds bytes until there are `size` of them; fewer at the end of the file or on an error.
void ReadUpTo(std::size_t size, const Descriptor& file, std::string& bytes) {
    std::size_t length = bytes.size();
    bytes.resize(size);
    while (length < size) {
        const std::size_t got = file.Read(bytes.data() + length, size - length);
        if (got == 0) break;
        length += got;
    }
    bytes.resize(length);
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
    // Many sources fit into the first read, which saves them the fstat. It is no larger, as a
    // host's thread may have a small stack.
    char piece[8192];
    std::string bytes;
    const Descriptor file(path, O_RDONLY);
    if (!file.IsOpen()) return bytes;
    while (const std::size_t got = file.Read(piece, sizeof piece)) {
        const std::size_t size = bytes.empty() && got == sizeof piece ? file.SizeHint() : 0;
        if (size > got) {
            bytes.reserve(size + 1);
            AskForHugePages(bytes.data(), bytes.capacity());
        }
        bytes.append(piece, got);
        if (size > got) ReadUpTo(size, file, bytes);
    }
    return bytes;
}

void writeafile(std::string_view text, const std::string& path) {
    const Descriptor file(path, O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) return;
    while (!text.empty()) {
        const std::size_t done = file.Write(text);
        if (done == 0) return;
        text.remove_prefix(done);
    }
}

}  // namespace plugincs
