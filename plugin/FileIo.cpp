#include "plugin/FileIo.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <memory>

#include "text/LargePages.h"

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// The size that the file claims, 0 for what has none (pipes, devices). Only a first guess.
std::size_t SizeHint(std::FILE* file) {
    struct stat status {};
    const bool regular = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    return regular ? static_cast<std::size_t>(status.st_size) : 0;
}

// Up to `room` bytes, none at the end of the file or where it cannot be read. A signal that the
// host handles may interrupt a read, which is no end.
std::size_t ReadSome(std::FILE* file, char* to, std::size_t room) {
    while (true) {
        errno = 0;
        const std::size_t got = std::fread(to, 1, room, file);
        if (got > 0 || std::ferror(file) == 0 || errno != EINTR) return got;
        std::clearerr(file);
    }
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
    constexpr std::size_t kLeastRoom = 4096;
    std::string bytes;
    const File file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) return bytes;
    // Our own buffer is the file's size; a second one in between would only copy.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    bytes.reserve(SizeHint(file.get()) + kLeastRoom);
    AskForLargePages(bytes.data(), bytes.capacity());
    bytes.resize(bytes.capacity());
    std::size_t size = 0;
    while (const std::size_t got = ReadSome(file.get(), &bytes[size], bytes.size() - size)) {
        size += got;
        if (size == bytes.size()) bytes.resize(2 * size);
    }
    bytes.resize(size);
    return bytes;
}

void writeafile(std::string_view text, const std::string& path) {
    const File file(std::fopen(path.c_str(), "wb"));
    if (file != nullptr) std::fwrite(text.data(), 1, text.size(), file.get());
}
