#include "parsecs/diff/SourceTokens.h"

#include <algorithm>
#include <array>

#include "rows/Tokens.h"
#include "rows/Utf8.h"
#include "text/CharClass.h"

namespace plugincs {

namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; }

bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 0x80; }

// Two characters that mean something else with a blank between them. Not those with '>' at both
// ends: "> >" closes two lists of type arguments.
bool IsLongSign(std::string_view two) {
    constexpr std::array<std::string_view, 22> kSigns{
        "++", "--", "&&", "||", "==", "!=", "<=", ">=", "=>", "+=", "-=",
        "*=", "/=", "%=", "&=", "|=", "^=", "<<", "??", "::", "->", ".."};
    return std::find(kSigns.begin(), kSigns.end(), two) != kSigns.end();
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

// Regions fold code away, and mean nothing to it.
bool IsRegion(std::string_view directive) {
    directive.remove_prefix(1);
    while (!directive.empty() && IsBlank(directive.front())) directive.remove_prefix(1);
    return directive.starts_with("region") || directive.starts_with("endregion");
}

}  // namespace

SourceToken SourceTokens::Next() {
    while (at_ < source_.size()) {
        if (SkipsSpace() || SkipsComment()) continue;
        const char c = source_[at_];
        if (c == '#' && lineStart_) {
            const SourceToken directive = TakeDirective();
            if (IsRegion(directive.text)) continue;
            return directive;
        }
        if (c == '"' || c == '\'') {
            return Take(SourceToken::Kind::Literal, literals_.EndOf(at_).end);
        }
        if (ContinuesWord(c)) return Take(SourceToken::Kind::Word, WordEnd());
        const bool isLong = IsLongSign(source_.substr(at_, 2));
        return Take(SourceToken::Kind::Sign, at_ + (isLong ? 2 : 1));
    }
    return {SourceToken::Kind::End, {}, at_};
}

bool SourceTokens::SkipsSpace() {
    const char c = source_[at_];
    if (IsBlank(c)) {
        if (c == '\n' || c == '\r') lineStart_ = true;
        ++at_;
        return true;
    }
    if (!IsHigh(c)) return false;
    const std::string_view rest = source_.substr(at_);
    const std::string_view sequence = rest.substr(0, SequenceLength(rest));
    if (!IsWideSpace(sequence)) return false;
    lineStart_ = lineStart_ && at_ == 0;  // the mark at the start of the file
    at_ += sequence.size();
    return true;
}

bool SourceTokens::SkipsComment() {
    const std::string_view rest = source_.substr(at_);
    if (rest.starts_with("//")) {
        at_ = LineEnd(at_);
    } else if (rest.starts_with("/*")) {
        at_ = std::min(source_.find("*/", at_ + 2), source_.size() - 2) + 2;
    } else {
        return false;
    }
    lineStart_ = false;
    return true;
}

SourceToken SourceTokens::Take(SourceToken::Kind kind, std::size_t end) {
    const SourceToken token{kind, source_.substr(at_, end - at_), at_};
    lineStart_ = false;
    at_ = end;
    return token;
}

SourceToken SourceTokens::TakeDirective() {
    SourceToken line = Take(SourceToken::Kind::Directive, LineEnd(at_));
    line.text = WithoutBlanks(line.text.substr(0, line.text.find("//")));
    return line;
}

std::size_t SourceTokens::WordEnd() const {
    std::size_t end = at_;
    while (end < source_.size() && ContinuesWord(source_[end])) {
        const std::string_view rest = source_.substr(end);
        const std::size_t length = IsHigh(rest[0]) ? SequenceLength(rest) : 1;
        if (length > 1 && IsWideSpace(rest.substr(0, length))) break;
        end += std::max<std::size_t>(1, length);
    }
    return end;
}

std::size_t SourceTokens::LineEnd(std::size_t from) const {
    return std::min(source_.find_first_of("\n\r", from), source_.size());
}

}  // namespace plugincs
