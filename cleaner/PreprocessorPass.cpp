// The preprocessor pass of the cleaner. Conditions are not expressions: an operand is looked up as
// one string, so without defined symbols only "#ifndef" sections and "#else" branches are kept.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <unordered_set>
#include <utility>

#include "cleaner/Cleaner.h"
#include "text/ByteScan.h"
#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace {

constexpr bool IsPrintable(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 32 && byte <= 127;
}

bool HasEntry(const std::vector<std::string>& list, std::string_view entry) {
    return std::find(list.begin(), list.end(), entry) != list.end();
}

class PreprocessorPass {
  public:
    PreprocessorPass(std::string text, const std::vector<std::string>& definedSymbols,
                     std::vector<std::string>& defines)
        : text_(std::move(text)),
          definedSymbols_(definedSymbols),
          defines_(defines),
          known_(defines.begin(), defines.end()) {}

    // The result takes the text's place: it never gets ahead of the byte that is read.
    std::string Run() {
        for (std::size_t i = 0; i < text_.size();) {
            if (text_[i] == '\n') {
                EndLine();
                ++i;
            } else if (!IsPrintable(text_[i])) {
                ++i;
            } else {
                i += TakeRun(i);
            }
        }
        text_.resize(size_);
        return std::move(text_);
    }

  private:
    // An open conditional section, or the file itself at the bottom of the stack. A level is only
    // ever active above an active one.
    struct Level {
        bool active = true;
        bool branchTaken = false;  // an "#elif" has seen an active branch before it
    };

    bool InSection() const { return levels_.size() > 1; }
    bool Emitting() const { return levels_.back().active; }

    // Takes the leading blanks of a line, or what follows them up to the line's end; returns how
    // many bytes that was.
    std::size_t TakeRun(std::size_t start) {
        const bool blanks = lineStart_ && text_[start] == ' ';
        if (lineStart_ && !blanks) StartLineWith(text_[start]);
        const auto notBlank = [](Bytes16 bytes) { return ~bytes.Is(' '); };
        const auto notPrintable = [](Bytes16 bytes) { return bytes.IsBelow(' '); };
        const std::size_t end =
            blanks ? FindWhere(text_, start, notBlank) : FindWhere(text_, start, notPrintable);
        const std::string_view run = std::string_view(text_).substr(start, end - start);
        if (holding_) {
            Hold(run);
        } else if (Emitting()) {
            std::memmove(&text_[size_], run.data(), run.size());
            size_ += run.size();
        }
        return run.size();
    }

    // The first character behind a line's blanks tells a directive from a line to be released,
    // which loses the blanks that were held.
    void StartLineWith(char first) {
        holding_ = first == '#';
        if (!holding_) pending_.clear();
        lineStart_ = false;
    }

    void Hold(std::string_view run) {
        constexpr std::size_t kTraceBeyond = 50;
        if (pending_.size() + run.size() <= kTraceBeyond) {
            pending_.append(run);
            return;
        }
        for (const char c : run) {
            pending_.push_back(c);
            if (pending_.size() > kTraceBeyond) Trace();
        }
    }

    void Trace() const {
        std::fputs("[[", stdout);
        std::fwrite(pending_.data(), 1, pending_.size(), stdout);
        std::fputs("]]\n", stdout);
    }

    void EndLine() {
        text_[size_++] = '\n';
        if (pending_.empty()) {
            Expect(true);
            return;
        }
        // A backslash at the end goes on with the directive on the next line.
        const std::string_view line = rtrim(pending_);
        if (!line.empty() && line.back() == '\\') return;
        ObeyLine();
        pending_.clear();
    }

    // The next line starts anew; while it is held, its leading blanks can still be thrown away.
    void Expect(bool held) {
        lineStart_ = true;
        holding_ = held;
    }

    // What a held line does, by its keyword, and how the next line starts.
    void ObeyLine() {
        std::vector<std::string> parts;
        Cleaner().CleanerPartsList(pending_, parts);
        if (parts.empty()) {
            Expect(false);
            return;
        }
        const std::string& keyword = parts[0];
        if (keyword == "#if" || keyword == "#ifdef" || keyword == "#ifndef") {
            OpenSection();
            AddOperand(parts);
        } else if (keyword == "#elif") {
            ContinueSection();
            AddOperand(parts);
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
    void OpenSection() {
        holding_ = true;
        Level level;
        if (Emitting()) {
            level.active = IsActive(true);
            lineStart_ = true;
        } else {
            level.active = false;
        }
        levels_.push_back(level);
    }

    // "#elif": active when no branch before it was, its symbol is defined, and the level below is
    // active.
    void ContinueSection() {
        if (!InSection()) return;
        Level& level = levels_.back();
        level.branchTaken = level.branchTaken || level.active;
        level.active = BelowIsActive() && IsActive(level.branchTaken);
    }

    // "#else": flips its section, unless a chain of "#elif" was taken already.
    void TurnSection() {
        if (!InSection()) return;
        Level& level = levels_.back();
        level.active = BelowIsActive() && !level.branchTaken && !level.active;
    }

    bool BelowIsActive() const { return levels_[levels_.size() - 2].active; }

    bool IsActive(bool previousState) const {
        return Cleaner().GetPreProcessorDirectiveActiveState(pending_, previousState ? 1 : 0,
                                                             definedSymbols_);
    }

    void AddOperand(const std::vector<std::string>& parts) {
        if (parts.size() == 2 && known_.insert(parts[1]).second) defines_.push_back(parts[1]);
    }

    std::string text_;
    std::size_t size_ = 0;  // of the result
    const std::vector<std::string>& definedSymbols_;
    std::vector<std::string>& defines_;
    std::unordered_set<std::string> known_;  // the entries of `defines_`
    std::string pending_;                    // the current line as far as it is held back
    bool lineStart_ = true;                  // only blanks were seen on the current line
    bool holding_ = true;  // characters go to the pending line instead of the output
    std::vector<Level> levels_{Level{}};
};

}  // namespace

std::string Cleaner::PreProcessorSimulation(std::string text,
                                            const std::vector<std::string>& definedSymbols,
                                            std::vector<std::string>& defines) const {
    return PreprocessorPass(std::move(text), definedSymbols, defines).Run();
}

void Cleaner::CleanerPartsList(std::string_view line, std::vector<std::string>& parts) const {
    std::string part;
    const auto endPart = [&parts, &part] {
        parts.emplace_back(trim(part));
        part.clear();
    };

    // The keyword. Only '#' and letters count, so "# if" is "#if"; a '(' ends it without a blank,
    // even when there is nothing to end.
    bool numberSign = false;
    std::size_t i = 0;
    for (; i < line.size() && parts.empty(); ++i) {
        const char c = line[i];
        if (c == '#') {
            numberSign = true;
            part.push_back(c);
        } else if (c == ' ') {
            if (numberSign && part.size() > 1) endPart();
        } else {
            if (IsAsciiLetter(c)) {
                if (!numberSign) return;
                part.push_back(c);
            }
            const char next = i + 1 < line.size() ? line[i + 1] : c;
            if (next == '(') endPart();
        }
    }

    // The operand: the rest of the line, without the blanks before its first letter or '('.
    bool inOperand = false;
    for (; i < line.size(); ++i) {
        const char c = line[i];
        inOperand = inOperand || c == '(' || IsAsciiLetter(c);
        if (inOperand || c != ' ') part.push_back(c);
    }
    if (!part.empty()) endPart();
}

bool Cleaner::GetPreProcessorDirectiveActiveState(
    std::string_view line, int previousState,
    const std::vector<std::string>& definedSymbols) const {
    std::vector<std::string> parts;
    CleanerPartsList(line, parts);
    if (parts.empty() || previousState == -1) return false;
    const std::string& keyword = parts[0];
    const bool defined = parts.size() > 1 && HasEntry(definedSymbols, parts[1]);
    if (keyword == "#include" || keyword == "#define") return true;
    if (keyword == "#ifdef" || keyword == "#if") return defined;
    if (keyword == "#ifndef") return !defined;
    if (keyword == "#elif") return previousState == 0 && defined;
    if (keyword == "#else") return previousState == 0;
    return false;
}
