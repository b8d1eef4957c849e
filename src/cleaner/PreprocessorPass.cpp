// The preprocessor pass of the cleaner. Conditions are not expressions: an operand is looked up as
// one string, so without defined symbols only "#ifndef" sections and "#else" branches are kept.
#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include "cleaner/Cleaner.h"
#include "text/ByteSets.h"
#include "text/CharClass.h"
#include "text/RunCopy.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

constexpr ByteSet kBlank(" ");
constexpr ByteSet kPrintable(' ', '\x7F');  // the comment pass leaves no 127
constexpr ByteSets kLineBytes(~kBlank, ~kPrintable);
constexpr ByteSets kNotBlank(~kBlank);
constexpr ByteSets kNotPrintable(~kPrintable);

// A directive line: its keyword with the '#', and its operand.
struct Directive {
    std::optional<std::string> keyword;
    std::optional<std::string> operand;
};

// Other characters than '#' and letters are left out, so "# if" is "#if". A blank ends the keyword,
// and so does a '(', even an empty one. Nullopt where a letter comes before any '#'. `end` receives
// the position after the keyword.
std::optional<std::string> ReadKeyword(std::string_view line, std::size_t& end) {
    std::string keyword;
    for (end = 0; end < line.size(); ++end) {
        const char c = line[end];
        if (c == ' ' && keyword.size() > 1) return keyword;
        if (IsAsciiLetter(c) && keyword.empty()) return std::nullopt;
        if (c == '#' || IsAsciiLetter(c)) keyword.push_back(c);
        const bool opens = c != '#' && c != ' ' && line.substr(end, 2).back() == '(';
        if (opens) {
            ++end;
            return keyword;
        }
    }
    return keyword.empty() ? std::nullopt : std::optional(keyword);
}

// The operand loses the blanks before its first letter or '('.
std::optional<std::string> ReadOperand(std::string_view rest) {
    std::string operand;
    bool begun = false;
    for (const char c : rest) {
        begun = begun || c == '(' || IsAsciiLetter(c);
        if (begun || c != ' ') operand.push_back(c);
    }
    if (operand.empty()) return std::nullopt;
    return std::string(trim(operand));
}

Directive ReadDirective(std::string_view line) {
    std::size_t end = 0;
    Directive directive{ReadKeyword(line, end), std::nullopt};
    if (directive.keyword) directive.operand = ReadOperand(line.substr(end));
    return directive;
}

// Whether the branch that the directive opens is active. `previousState` is the state of the branch
// before it.
bool IsActive(const Directive& directive, int previousState,
              const std::vector<std::string>& definedSymbols) {
    if (!directive.keyword || previousState == -1) return false;
    const std::string& keyword = *directive.keyword;
    const bool defined =
        directive.operand && std::find(definedSymbols.begin(), definedSymbols.end(),
                                       *directive.operand) != definedSymbols.end();
    if (keyword == "#include" || keyword == "#define") return true;
    if (keyword == "#ifdef" || keyword == "#if") return defined;
    if (keyword == "#ifndef") return !defined;
    if (keyword == "#elif") return previousState == 0 && defined;
    if (keyword == "#else") return previousState == 0;
    return false;
}

// The traces of long lines: for each byte beyond the fiftieth, the line so far. Short ones are
// buffered, to save calls; none are made when nobody can read them.
class LineTraces {
  public:
    explicit LineTraces(Traces traces) : traces_(traces) {}

    void Add(std::string_view line) {
        constexpr std::size_t kSmall = 4096;
        if (!discarded_) discarded_ = traces_.AreDiscarded();
        if (*discarded_) return;
        if (line.size() < kSmall) {
            gathered_.append("[[").append(line).append("]]\n");
            if (gathered_.size() > 16 * kSmall) Flush();
            return;
        }
        Flush();
        traces_.Write("[[");
        traces_.Write(line);
        traces_.Write("]]\n");
    }

    void Flush() {
        traces_.Write(gathered_);
        gathered_.clear();
    }

  private:
    Traces traces_;
    std::string gathered_;
    std::optional<bool> discarded_;  // asked with the first trace
};

class PreprocessorPass {
  public:
    PreprocessorPass(std::string_view text, std::vector<std::string> definedSymbols,
                     std::vector<std::string>& defines, Traces traces)
        : text_(text),
          kept_(text),
          definedSymbols_(std::move(definedSymbols)),
          defines_(defines),
          known_(defines.begin(), defines.end()),
          traces_(traces) {}

    std::string Run() {
        while (position_ < text_.size()) {
            if (lineStart_ && pending_.empty()) TakePlainLines();
            if (position_ == text_.size()) break;
            if (text_[position_] == '\n') {
                EndLine();
            } else if (kPrintable.Has(text_[position_])) {
                TakeRun();
            } else {
                ++position_;
            }
        }
        return kept_.Take();
    }

  private:
    // An open conditional section, or the file itself at the bottom of the stack. A level can only
    // be active while the one below it is.
    struct Level {
        bool active = true;
        bool branchTaken = false;  // a branch before an "#elif" was active
    };

    bool InSection() const { return levels_.size() > 1; }
    bool Emitting() const { return levels_.back().active; }

    // The fast path for consecutive lines without directives, which lose their indentation if they
    // are held; after a held line of blanks alone the next one is not. Held lines with more than
    // fifty leading blanks, which leave a trace, are left to the slow path. Most lines fit into a
    // block that begins with them, so one look finds both ends.
    void TakePlainLines() {
        const bool emitting = Emitting();
        std::size_t line = position_;
        while (line + kBlockSize <= text_.size()) {
            const auto [notBlank, notPrintable] = kLineBytes.In(&text_[line]);
            const std::size_t blanks = First(notBlank);
            if (blanks > kUntraced) break;
            const std::size_t start = line + blanks;
            std::size_t end = line + First(notPrintable);
            if (notPrintable == 0) end = Find(kNotPrintable, text_, end);
            if (end == text_.size() || text_[end] != '\n' || text_[start] == '#') break;
            const std::size_t kept = holding_ ? start : line;
            kept_.Keep(emitting ? kept : end, end + 1);
            const bool blank = (start == end) & (blanks > 0);
            holding_ = !(holding_ & blank);
            line = end + 1;
        }
        position_ = line;
    }

    // Takes the leading blanks of a line, or the rest of it up to the next byte that is not
    // printable.
    void TakeRun() {
        const char first = text_[position_];
        const bool blanks = lineStart_ && first == ' ';
        if (lineStart_ && !blanks) StartLineWith(first);
        const std::size_t end = Find(blanks ? kNotBlank : kNotPrintable, text_, position_);
        if (holding_) {
            Hold(text_.substr(position_, end - position_));
        } else if (Emitting()) {
            kept_.Keep(position_, end);
        }
        position_ = end;
    }

    // The first character after a line's indentation decides: a '#' begins a directive, which is
    // held back; any other line is released, without the blanks that were held.
    void StartLineWith(char first) {
        holding_ = first == '#';
        if (!holding_) pending_.clear();
        lineStart_ = false;
    }

    void Hold(std::string_view run) {
        if (pending_.size() + run.size() <= kUntraced) {
            pending_.append(run);
            return;
        }
        for (const char c : run) {
            pending_.push_back(c);
            if (pending_.size() > kUntraced) traces_.Add(pending_);
        }
        traces_.Flush();
    }

    void EndLine() {
        kept_.Put('\n');
        ++position_;
        if (pending_.empty()) {
            Expect(true);
            return;
        }
        // A backslash at the end continues the directive on the next line.
        if (rtrim(pending_).ends_with('\\')) return;
        Obey(ReadDirective(pending_));
        pending_.clear();
    }

    // Starts a new line. If it is held, its leading blanks can still be dropped.
    void Expect(bool held) {
        lineStart_ = true;
        holding_ = held;
    }

    // Applies a directive, and sets how the next line starts.
    void Obey(const Directive& directive) {
        if (!directive.keyword) {
            Expect(false);
            return;
        }
        const std::string& keyword = *directive.keyword;
        if (keyword == "#if" || keyword == "#ifdef" || keyword == "#ifndef") {
            OpenSection(directive);
            AddOperand(directive);
        } else if (keyword == "#elif") {
            ContinueSection(directive);
            AddOperand(directive);
            Expect(true);
        } else if (keyword == "#else") {
            TurnSection();
            Expect(false);
        } else if (keyword == "#endif") {
            if (InSection()) levels_.pop_back();
            Expect(true);
        } else {
            Expect(keyword != "#include");
        }
    }

    // Inside an inactive section the line start is not set again, so the whole next line is held
    // and examined like a directive.
    void OpenSection(const Directive& directive) {
        holding_ = true;
        Level level;
        if (Emitting()) {
            level.active = IsActive(directive, 1, definedSymbols_);
            lineStart_ = true;
        } else {
            level.active = false;
        }
        levels_.push_back(level);
    }

    // "#elif": active if no branch before it was, its symbol is defined, and the level below is
    // active.
    void ContinueSection(const Directive& directive) {
        if (!InSection()) return;
        Level& level = levels_.back();
        level.branchTaken = level.branchTaken || level.active;
        level.active =
            BelowIsActive() && IsActive(directive, level.branchTaken ? 1 : 0, definedSymbols_);
    }

    // "#else": flips its section, unless a chain of "#elif" was taken already.
    void TurnSection() {
        if (!InSection()) return;
        Level& level = levels_.back();
        level.active = BelowIsActive() && !level.branchTaken && !level.active;
    }

    bool BelowIsActive() const { return levels_[levels_.size() - 2].active; }

    void AddOperand(const Directive& directive) {
        if (directive.operand && known_.insert(*directive.operand).second) {
            defines_.push_back(*directive.operand);
        }
    }

    static constexpr std::size_t kUntraced = 50;  // bytes of a held line

    const std::string_view text_;
    std::size_t position_ = 0;  // of the next byte
    RunCopy kept_;
    const std::vector<std::string> definedSymbols_;
    std::vector<std::string>& defines_;
    std::unordered_set<std::string> known_;  // the entries of `defines_`
    std::string pending_;                    // what is held back of the current line
    LineTraces traces_;
    bool lineStart_ = true;  // only blanks were seen on the current line
    bool holding_ = true;    // characters go to the pending line instead of the output
    std::vector<Level> levels_{Level{}};
};

}  // namespace

std::string Cleaner::PreProcessorSimulation(std::string_view text,
                                            std::vector<std::string> definedSymbols,
                                            std::vector<std::string>& defines,
                                            Traces traces) const {
    return PreprocessorPass(text, std::move(definedSymbols), defines, traces).Run();
}

void Cleaner::CleanerPartsList(std::string_view line, std::vector<std::string>& parts) const {
    Directive directive = ReadDirective(line);
    if (directive.keyword) parts.push_back(*std::move(directive.keyword));
    if (directive.operand) parts.push_back(*std::move(directive.operand));
}

bool Cleaner::GetPreProcessorDirectiveActiveState(
    std::string_view line, int previousState,
    const std::vector<std::string>& definedSymbols) const {
    return IsActive(ReadDirective(line), previousState, definedSymbols);
}

}  // namespace plugincs
