#include "parsecs/input/Source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace plugincs {

namespace {

class OpenFile {
  public:
    OpenFile() = default;  // standard input
    OpenFile(const std::string& path, int flags) : number_(Open(path.c_str(), flags)) {
        if (number_ < 0) Fail();
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (number_ != STDIN_FILENO) close(number_);
    }

    // How many bytes were read, none at the end of the file.
    std::size_t Read(char* to, std::size_t room) const {
        while (true) {
            const ssize_t got = read(number_, to, room);
            if (got >= 0) return static_cast<std::size_t>(got);
            if (errno != EINTR) Fail();
        }
    }

    struct stat Status() const {
        struct stat status {};
        if (fstat(number_, &status) != 0) Fail();
        return status;
    }

  private:
    [[noreturn]] static void Fail() { throw ReadFailure(std::strerror(errno)); }

    static int Open(const char* path, int flags) {
        while (true) {
            const int number = open(path, flags | O_RDONLY | O_CLOEXEC | O_NOCTTY);
            if (number >= 0 || errno != EINTR) return number;
        }
    }

    int number_ = STDIN_FILENO;
};

std::string ReadToEnd(const OpenFile& file, std::size_t most = SIZE_MAX) {
    char piece[32768];
    std::string bytes;
    while (const std::size_t got = file.Read(piece, sizeof piece)) {
        if (got > most - bytes.size()) throw ReadFailure("grows while it is read");
        bytes.append(piece, got);
    }
    return bytes;
}

std::string ReadSized(const OpenFile& file, std::size_t size) {
    std::string bytes(size, '\0');
    std::size_t length = 0;
    while (length < size) {
        const std::size_t got = file.Read(bytes.data() + length, size - length);
        if (got == 0) break;
        length += got;
    }
    bytes.resize(length);
    return bytes;
}

// Opening a pipe for its reader waits for a writer: only where one was found.
std::string ReadFoundFile(const FoundFile& found) {
    const OpenFile file(found.path, O_NONBLOCK);
    const struct stat status = file.Status();
    if (!S_ISREG(status.st_mode)) throw ReadFailure("is no file any more");
    const auto size = static_cast<std::size_t>(status.st_size);
    // The system's own files have no size, and are short.
    constexpr std::size_t kMostWithoutSize = 1U << 20U;
    return size > 0 ? ReadSized(file, size) : ReadToEnd(file, kMostWithoutSize);
}

std::string ReadStream(const FoundFile& found) {
    const OpenFile file(found.path, 0);
    const struct stat status = file.Status();
    if (found.identity != std::pair<std::uint64_t, std::uint64_t>(status.st_dev, status.st_ino)) {
        throw ReadFailure("is another file by now");
    }
    return ReadToEnd(file);
}

}  // namespace

std::string ReadBytes(const std::string& path) {
    return path == "-" ? ReadToEnd(OpenFile()) : ReadToEnd(OpenFile(path, 0));
}

ReadSource ReadFound(const FoundFile& file) {
    switch (file.kind) {
        case FoundFile::Kind::File: return {file.path, ReadFoundFile(file), file.modified};
        case FoundFile::Kind::Stream: return {file.path, ReadStream(file), file.modified};
        case FoundFile::Kind::StandardInput: break;
    }
    return {file.path, ReadToEnd(OpenFile()), file.modified};
}

}  // namespace plugincs
