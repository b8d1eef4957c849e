#include "parsecs/output/Temporary.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "parsecs/output/Signals.h"

namespace plugincs {

namespace {

// What the handler of signals sees: a path, or null.
std::array<std::atomic<const char*>, 8> removed;

void RemoveAll() {
    for (const auto& path : removed) {
        if (path != nullptr) unlink(path);
    }
}

void RemoveAllAndEnd(int signal) {
    RemoveAll();
    EndBy(signal);
}

[[noreturn]] void ThrowError() { throw std::system_error(errno, std::generic_category()); }

mode_t NewFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

void RemoveTemporariesOnSignals() { HandleEndingSignals(RemoveAllAndEnd); }

void RemoveTemporariesAndEnd(int exitCode) {
    RemoveAll();
    _exit(exitCode);
}

TemporaryFile::TemporaryFile(const std::string& target) : target_(target) {
    path_ = target.substr(0, target.rfind('/') + 1) + ".parsecs-XXXXXX";
    while (slot_ < removed.size() && removed[slot_] != nullptr) ++slot_;
    if (slot_ == removed.size()) throw std::logic_error("too many temporary files at once");
    Make();
}

// A signal between the making and the note of it would leave the file.
void TemporaryFile::Make() {
    const SignalsWait wait;
    descriptor_ = mkstemp(path_.data());
    if (descriptor_ < 0) ThrowError();
    removed[slot_] = path_.c_str();
}

TemporaryFile::~TemporaryFile() {
    if (descriptor_ >= 0) close(descriptor_);
    const SignalsWait wait;
    if (removed[slot_] == nullptr) return;
    unlink(path_.c_str());
    removed[slot_] = nullptr;
}

void TemporaryFile::TakePlace() {
    CopyMode();
    // What was written last may show here that it was not.
    if (close(std::exchange(descriptor_, -1)) != 0) ThrowError();
    const SignalsWait wait;
    if (rename(path_.c_str(), target_.c_str()) != 0) ThrowError();
    removed[slot_] = nullptr;
}

// The owner cannot be kept by everybody: who may not keep the group either gives it no rights.
void TemporaryFile::CopyMode() const {
    struct stat old {};
    mode_t mode = NewFileMode();
    if (stat(target_.c_str(), &old) == 0) {
        mode = old.st_mode & 07777U;
        if (fchown(descriptor_, old.st_uid, old.st_gid) != 0 &&
            fchown(descriptor_, static_cast<uid_t>(-1), old.st_gid) != 0) {
            mode &= ~static_cast<mode_t>(0070);
        }
    } else if (errno != ENOENT) {
        ThrowError();
    }
    if (fchmod(descriptor_, mode) != 0) ThrowError();
}

}  // namespace plugincs
