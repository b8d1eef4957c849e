#include "plugin/FileIo.h"

#include <sys/stat.h>

#include <cstdio>
#include <memory>

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

}  // namespace

std::string ReadWholeFile(const std::string& path) {
    constexpr std::size_t kLeastRoom = 4096;
    std::string bytes;
    const File file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) return bytes;
    // Our own buffer is the file's size; a second one in between would only copy.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    bytes.resize(SizeHint(file.get()) + kLeastRoom);
    std::size_t size = 0;
    while (const std::size_t got = std::fread(&bytes[size], 1, bytes.size() - size, file.get())) {
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
