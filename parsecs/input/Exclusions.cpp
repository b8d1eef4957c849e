#include "parsecs/input/Exclusions.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "parsecs/input/Source.h"

namespace plugincs {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEverybodys = "bin/\nobj/\n.git/\nnode_modules/\n";

// Where the rest of the paths below the folder begins.
std::size_t CutOf(const std::string& folder) {
    return folder.size() + (folder.ends_with('/') ? 0 : 1);
}

std::string WithSlash(const fs::path& path) {
    std::string text = path.generic_string();
    return text.empty() || text == "." ? "" : text.append("/");
}

// From where the program stands; empty for what lies elsewhere, and for that place itself.
fs::path FromHere(const fs::path& path) {
    const fs::path here = fs::current_path();
    fs::path relative = (here / path).lexically_normal().lexically_relative(here);
    if (!relative.empty() && relative.filename().empty()) relative = relative.parent_path();
    return relative.empty() || *relative.begin() == ".." || relative == "." ? fs::path() : relative;
}

// The folders around it, up to the one with the repository; none outside of one.
std::vector<fs::path> RepositoryAround(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> around;
    for (fs::path path = folder; !fs::exists(path / ".git", error); path = path.parent_path()) {
        if (path == path.parent_path()) return {};
        around.push_back(path.parent_path());
    }
    return around;
}

}  // namespace

Exclusions::Exclusions(const Options& options) : followsFiles_(options.ignoreFiles) {
    for (const std::string& pattern : options.excluded) own_.Add(pattern);
}

const Exclusions::Folder* Exclusions::Enter(const std::string& input) {
    const std::size_t cut = CutOf(input);
    const Layer* own = &layers_.emplace_back(Layer{own_, WithSlash(FromHere(input)), cut, nullptr});
    const Layer* files = &layers_.emplace_back(Layer{IgnoreRules(kEverybodys), "", cut, nullptr});
    std::error_code error;
    const fs::path whole = fs::canonical(input, error);
    if (!error && followsFiles_) {
        const std::vector<fs::path> around = RepositoryAround(whole);
        for (auto folder = around.rbegin(); folder != around.rend(); ++folder) {
            files =
                AddFile(folder->string(), WithSlash(whole.lexically_relative(*folder)), cut, files);
        }
    }
    const Folder begun{own, files};
    return Enter(input, &begun);
}

const Exclusions::Folder* Exclusions::Enter(const std::string& path, const Folder* around) {
    const Layer* const files =
        followsFiles_ ? AddFile(path, "", CutOf(path), around->files) : around->files;
    return &folders_.emplace_back(Folder{around->own, files});
}

// As git does, not by way of links.
const Exclusions::Layer* Exclusions::AddFile(const std::string& folder, std::string before,
                                             std::size_t cut, const Layer* next) {
    const std::string path = (fs::path(folder) / ".gitignore").string();
    std::error_code error;
    if (!fs::is_regular_file(fs::symlink_status(path, error))) return next;
    try {
        IgnoreRules rules(ReadBytes(path));
        return &layers_.emplace_back(Layer{std::move(rules), std::move(before), cut, next});
    } catch (const ReadFailure& failure) {
        failures_.push_back({path, failure.what()});
        return next;
    }
}

IgnoreRules::Verdict Exclusions::Layer::On(std::string_view path, bool isFolder) const {
    const std::string_view rest = path.substr(cut);
    return before.empty() ? rules.On(rest, isFolder)
                          : rules.On(std::string(before).append(rest), isFolder);
}

bool Exclusions::LeaveOut(const std::string& path, bool isFolder, const Folder* in) const {
    for (const Layer* layers : {in->own, in->files}) {
        for (const Layer* layer = layers; layer != nullptr; layer = layer->next) {
            const IgnoreRules::Verdict verdict = layer->On(path, isFolder);
            if (verdict != IgnoreRules::Verdict::Unsaid) {
                return verdict == IgnoreRules::Verdict::LeftOut;
            }
        }
    }
    return false;
}

// A file goes with any of the folders that it lies in. Of one that lies elsewhere only the name is
// looked at.
bool Exclusions::LeaveOutInput(const std::string& path, bool isFolder) const {
    if (own_.IsEmpty()) return false;
    const std::string here = FromHere(path).generic_string();
    if (here.empty() && isFolder) return false;
    const std::string whole = here.empty() ? fs::path(path).filename().string() : here;
    for (std::size_t end = 0; end != std::string::npos;) {
        end = whole.find('/', end + 1);
        const bool last = end == std::string::npos;
        const IgnoreRules::Verdict verdict = own_.On(whole.substr(0, end), isFolder || !last);
        if (verdict == IgnoreRules::Verdict::LeftOut) return true;
    }
    return false;
}

}  // namespace plugincs
