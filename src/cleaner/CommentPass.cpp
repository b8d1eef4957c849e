// The comment pass of the cleaner.
#include <cassert>

#include "cleaner/Cleaner.h"
#include "text/BlockScan.h"
#include "text/RunCopy.h"

namespace {

enum class Inside : unsigned char { Code, LineComment, BlockComment, SingleQuotes, DoubleQuotes };

enum class Verdict : unsigned char { Copy, Drop };

constexpr bool IsFiltered(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 32 && c != '\n' && c != '\r') || byte >= 127;
}

// The state in which the rules find a byte, and leave it for the next.
struct CommentState {
    Inside inside = Inside::Code;
    bool unexamined = false;     // the next character is not looked at
    bool semicolonSkip = false;  // everything up to the next semicolon is dropped
    bool attribute = false;      // everything up to the next ']' is dropped
    bool statementStart = true;  // nothing of the next statement has been copied yet

    bool operator==(const CommentState&) const = default;

    bool InLiteral() const {
        return inside == Inside::SingleQuotes || inside == Inside::DoubleQuotes;
    }
    bool InComment() const {
        return inside == Inside::LineComment || inside == Inside::BlockComment;
    }
    bool Dropping() const { return attribute || InComment(); }
};

// A byte of the source with its neighbours.
struct Place {
    std::string_view text;
    std::size_t at;

    char Here() const { return text[at]; }
    char Next() const { return at + 1 < text.size() ? text[at + 1] : text[at]; }
    char Previous() const { return at > 0 ? text[at - 1] : text[at]; }
};

// A run of five 'T' with a byte behind it, and no 'd' two places before it.
bool StartsTRun(const Place& place) {
    const std::string_view rest = place.text.substr(place.at);
    return rest.size() > 5 && rest.starts_with("TTTTT") &&
           !(place.at >= 2 && place.text[place.at - 2] == 'd');
}

// One byte against the rules, in their order. The first that decides wins; a rule that sets a flag
// and does not return leaves the byte to those below.
Verdict Examine(CommentState& state, const Place& at) {
    const char c = at.Here();

    // Behind a backslash in a literal, a "/*" and a "*/". The byte after a "/*" is kept from
    // closing the comment, and goes the way of the comment.
    if (state.unexamined) {
        state.unexamined = false;
        return state.inside == Inside::BlockComment && c != '\n' ? Verdict::Drop : Verdict::Copy;
    }
    // A stretch to be skipped opens in comments too.
    if (c == 'T' && !state.InLiteral() && StartsTRun(at)) {
        state.semicolonSkip = true;
        return Verdict::Drop;
    }
    // Every semicolon starts a statement, in comments and literals too.
    if (c == ';') {
        if (state.semicolonSkip) {
            state.semicolonSkip = false;
            return Verdict::Drop;
        }
        state.statementStart = true;
    }
    // An attribute section at the start of a statement, wherever that start was seen.
    if (state.statementStart && (state.attribute || c == '[')) {
        state.attribute = c != ']';
        return Verdict::Drop;
    }
    if (state.semicolonSkip) return Verdict::Drop;

    if (c == '*' && state.inside == Inside::BlockComment && at.Previous() == '/') {
        state.unexamined = true;
        return Verdict::Drop;
    }
    if (c == '/' && state.inside == Inside::BlockComment && at.Previous() == '*') {
        state.inside = Inside::Code;
        state.unexamined = true;
        return Verdict::Drop;
    }
    if (c == '/' && state.inside == Inside::Code && (at.Next() == '/' || at.Next() == '*')) {
        state.inside = at.Next() == '/' ? Inside::LineComment : Inside::BlockComment;
        return Verdict::Drop;
    }
    if (state.InLiteral()) {
        if (c == '\\') state.unexamined = true;
        if (c == (state.inside == Inside::SingleQuotes ? '\'' : '"')) state.inside = Inside::Code;
        return Verdict::Copy;
    }
    if ((c == '\'' || c == '"') && state.inside == Inside::Code) {
        state.inside = c == '\'' ? Inside::SingleQuotes : Inside::DoubleQuotes;
        return Verdict::Copy;
    }
    if (c == '\n') {
        // The end of a comment's line starts no statement.
        if (state.inside == Inside::LineComment) {
            state.inside = Inside::Code;
            return Verdict::Copy;
        }
        if (state.inside == Inside::BlockComment) return Verdict::Copy;
        state.statementStart = true;
    }
    if (state.InComment()) return Verdict::Drop;
    if (c != ' ' && c != '\n' && c != '}' && c != ';') state.statementStart = false;
    return Verdict::Copy;
}

// Bytes at which the rules do more than copy (drop, in a comment), by what they stand in. The masks
// of a block are made for what is asked of it: most blocks are all code or all comment.
struct Found {
    ByteMask bytes = 0;
};

// Of 'T's only one before another can begin a run; the next block's is not in sight.
ByteMask BeforeAnother(ByteMask ts) { return ts & (ts >> 1 | ByteMask{1} << 63); }

// A run of the other bytes moves statement start, which `TakeRun` makes up for.
struct FoundInCode : Found {
    FoundInCode() = default;
    explicit FoundInCode(const Block64& block)
        : Found{block.AreFiltered("'\"/[") | BeforeAnother(block.Is('T'))} {}
};

struct FoundInLineComment : Found {
    FoundInLineComment() = default;
    explicit FoundInLineComment(const Block64& block)
        : Found{block.AreNotPrintable(";[") | BeforeAnother(block.Is('T'))} {}
};

struct FoundInBlockComment : Found {
    FoundInBlockComment() = default;
    explicit FoundInBlockComment(const Block64& block)
        : Found{block.AreNotPrintable(";[/*") | BeforeAnother(block.Is('T'))} {}
};

struct FoundInLiteral : Found {
    FoundInLiteral() = default;
    explicit FoundInLiteral(const Block64& block) : Found{block.AreFiltered("'\"\\;[")} {}
};

struct FoundInAttribute : Found {
    FoundInAttribute() = default;
    explicit FoundInAttribute(const Block64& block)
        : Found{block.AreFiltered("]") | BeforeAnother(block.Is('T'))} {}
};

class CommentPass {
  public:
    CommentPass(std::string_view text, SourceMap* map) : text_(text), kept_(text, map) {}

    std::string Run() {
        while (true) {
            TakeRun(NextToExamine());
            if (position_ == text_.size()) return kept_.Take();
            TakeByte();
        }
    }

  private:
    std::size_t NextToExamine() {
        if (state_.unexamined || state_.semicolonSkip) return position_;
        if (state_.attribute) return attribute_.Find(position_, &Found::bytes);
        switch (state_.inside) {
            case Inside::Code: return code_.Find(position_, &Found::bytes);
            case Inside::LineComment: return lineComment_.Find(position_, &Found::bytes);
            case Inside::BlockComment: return blockComment_.Find(position_, &Found::bytes);
            default: return literal_.Find(position_, &Found::bytes);
        }
    }

    // Takes the bytes up to `end`, at none of which a rule does anything of its own.
    void TakeRun(std::size_t end) {
        if (end == position_) return;
        [[maybe_unused]] const CommentState before = state_;
        if (state_.inside == Inside::Code && !state_.attribute) {
            state_.statementStart = StartsStatement(text_.substr(position_, end - position_));
        }
        assert(RulesAgree(before, end));
        if (!state_.Dropping()) kept_.Keep(position_, end);
        position_ = end;
    }

    // Whether a statement starts behind a run of code: the last of its bytes that says something
    // decides.
    bool StartsStatement(std::string_view run) const {
        std::size_t end = run.size();
        while (end > 0 && (run[end - 1] == ' ' || run[end - 1] == '}')) --end;
        if (end == 0) return state_.statementStart;
        return run[end - 1] == '\n' || run[end - 1] == ';';
    }

    // What `TakeRun` takes at once comes to the same byte by byte.
    bool RulesAgree(CommentState state, std::size_t end) const {
        const Verdict verdict = state.Dropping() ? Verdict::Drop : Verdict::Copy;
        for (std::size_t at = position_; at < end; ++at) {
            if (IsFiltered(text_[at]) || Examine(state, {text_, at}) != verdict) return false;
        }
        return state == state_;
    }

    void TakeByte() {
        const char c = text_[position_];
        if (IsFiltered(c)) {
            kept_.Put(' ', position_);
        } else if (Examine(state_, {text_, position_}) == Verdict::Copy) {
            kept_.Put(c, position_);
        }
        ++position_;
    }

    const std::string_view text_;
    BlockScan<FoundInCode> code_{text_};
    BlockScan<FoundInLineComment> lineComment_{text_};
    BlockScan<FoundInBlockComment> blockComment_{text_};
    BlockScan<FoundInLiteral> literal_{text_};
    BlockScan<FoundInAttribute> attribute_{text_};
    std::size_t position_ = 0;  // of the byte that is read
    RunCopy kept_;
    CommentState state_;
};

}  // namespace

std::string Cleaner::UncommentAndUnquoteText(std::string_view text, SourceMap* map) const {
    return CommentPass(text, map).Run();
}
