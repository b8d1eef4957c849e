#include "parsecs/input/Inputs.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <unordered_set>

#include "parsecs/input/Exclusions.h"
#include "parsecs/input/InputList.h"
#include "parsecs/input/NormalPath.h"

namespace plugincs {

namespace {

namespace fs = std::filesystem;

constexpr const char* kStandardInput = "/dev/stdin";

using Identity = decltype(FoundFile::identity);

Identity IdentityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

// The years that 64 bits hold are 1677 to 2262; times beyond are those of their ends.
std::int64_t Nanoseconds(const struct stat& status) {
#ifdef __APPLE__
    const timespec& time = status.st_mtimespec;
#else
    const timespec& time = status.st_mtim;
#endif

    constexpr std::int64_t kSecond = 1'000'000'000;
    constexpr std::int64_t kMostSeconds = INT64_MAX / kSecond - 1;
    const std::int64_t seconds = std::clamp<std::int64_t>(time.tv_sec, -kMostSeconds, kMostSeconds);
    return seconds * kSecond + time.tv_nsec;
}

// Devices never end, but for those that people type into or that hold nothing.
bool IsEndless(const struct stat& status, FoundFile::Kind kind) {
    if (!S_ISCHR(status.st_mode)) return S_ISBLK(status.st_mode);
    struct stat null {};
    const bool isNull = stat("/dev/null", &null) == 0 && null.st_rdev == status.st_rdev;
    return !isNull && !(kind == FoundFile::Kind::StandardInput && isatty(STDIN_FILENO) != 0);
}

class Finder {
  public:
    explicit Finder(const Options& options) : exclusions_(options) {}

    void Add(const std::string& input) {
        struct stat status {};
        found_.named.push_back(input);
        if (stat(input.c_str(), &status) != 0) {
            Fail(input, std::strerror(errno));
        } else if (exclusions_.LeaveOutInput(input, S_ISDIR(status.st_mode))) {
            LeaveOut(input);
        } else if (S_ISDIR(status.st_mode)) {
            AddFolder(input);
        } else {
            AddNamed(input, status, FoundFile::Kind::Stream);
        }
    }

    void AddStandardInput() {
        struct stat status {};
        found_.named.emplace_back(kStandardInput);
        if (fstat(STDIN_FILENO, &status) != 0) return Fail(kStandardInput, std::strerror(errno));
        AddNamed(kStandardInput, status, FoundFile::Kind::StandardInput);
    }

    Inputs Found() {
        const std::vector<InputFailure>& failures = exclusions_.failures();
        found_.failures.insert(found_.failures.end(), failures.begin(), failures.end());
        return std::move(found_);
    }

  private:
    void LeaveOut(const std::string& path) { found_.leftOut.insert(NormalPath(path)); }

    void Fail(const std::string& path, const std::string& reason) {
        found_.failures.push_back({path, reason});
    }

    void AddNamed(const std::string& path, const struct stat& status, FoundFile::Kind kind) {
        if (IsEndless(status, kind)) return Fail(path, "is a device");
        const bool isFile = S_ISREG(status.st_mode) && kind != FoundFile::Kind::StandardInput;
        AddFile(path, status, isFile ? FoundFile::Kind::File : kind);
    }

    // What one reader takes from a stream the next one misses, so it is taken once, however named.
    void AddFile(const std::string& path, const struct stat& status, FoundFile::Kind kind) {
        const Identity identity = IdentityOf(status);
        if (!known_.insert(NormalPath(path)).second) return;
        if (!S_ISREG(status.st_mode) && !streams_.insert(identity).second) return;
        const auto bytes = static_cast<std::uint64_t>(status.st_size);
        found_.files.push_back({path, kind, bytes, Nanoseconds(status), identity});
    }

    // Folders to come are kept on a stack, last one first.
    void AddFolder(const std::string& top) {
        PushEntries(top, exclusions_.Enter(top));
        while (!pending_.empty()) {
            const Entry entry = std::move(pending_.back());
            pending_.pop_back();
            if (entry.isFolder) {
                PushEntries(entry.path, exclusions_.Enter(entry.path, entry.in));
            } else {
                AddFromFolder(entry.path);
            }
        }
    }

    struct Entry {
        std::string path;
        bool isFolder;
        const Exclusions::Folder* in;
    };

    void PushEntries(const std::string& folder, const Exclusions::Folder* known) {
        const auto first = static_cast<std::ptrdiff_t>(pending_.size());
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; entry != fs::directory_iterator(); entry.increment(error)) Push(*entry, known);
        if (error) Fail(folder, error.message());
        const auto isLater = [](const Entry& a, const Entry& b) { return a.path > b.path; };
        std::sort(pending_.begin() + first, pending_.end(), isLater);
    }

    void Push(const fs::directory_entry& entry, const Exclusions::Folder* in) {
        std::error_code error;
        const bool isLink = entry.is_symlink(error);
        const bool isFolder = !error && !isLink && entry.is_directory(error);
        const std::string& path = entry.path().native();
        if (error) return Fail(path, error.message());
        if (!isFolder && !path.ends_with(".cs")) return;
        if (exclusions_.LeaveOut(path, isFolder, in)) return LeaveOut(path);
        pending_.push_back({path, isFolder, in});
    }

    void AddFromFolder(const std::string& path) {
        struct stat status {};
        if (stat(path.c_str(), &status) != 0) {
            Fail(path, std::strerror(errno));
        } else if (S_ISREG(status.st_mode)) {
            AddFile(path, status, FoundFile::Kind::File);
        }
    }

    Exclusions exclusions_;
    Inputs found_;
    std::unordered_set<std::string> known_;
    std::set<Identity> streams_;
    std::vector<Entry> pending_;
};

bool IsAmong(const std::vector<FoundFile>& files, const struct stat& status) {
    const Identity identity = IdentityOf(status);
    return std::any_of(files.begin(), files.end(),
                       [&](const FoundFile& file) { return file.identity == identity; });
}

}  // namespace

bool Inputs::Holds(const std::string& path) const {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && IsAmong(files, status);
}

bool Inputs::LeaveOut(const std::string& path) const {
    for (std::size_t end = path.size(); end != 0 && end != std::string::npos;
         end = path.rfind('/', end - 1)) {
        if (leftOut.contains(path.substr(0, end))) return true;
    }
    return false;
}

bool Inputs::HoldStandardOutput() const {
    struct stat status {};
    return fstat(STDOUT_FILENO, &status) == 0 && S_ISREG(status.st_mode) && IsAmong(files, status);
}

Inputs FindInputs(const Options& options) {
    Finder finder(options);
    for (const std::string& input : options.inputs) {
        input == "-" ? finder.AddStandardInput() : finder.Add(input);
    }
    if (!options.list.empty()) {
        const char end = options.listEndsInNul ? '\0' : '\n';
        for (const std::string& input : ReadInputList(options.list, end)) finder.Add(input);
    }
    return finder.Found();
}

}  // namespace plugincs
