#include "parsecs/input/Inputs.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unordered_set>

#include "parsecs/input/InputList.h"
#include "parsecs/input/NormalPath.h"

namespace {

namespace fs = std::filesystem;

FileIdentity IdentityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

std::int64_t Nanoseconds(const struct stat& status) {
#ifdef __APPLE__
    const timespec& time = status.st_mtimespec;
#else
    const timespec& time = status.st_mtim;
#endif
    return time.tv_sec * std::int64_t{1000000000} + time.tv_nsec;
}

// Devices never end, but for those that people type into or that hold nothing.
bool IsEndless(const std::string& path, const struct stat& status) {
    if (!S_ISCHR(status.st_mode)) return S_ISBLK(status.st_mode);
    struct stat null {};
    const bool isNull = stat("/dev/null", &null) == 0 && null.st_rdev == status.st_rdev;
    return !isNull && !(path == "-" && isatty(STDIN_FILENO) != 0);
}

class Finder {
  public:
    void Add(const std::string& input) {
        struct stat status {};
        found_.named.push_back(input);
        if (Examine(input, status) != 0) {
            Fail(input, std::strerror(errno));
        } else if (S_ISDIR(status.st_mode)) {
            AddFolder(input);
        } else if (IsEndless(input, status)) {
            Fail(input, "is a device");
        } else {
            AddFile(input, status);
        }
    }

    Inputs Found() { return std::move(found_); }

  private:
    static int Examine(const std::string& path, struct stat& status) {
        return path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status);
    }

    void Fail(const std::string& path, const std::string& reason) {
        found_.failures.push_back({path, reason});
    }

    void AddFile(const std::string& path, const struct stat& status) {
        if (!known_.insert(NormalPath(path)).second) return;
        found_.identities.push_back(IdentityOf(status));
        found_.files.push_back(
            {path, static_cast<std::uint64_t>(status.st_size), Nanoseconds(status)});
    }

    // Folders to come are kept on a stack, last one first.
    void AddFolder(const std::string& top) {
        pending_.push_back({top, true});
        while (!pending_.empty()) {
            const Entry entry = std::move(pending_.back());
            pending_.pop_back();
            if (entry.isFolder) {
                PushEntries(entry.path);
            } else {
                AddFromFolder(entry.path);
            }
        }
    }

    struct Entry {
        std::string path;
        bool isFolder;
    };

    void PushEntries(const std::string& folder) {
        const auto first = static_cast<std::ptrdiff_t>(pending_.size());
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; entry != fs::directory_iterator(); entry.increment(error)) Push(*entry);
        if (error) Fail(folder, error.message());
        const auto isLater = [](const Entry& a, const Entry& b) { return a.path > b.path; };
        std::sort(pending_.begin() + first, pending_.end(), isLater);
    }

    void Push(const fs::directory_entry& entry) {
        std::error_code error;
        const bool isLink = entry.is_symlink(error);
        const bool isFolder = !error && !isLink && entry.is_directory(error);
        const std::string& path = entry.path().native();
        if (error) return Fail(path, error.message());
        if (isFolder || path.ends_with(".cs")) pending_.push_back({path, isFolder});
    }

    void AddFromFolder(const std::string& path) {
        struct stat status {};
        if (Examine(path, status) != 0) {
            Fail(path, std::strerror(errno));
        } else if (S_ISREG(status.st_mode)) {
            AddFile(path, status);
        }
    }

    Inputs found_;
    std::unordered_set<std::string> known_;
    std::vector<Entry> pending_;
};

}  // namespace

bool Inputs::Holds(const std::string& path) const {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return false;
    return std::find(identities.begin(), identities.end(), IdentityOf(status)) != identities.end();
}

Inputs FindInputs(const Options& options) {
    Finder finder;
    for (const std::string& input : options.inputs) finder.Add(input);
    if (!options.list.empty()) {
        const char end = options.listEndsInNul ? '\0' : '\n';
        for (const std::string& input : ReadInputList(options.list, end)) finder.Add(input);
    }
    return finder.Found();
}
