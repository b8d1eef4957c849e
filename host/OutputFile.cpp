#include "host/OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "host/Failure.h"
#include "host/Streams.h"

namespace fs = std::filesystem;

namespace {

// Stands in the part until something is written: no text of the module's begins like this.
constexpr std::string_view kNothingYet = "-";

// `name` is for the message: the part's own name says nothing to the user.
void WritePart(const std::string& part, int flags, std::string_view text, const std::string& name) {
    const int file = open(part.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666);
    if (file < 0) throw Failure(kBadUsage, name, errno);
    try {
        WriteAll(file, text, name);
    } catch (const Failure&) {
        close(file);
        std::remove(part.c_str());
        throw;
    }
    if (close(file) != 0) throw Failure(kNoText, name, errno);
}

// The end of the file, where a text that is cut short shows.
std::string LastBytes(const std::string& path, std::streamoff count) {
    std::ifstream file(path, std::ios::binary);
    file.seekg(0, std::ios::end);
    file.seekg(-std::min<std::streamoff>(count, file.tellg()), std::ios::end);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path) {
    std::error_code error;
    const fs::file_status old = fs::status(path, error);
    if (fs::is_directory(old)) throw Failure(kBadUsage, path, EISDIR);
    if (fs::exists(old)) {
        if (access(path.c_str(), W_OK) != 0) throw Failure(kBadUsage, path, errno);
        // A link stays one: what it leads to is replaced.
        path_ = fs::canonical(path, error).string();
        if (error) throw Failure(kBadUsage, path, error.message());
    } else if (const fs::path folder = fs::path(path).parent_path(); !folder.empty()) {
        fs::create_directories(folder, error);
        if (error) throw Failure(kBadUsage, folder.string(), error.message());
    }
    part_ = path_ + '.' + std::to_string(getpid()) + ".part";
    WritePart(part_, O_CREAT | O_EXCL, kNothingYet, path);
    if (fs::exists(old)) fs::permissions(part_, old.permissions(), error);
}

OutputFile::~OutputFile() { std::remove(part_.c_str()); }

void OutputFile::Put(std::string_view text) { WritePart(part_, O_TRUNC, text, path_); }

void OutputFile::ExpectRecords(const std::string& input) const {
    constexpr std::string_view kEnd = "\n]\n";
    const std::string end = LastBytes(part_, kEnd.size());
    if (end == kNothingYet) throw Failure(kNoText, input, "no text came back");
    if (end != kEnd) throw Failure(kNoText, path_, "could not be written to the end");
}

void OutputFile::Commit() {
    if (std::rename(part_.c_str(), path_.c_str()) != 0) throw Failure(kBadUsage, path_, errno);
}
