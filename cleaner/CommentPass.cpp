// The comment pass of the cleaner.
#include <algorithm>
#include <cstring>
#include <utility>

#include "cleaner/Cleaner.h"
#include "text/ByteScan.h"

namespace {

enum class Inside : unsigned char { Code, LineComment, BlockComment, SingleQuotes, DoubleQuotes };

enum class Verdict : unsigned char { Copy, Drop };

constexpr bool IsFiltered(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 32 && c != '\n' && c != '\r') || byte >= 127;
}

// Bytes that the filter may turn into blanks, and line feeds.
Bytes16 AreNotPrintable(Bytes16 bytes) { return bytes.IsBelow(' ') | bytes.Is(127); }

class CommentPass {
  public:
    explicit CommentPass(std::string text) : text_(std::move(text)) {}

    // The result takes the text's place. The rules look up to two bytes back, and find what stood
    // there: nothing drops just one byte and goes on copying, so the result is either still level
    // with the byte that is looked at (blanks in place of filtered bytes are all that differs) or
    // two and more bytes behind it.
    std::string Run() {
        char* end = text_.data();
        const std::size_t size = text_.size();
        for (std::size_t i = 0; i < size;) {
            const std::size_t run = NextToExamine(i);
            if (!InComment()) {
                std::memmove(end, text_.data() + i, run - i);
                end += run - i;
            }
            i = run;
            if (i == size) break;
            const char c = text_[i];
            if (IsFiltered(c)) {
                *end++ = ' ';
            } else if (Examine(c, i) == Verdict::Copy) {
                *end++ = c;
            }
            ++i;
        }
        text_.resize(static_cast<std::size_t>(end - text_.data()));
        return std::move(text_);
    }

  private:
    bool InLiteral() const {
        return inside_ == Inside::SingleQuotes || inside_ == Inside::DoubleQuotes;
    }
    bool InComment() const {
        return inside_ == Inside::LineComment || inside_ == Inside::BlockComment;
    }

    // The next byte from `start` on to which some rule does more than copy it (drop it, in a
    // comment). Most bytes are plain, and are taken a run at a time.
    std::size_t NextToExamine(std::size_t start) const {
        if (escape_ || semicolonSkip_ || attribute_) return start;
        switch (inside_) {
            case Inside::Code:
                if (statementStart_) {
                    return FindWhere(text_, start, [](Bytes16 bytes) {
                        return ~(bytes.Is(' ') | bytes.Is('\n') | bytes.Is('}'));
                    });
                }
                return FindWhere(text_, start, [](Bytes16 bytes) {
                    return AreNotPrintable(bytes) | bytes.Is('T') | bytes.Is(';') | bytes.Is('/') |
                           bytes.Is('\'') | bytes.Is('"');
                });
            case Inside::LineComment:
                return FindWhere(text_, start, [](Bytes16 bytes) {
                    return AreNotPrintable(bytes) | bytes.Is('T') | bytes.Is(';') | bytes.Is('[');
                });
            case Inside::BlockComment:
                return FindWhere(text_, start, [](Bytes16 bytes) {
                    return AreNotPrintable(bytes) | bytes.Is('T') | bytes.Is(';') | bytes.Is('[') |
                           bytes.Is('*') | bytes.Is('/');
                });
            default:
                return FindWhere(text_, start, [](Bytes16 bytes) {
                    return AreNotPrintable(bytes) | bytes.Is(';') | bytes.Is('[') | bytes.Is('\\') |
                           bytes.Is('\'') | bytes.Is('"');
                });
        }
    }

    // A run of five 'T' with a byte behind it, and no 'd' two places before it.
    bool StartsTRun(std::size_t i) const {
        return i + 5 < text_.size() && text_.compare(i, 5, "TTTTT") == 0 &&
               !(i >= 2 && text_[i - 2] == 'd');
    }

    // One byte against the rules, in their order. The first that decides wins; a rule that sets a
    // flag and does not return leaves the byte to those below.
    Verdict Examine(char c, std::size_t i) {
        const char next = i + 1 < text_.size() ? text_[i + 1] : c;
        const char previous = i > 0 ? text_[i - 1] : c;

        // An escaped character is never looked at. Behind a "/*" that keeps "/*/" from closing the
        // comment, and the character goes the way of the comment.
        if (escape_) {
            escape_ = false;
            return inside_ == Inside::BlockComment && c != '\n' ? Verdict::Drop : Verdict::Copy;
        }
        // A stretch to be skipped opens in comments too.
        if (c == 'T' && !InLiteral() && StartsTRun(i)) {
            semicolonSkip_ = true;
            return Verdict::Drop;
        }
        // Every semicolon starts a statement, in comments and literals too.
        if (c == ';') {
            if (semicolonSkip_) {
                semicolonSkip_ = false;
                return Verdict::Drop;
            }
            statementStart_ = true;
        }
        // An attribute section at the start of a statement, wherever that start was seen.
        if (statementStart_ && (attribute_ || c == '[')) {
            attribute_ = c != ']';
            return Verdict::Drop;
        }
        if (semicolonSkip_) return Verdict::Drop;

        if (c == '*' && inside_ == Inside::BlockComment && previous == '/') {
            escape_ = true;
            return Verdict::Drop;
        }
        if (c == '/' && inside_ == Inside::BlockComment && previous == '*') {
            // The character behind a comment is copied unexamined.
            inside_ = Inside::Code;
            escape_ = true;
            return Verdict::Drop;
        }
        if (c == '/' && inside_ == Inside::Code && (next == '/' || next == '*')) {
            inside_ = next == '/' ? Inside::LineComment : Inside::BlockComment;
            return Verdict::Drop;
        }
        if (InLiteral()) {
            if (c == '\\') escape_ = true;
            if (c == (inside_ == Inside::SingleQuotes ? '\'' : '"')) inside_ = Inside::Code;
            return Verdict::Copy;
        }
        if ((c == '\'' || c == '"') && inside_ == Inside::Code) {
            inside_ = c == '\'' ? Inside::SingleQuotes : Inside::DoubleQuotes;
            return Verdict::Copy;
        }
        if (c == '\n') {
            // The end of a comment's line starts no statement.
            if (inside_ == Inside::LineComment) {
                inside_ = Inside::Code;
                return Verdict::Copy;
            }
            if (inside_ == Inside::BlockComment) return Verdict::Copy;
            statementStart_ = true;
        }
        if (InComment()) return Verdict::Drop;
        if (c != ' ' && c != '\n' && c != '}' && c != ';') statementStart_ = false;
        return Verdict::Copy;
    }

    std::string text_;
    Inside inside_ = Inside::Code;
    bool escape_ = false;         // the next character is not looked at
    bool semicolonSkip_ = false;  // everything up to the next semicolon is dropped
    bool attribute_ = false;      // everything up to the next ']' is dropped
    bool statementStart_ = true;  // nothing of the next statement has been copied yet
};

}  // namespace

std::string Cleaner::UncommentAndUnquoteText(std::string text) const {
    return CommentPass(std::move(text)).Run();
}
