#include "parsecs/git/Git.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <system_error>

#include "parsecs/input/Source.h"

namespace plugincs {

namespace {

constexpr std::size_t kPiece = 65536;

// The names of files are taken as they are, and no file of git's own is written.
const std::vector<std::string> kEnvironment{"GIT_LITERAL_PATHSPECS=0", "GIT_GLOB_PATHSPECS=0",
                                            "GIT_NOGLOB_PATHSPECS=0", "GIT_ICASE_PATHSPECS=0",
                                            "GIT_OPTIONAL_LOCKS=0"};

ChildProcess Started(std::vector<std::string> arguments) {
    // In a folder below the top, git may be set up to show only what lies in it.
    arguments.insert(arguments.begin(), {"git", "-c", "diff.relative=false"});
    try {
        return ChildProcess(arguments, kEnvironment);
    } catch (const std::system_error& error) {
        throw GitFailure("git cannot be run: " + error.code().message());
    }
}

std::string OutputOf(const std::vector<std::string>& arguments) {
    ChildProcess git = Started(arguments);
    git.CloseInput();
    std::string output;
    std::string piece(kPiece, '\0');
    while (const std::size_t got = git.Read(piece.data(), piece.size())) {
        output.append(piece, 0, got);
    }
    if (git.Wait() != 0) throw GitFailure("git " + arguments.front() + " failed");
    return output;
}

// Steps through what `git diff --raw -z` gives: fields that end in NUL.
class RawReader {
  public:
    explicit RawReader(std::string_view output) : rest_(output) {}

    bool AtEnd() const { return rest_.empty(); }

    // ":100644 100755 BLOB BLOB R90", then a name, or the old and the new one.
    GitChange Next() {
        std::string_view head = Field('\0').substr(1);
        std::array<std::string_view, 5> words;
        for (std::string_view& word : words) {
            const std::size_t end = std::min(head.find(' '), head.size());
            word = head.substr(0, end);
            head.remove_prefix(std::min(end + 1, head.size()));
        }
        const bool hasTwo = words[4].starts_with('R') || words[4].starts_with('C');
        const std::string_view old = Field('\0');
        const std::string_view now = hasTwo ? Field('\0') : old;
        return {FileOf(words[0], words[2], old), FileOf(words[1], words[3], now)};
    }

  private:
    std::string_view Field(char end) {
        const std::size_t size = std::min(rest_.find(end), rest_.size());
        const std::string_view field = rest_.substr(0, size);
        rest_.remove_prefix(std::min(size + 1, rest_.size()));
        return field;
    }

    // Links and submodules have other modes.
    static GitFile FileOf(std::string_view mode, std::string_view blob, std::string_view path) {
        if (!mode.starts_with("100") || !path.ends_with(".cs")) return {};
        const bool isZero = blob.find_first_not_of('0') == std::string_view::npos;
        return {std::string(path), isZero ? "" : std::string(blob)};
    }

    std::string_view rest_;
};

}  // namespace

std::vector<GitChange> ChangedFiles(std::vector<std::string> revisions) {
    if (revisions.empty()) revisions.emplace_back("HEAD");
    std::vector<std::string> arguments{"diff",
                                       "--raw",
                                       "-z",
                                       "-M",
                                       "--no-abbrev",
                                       "--no-color",
                                       "--no-ext-diff",
                                       "--ignore-submodules=all"};
    for (const std::string& revision : revisions) {
        // git would take it for an option.
        if (revision.starts_with('-')) throw GitFailure(revision + " is no revision");
        arguments.push_back(revision);
    }
    arguments.insert(arguments.end(), {"--", ":/*.cs"});
    const std::string output = OutputOf(arguments);
    std::vector<GitChange> changes;
    for (RawReader reader(output); !reader.AtEnd();) {
        GitChange change = reader.Next();
        const bool isShown = !change.old.path.empty() || !change.now.path.empty();
        if (isShown) changes.push_back(std::move(change));
    }
    return changes;
}

std::string TopOfWorkTree() {
    std::string top = OutputOf({"rev-parse", "--show-toplevel"});
    if (top.ends_with('\n')) top.pop_back();
    return top;
}

BlobReader::BlobReader() : git_(Started({"cat-file", "--batch"})) {}

// As many as certainly fit into a pipe: more could make both wait for each other.
void BlobReader::SendSome() {
    constexpr std::size_t kMostSent = 32;
    for (; sent_ < std::min(kMostSent, asked_.size()); ++sent_) {
        if (!git_.Write(asked_[sent_] + "\n")) throw GitFailure("git cat-file ended early");
    }
}

std::string BlobReader::Take() {
    SendSome();
    const std::string line = TakeLine();  // "NAME blob SIZE", "NAME missing"
    asked_.pop_front();
    --sent_;
    std::size_t size = 0;
    const std::size_t number = line.rfind(' ') + 1;
    const char* const end = line.data() + line.size();
    const auto read = std::from_chars(line.data() + number, end, size);
    if (read.ec != std::errc() || read.ptr != end) throw ReadFailure("is not in the repository");
    std::string bytes = TakeBytes(size);
    TakeByte();  // the line feed behind them
    return bytes;
}

char BlobReader::TakeByte() {
    if (at_ == buffer_.size()) {
        buffer_.resize(kPiece);
        buffer_.resize(git_.Read(buffer_.data(), buffer_.size()));
        at_ = 0;
        if (buffer_.empty()) throw GitFailure("git cat-file ended early");
    }
    return buffer_[at_++];
}

std::string BlobReader::TakeLine() {
    std::string line;
    for (char c = TakeByte(); c != '\n'; c = TakeByte()) line += c;
    return line;
}

std::string BlobReader::TakeBytes(std::size_t size) {
    std::string bytes = buffer_.substr(at_, size);
    at_ += bytes.size();
    std::size_t length = bytes.size();
    bytes.resize(size);
    while (length < size) {
        const std::size_t got = git_.Read(bytes.data() + length, size - length);
        if (got == 0) throw GitFailure("git cat-file ended early");
        length += got;
    }
    return bytes;
}

}  // namespace plugincs
