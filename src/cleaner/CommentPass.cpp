// The comment pass of the cleaner.
#include <cassert>

#include "cleaner/Cleaner.h"
#include "text/ByteSets.h"
#include "text/RunCopy.h"

namespace plugincs {

namespace {

enum class Inside : unsigned char { Code, LineComment, BlockComment, SingleQuotes, DoubleQuotes };

enum class Verdict : unsigned char { Copy, Drop };

constexpr bool IsFiltered(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 32 && c != '\n' && c != '\r') || byte >= 127;
}

// The state machine's state between two bytes.
struct CommentState {
    Inside inside = Inside::Code;
    bool unexamined = false;     // the next character is exempt from all other rules
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

// A run of five 'T' with a byte after it, and no 'd' two places before it.
bool StartsTRun(const Place& place) {
    const std::string_view rest = place.text.substr(place.at);
    return rest.size() > 5 && rest.starts_with("TTTTT") &&
           !(place.at >= 2 && place.text[place.at - 2] == 'd');
}

// Applies the rules to one byte. Their order matters: the first that returns decides, and one that
// only sets a flag falls through to those below.
Verdict Examine(CommentState& state, const Place& at) {
    const char c = at.Here();

    // The byte after a "/*", a "*/" or a literal's escape character. After a "/*" it cannot close
    // the comment, and is dropped with it unless it is a line feed.
    if (state.unexamined) {
        state.unexamined = false;
        return state.inside == Inside::BlockComment && c != '\n' ? Verdict::Drop : Verdict::Copy;
    }
    // A skip to the next semicolon starts in comments too.
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
    // An attribute section at the start of a statement, in comments and literals too.
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
        // The line feed that ends a comment starts no statement.
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

// Bytes at which a rule does more than copy (in a comment: drop), for each context. In the second
// set they count only before another of them: a 'T' alone begins no run. The other bytes may change
// `statementStart` too; `TakeRun` does that once for a whole run.
constexpr ByteSet kFiltered = ~(ByteSet(' ', '~') | ByteSet("\n"));
constexpr ByteSet kInComment = kFiltered | ByteSet("\n;[");
constexpr ByteSet kT("T");
constexpr ByteSets kCodeStops(kFiltered | ByteSet("'\"/["), kT);
constexpr ByteSets kLineCommentStops(kInComment, kT);
constexpr ByteSets kBlockCommentStops(kInComment | ByteSet("/*"), kT);
constexpr ByteSets kLiteralStops(kFiltered | ByteSet("'\"\\;["), ByteSet(""));
constexpr ByteSets kAttributeStops(kFiltered | ByteSet("]"), kT);

const ByteSets<2>& StopsIn(const CommentState& state) {
    if (state.attribute) return kAttributeStops;
    switch (state.inside) {
        case Inside::Code: return kCodeStops;
        case Inside::LineComment: return kLineCommentStops;
        case Inside::BlockComment: return kBlockCommentStops;
        default: return kLiteralStops;
    }
}

// The first such byte at or after `from`, or the text's size. A block's last 'T' counts: the byte
// after it is in the next block.
std::size_t FindStop(const ByteSets<2>& stops, std::string_view text, std::size_t from) {
    for (; from < text.size(); from += kBlockSize) {
        const auto [bytes, ts] = stops.In(text, from);
        const ByteMask found = bytes | (ts & (ts >> 1 | ByteMask{1} << (kBlockSize - 1)));
        if (found != 0) return from + First(found);
    }
    return text.size();
}

class CommentPass {
  public:
    explicit CommentPass(std::string_view text) : text_(text), kept_(text) {}

    std::string Run() {
        while (true) {
            TakeRun(NextToExamine());
            if (position_ == text_.size()) return kept_.Take();
            TakeByte();
        }
    }

  private:
    std::size_t NextToExamine() const {
        if (state_.unexamined || state_.semicolonSkip) return position_;
        return FindStop(StopsIn(state_), text_, position_);
    }

    // The fast path: takes the bytes up to `end`, none of which needs to be examined.
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

    // Whether a statement starts after a run of code. Its last byte but blanks and '}' decides.
    bool StartsStatement(std::string_view run) const {
        std::size_t end = run.size();
        while (end > 0 && (run[end - 1] == ' ' || run[end - 1] == '}')) --end;
        if (end == 0) return state_.statementStart;
        return run[end - 1] == '\n' || run[end - 1] == ';';
    }

    // Whether `TakeRun` gives the same as examining each byte; for an assertion only.
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
            kept_.Put(' ');
        } else if (Examine(state_, {text_, position_}) == Verdict::Copy) {
            kept_.Put(c);
        }
        ++position_;
    }

    const std::string_view text_;
    std::size_t position_ = 0;  // of the next byte
    RunCopy kept_;
    CommentState state_;
};

}  // namespace

std::string Cleaner::UncommentAndUnquoteText(std::string_view text) const {
    return CommentPass(text).Run();
}

}  // namespace plugincs
