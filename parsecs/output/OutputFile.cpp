#include "parsecs/output/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "parsecs/output/Signals.h"

namespace plugincs {

namespace {

namespace fs = std::filesystem;

bool IsLink(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type == fs::file_type::none) throw std::system_error(error);
    return type == fs::file_type::symlink;
}

bool IsStandardOutput(const struct stat& status) {
    struct stat standard {};
    return fstat(STDOUT_FILENO, &standard) == 0 && standard.st_dev == status.st_dev &&
           standard.st_ino == status.st_ino;
}

}  // namespace

std::string TargetOf(const std::string& path) {
    constexpr int kMostLinks = 40;
    fs::path target = path;
    for (int links = 0; links < kMostLinks && IsLink(target); ++links) {
        target = target.parent_path() / fs::read_symlink(target);
    }
    return target.string();
}

OutputFile::OutputFile(const std::string& path)
    : name_(path.empty() ? "standard output" : path), descriptor_(STDOUT_FILENO) {
    if (path.empty()) return;
    try {
        Open(path);
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

void OutputFile::Open(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        if (errno != ENOENT) Fail(errno);
        return OpenFile(TargetOf(path));
    }
    if (IsStandardOutput(status)) return;
    if (S_ISDIR(status.st_mode)) Fail(EISDIR);
    if (access(path.c_str(), W_OK) != 0) Fail(errno);
    if (S_ISREG(status.st_mode)) return OpenFile(TargetOf(path));
    descriptor_ = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor_ < 0) Fail(errno);
}

void OutputFile::OpenFile(const std::string& target) {
    temporary_.emplace(target);
    descriptor_ = temporary_->descriptor();
}

OutputFile::~OutputFile() {
    if (!temporary_ && descriptor_ > STDERR_FILENO) close(descriptor_);
}

void OutputFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE && descriptor_ == STDOUT_FILENO) {
            EndBy(SIGPIPE);
        } else if (errno != EINTR) {
            Fail(errno);
        }
    }
}

void OutputFile::Finish() {
    if (!temporary_) return;
    try {
        temporary_->TakePlace();
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

void OutputFile::Fail(int error) const {
    throw std::runtime_error(name_ + ": " + std::strerror(error));
}

void PrepareStandardFiles() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int wrongWay = number == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (fcntl(number, F_GETFD) < 0) open("/dev/null", wrongWay);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace plugincs
