#include "host/FolderPlan.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace {

// "../a/./b.cs" gives "a/b.cs".
fs::path BelowNothing(const std::string& input) {
    if (input == "-") return "stdin";
    fs::path below;
    for (const fs::path& part : fs::path(input).lexically_normal().relative_path()) {
        if (part != "..") below /= part;
    }
    return below;
}

class Planner {
  public:
    explicit Planner(fs::path output) : output_(std::move(output)) {}

    void Add(const std::string& input) {
        std::error_code error;
        if (fs::is_directory(input, error)) {
            AddFolder(input);
        } else {
            AddFile(input, BelowNothing(input));
        }
    }

    FolderPlan& Plan() { return plan_; }

  private:
    void AddFolder(const fs::path& folder) {
        const std::vector<fs::path> files = FilesBelow(folder);
        for (const fs::path& file : files) AddFile(file, file.lexically_relative(folder));
        if (files.empty()) {
            plan_.failures.emplace_back(kBadUsage, folder.string(), "no *.cs file lies below it");
        }
    }

    void AddFile(const fs::path& file, fs::path below) {
        if (below.extension() == ".cs") below.replace_extension();
        const std::string output = (output_ / below).string() + ".json";
        const auto [owner, isNew] = owners_.emplace(output, file.string());
        if (isNew) {
            plan_.jobs.push_back({file.string(), output});
        } else {
            plan_.failures.emplace_back(kBadUsage, file.string(),
                                        output + " is already the output for " + owner->second);
        }
    }

    std::vector<fs::path> FilesBelow(const fs::path& top) {
        std::vector<fs::path> files;
        for (std::vector<fs::path> folders{top}; !folders.empty();) {
            const fs::path folder = std::move(folders.back());
            folders.pop_back();
            std::error_code error;
            fs::directory_iterator entry(folder, error);
            for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
                Sort(*entry, folders, files);
            }
            if (error) plan_.failures.emplace_back(kBadUsage, folder.string(), error.message());
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    // A link that leads nowhere counts as a file, so that it gets named as unreadable.
    static void Sort(const fs::directory_entry& entry, std::vector<fs::path>& folders,
                     std::vector<fs::path>& files) {
        std::error_code error;
        const fs::file_type type = entry.status(error).type();
        if (type == fs::file_type::directory) {
            if (!entry.is_symlink(error)) folders.push_back(entry.path());
        } else if (entry.path().extension() == ".cs" &&
                   (type == fs::file_type::regular || type == fs::file_type::not_found)) {
            files.push_back(entry.path());
        }
    }

    fs::path output_;
    FolderPlan plan_;
    std::map<std::string, std::string> owners_;  // of each output, its input
};

}  // namespace

FolderPlan PlanFolder(const std::vector<std::string>& inputs, const std::string& output) {
    Planner planner(output);
    for (const std::string& input : inputs) planner.Add(input);
    return std::move(planner.Plan());
}
