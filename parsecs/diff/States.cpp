#include "parsecs/diff/States.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

namespace plugincs {

namespace {

// Files and folders.

bool IsFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

Inputs InputsOf(const std::string& input) {
    Options options;
    options.inputs = {input};
    return FindInputs(options);
}

StateFile FromSystem(FoundFile& found) { return {true, std::move(found)}; }

// The path below the folder.
std::string_view PathBelow(const std::string& folder, const std::string& path) {
    const std::size_t begin = path.find_first_not_of('/', folder.size());
    return std::string_view(path).substr(std::min(begin, path.size()));
}

// The order in which they were found: folders by their names, too.
int Compared(std::string_view a, std::string_view b) {
    const auto [one, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (one == a.end() || other == b.end()) return (one != a.end()) - (other != b.end());
    const auto rank = [](char c) { return c == '/' ? -1 : int{static_cast<unsigned char>(c)}; };
    return rank(*one) - rank(*other);
}

// What is one file by another name, or by a link, is the same in both states.
bool IsOneFile(const FilePair& pair) {
    return pair.old.isThere && pair.now.isThere &&
           pair.old.found.identity == pair.now.found.identity;
}

void PairFiles(States& states) {
    for (const Inputs* const inputs : {&states.old, &states.now}) {
        if (inputs->files.size() == 1) continue;
        throw UsageError(inputs->failures.front().path + ": " + inputs->failures.front().reason);
    }
    FilePair pair{FromSystem(states.old.files.front()), FromSystem(states.now.files.front())};
    if (!IsOneFile(pair)) states.pairs.push_back(std::move(pair));
}

void PairFolders(const std::vector<std::string>& folders, States& states) {
    auto old = states.old.files.begin();
    auto now = states.now.files.begin();
    const auto oldEnd = states.old.files.end();
    const auto nowEnd = states.now.files.end();
    while (old != oldEnd || now != nowEnd) {
        const int order = old == oldEnd   ? 1
                          : now == nowEnd ? -1
                                          : Compared(PathBelow(folders[0], old->path),
                                                     PathBelow(folders[1], now->path));
        FilePair pair;
        if (order <= 0) pair.old = FromSystem(*old++);
        if (order >= 0) pair.now = FromSystem(*now++);
        if (!IsOneFile(pair)) states.pairs.push_back(std::move(pair));
    }
    for (const Inputs* const inputs : {&states.old, &states.now}) {
        states.failures.insert(states.failures.end(), inputs->failures.begin(),
                               inputs->failures.end());
    }
}

States FindInSystem(const Options& options) {
    const std::vector<std::string>& inputs = options.inputs;
    if (inputs[0] == kStandardStream && inputs[1] == kStandardStream) {
        throw UsageError("standard input cannot be both states");
    }
    if (IsFolder(inputs[0]) != IsFolder(inputs[1])) {
        throw UsageError("--diff takes two files or two folders: " + inputs[0] + " and " +
                         inputs[1] + " are one of each");
    }
    States states;
    states.old = InputsOf(inputs[0]);
    states.now = InputsOf(inputs[1]);
    IsFolder(inputs[0]) ? PairFolders(inputs, states) : PairFiles(states);
    return states;
}

// git.

class GitStates {
  public:
    explicit GitStates(const std::vector<std::string>& revisions) {
        states_.blobs = std::make_unique<BlobReader>();  // gets ready beside the next
        for (GitChange& change : ChangedFiles(revisions)) Add(change);
    }

    States Found() { return std::move(states_); }

  private:
    void Add(GitChange& change) {
        const bool moved = change.old.path != change.now.path && !change.old.path.empty() &&
                           !change.now.path.empty();
        FilePair pair{FileOf(change.old), FileOf(change.now), moved};
        states_.pairs.push_back(std::move(pair));
    }

    StateFile FileOf(GitFile& file) {
        if (file.path.empty()) return {};
        StateFile state;
        state.isThere = true;
        if (file.blob.empty()) state.found.path = Top() + "/" + file.path;
        state.blob = std::move(file.blob);
        state.known = std::move(file.path);
        return state;
    }

    const std::string& Top() {
        if (top_.empty()) top_ = TopOfWorkTree();
        return top_;
    }

    States states_;
    std::string top_;
};

}  // namespace

std::string StateFile::Label() const {
    constexpr std::size_t kShortName = 10;
    return blob.empty() ? Path() : Path() + " (" + blob.substr(0, kShortName) + ")";
}

States FindStates(const Options& options) {
    if (!options.git) return FindInSystem(options);
    try {
        return GitStates(options.inputs).Found();
    } catch (const GitFailure& failure) {
        throw UsageError(failure.what());
    }
}

}  // namespace plugincs
