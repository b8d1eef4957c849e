#include "rows/Header.h"

#include <algorithm>
#include <array>

#include "rows/Tokens.h"

namespace plugincs {

namespace {

// Where one of these stands, outside of brackets, a value follows.
constexpr std::array<std::string_view, 4> kBeginValues{"return", "throw", "yield", "new"};
// After one of these the block is a value. A statement's "switch (x)" ends in a parenthesis.
constexpr std::array<std::string_view, 7> kBeforeValues{"with", "switch", "is",  "and",
                                                        "or",   "not",    "when"};

template <std::size_t kCount>
bool IsOneOf(std::string_view word, const std::array<std::string_view, kCount>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// What matters of a header's tokens.
struct Scan {
    std::int64_t open = 0;
    bool assigns = false;    // "=", "+=" or "=>" outside of brackets
    bool delegates = false;  // ends in "delegate" and perhaps its parameters
    bool arrow = false;      // ends in "=>"
    bool hasValue = false;   // one of kBeginValues, outside of brackets
    bool hasLabel = false;   // a colon, outside of brackets
    std::string_view first;  // its first word, where it begins with one
    std::string_view last;   // its last word, where it ends in one
    char end = '\0';         // the last token's last character
};

class Scanner {
  public:
    Scanner(std::string_view text, std::int64_t open) : text_(text), tokens_(text) {
        scan_.open = open;
    }

    Scan Run() {
        while (const char c = tokens_.Peek()) Take(c);
        return scan_;
    }

  private:
    void Take(char c) {
        if (c == '@' || BeginsWord(c)) return TakeWord();
        scan_.arrow = false;
        if (c == '(' && scan_.last == "delegate") delegateAt_ = scan_.open;
        if (c == '(' || c == '[') ++scan_.open;
        if (c == ')' || c == ']') --scan_.open;
        scan_.delegates = c == ')' && scan_.open == delegateAt_;
        if (c == '"' || c == '\'') {
            tokens_.SkipLiteral();
        } else if (c == ':') {
            const bool qualifies = tokens_.IsNext("::");
            scan_.hasLabel = scan_.hasLabel || (scan_.open <= 0 && !qualifies);
            tokens_.Skip(qualifies ? 2 : 1);
        } else if (c == '=') {
            TakeEquals();
        } else {
            tokens_.Skip();
        }
        scan_.end = c;
        scan_.last = {};
    }

    void TakeWord() {
        const std::string_view word = tokens_.TakeWord();
        if (word.empty()) return;  // the '@' of a literal
        if (scan_.end == '\0') scan_.first = word;
        if (scan_.open <= 0 && IsOneOf(word, kBeginValues)) scan_.hasValue = true;
        scan_.last = word;
        scan_.end = word.back();
        scan_.arrow = false;
        scan_.delegates = word == "delegate";
    }

    // "==", "<=", ">=" and "!=" compare.
    void TakeEquals() {
        const std::size_t at = tokens_.position();
        const char before = at > 0 ? text_[at - 1] : '\0';
        const bool compares = tokens_.IsNext("==") || before == '<' || before == '>' ||
                              before == '!' || before == '=';
        scan_.arrow = tokens_.IsNext("=>");
        scan_.assigns = scan_.assigns || (scan_.open <= 0 && !compares);
        tokens_.Skip(scan_.arrow || tokens_.IsNext("==") ? 2 : 1);
    }

    static constexpr std::int64_t kNowhere = INT64_MIN;

    std::string_view text_;
    Tokens tokens_;
    Scan scan_;
    std::int64_t delegateAt_ = kNowhere;  // open where the last anonymous method's parameters began
};

bool OpensValue(const Scan& scan) {
    const bool pattern = scan.first == "case" && !scan.hasLabel;
    return pattern || IsOneOf(scan.last, kBeforeValues) ||
           std::string_view(",?&|+").find(scan.end) != std::string_view::npos;
}

}  // namespace

Header ReadHeader(std::string_view text, std::int64_t open, const Declaration& declaration,
                  Around around) {
    // What stands up to the name is no expression, whatever "operator +=" looks like.
    const Scan scan = Scanner(BehindName(text, declaration), open).Run();
    const bool declares = declaration.what != Declares::Nothing;
    const bool isValue = around == Around::Value || scan.assigns || (!declares && scan.hasValue);
    const bool opensValue = isValue || scan.open > 0 || (!declares && OpensValue(scan));
    const bool lambda = scan.arrow || scan.delegates;
    const BlockKind value = opensValue ? BlockKind::Value : BlockKind::Body;
    return {lambda ? BlockKind::Lambda : value, scan.open, !isValue && scan.open > 0};
}

}  // namespace plugincs
