#include "parsecs/input/Source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

class OpenFile {
  public:
    explicit OpenFile(const std::string& path)
        : number_(path == "-" ? STDIN_FILENO : Open(path.c_str())) {
        if (number_ < 0) throw ReadFailure(std::strerror(errno));
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
            if (errno != EINTR) throw ReadFailure(std::strerror(errno));
        }
    }

    // Only a first guess: 0 for what has none (pipes, devices).
    std::size_t Size() const {
        struct stat status {};
        if (fstat(number_, &status) != 0 || status.st_size < 0) return 0;
        return static_cast<std::size_t>(status.st_size);
    }

  private:
    static int Open(const char* path) {
        while (true) {
            const int number = open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY);
            if (number >= 0 || errno != EINTR) return number;
        }
    }

    int number_;
};

}  // namespace

std::string ReadBytes(const std::string& path) {
    char piece[32768];
    std::string bytes;
    const OpenFile file(path);
    while (const std::size_t got = file.Read(piece, sizeof piece)) {
        if (bytes.empty() && got == sizeof piece) bytes.reserve(file.Size() + 1);
        bytes.append(piece, got);
    }
    return bytes;
}

ReadSource ReadFound(const FoundFile& file) {
    return {file.path == "-" ? "/dev/stdin" : file.path, ReadBytes(file.path), file.modified};
}
