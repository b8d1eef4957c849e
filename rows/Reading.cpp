#include "rows/Reading.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "cleaner/Cleaner.h"
#include "rows/Conditionals.h"
#include "rows/Literals.h"
#include "rows/Utf8.h"
#include "text/ByteSets.h"
#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

constexpr ByteSet kHigh = ~ByteSet('\0', '\x7F');
constexpr ByteSet kOdd = ~ByteSet(' ', '~');  // not printable ASCII
constexpr std::string_view kLineEnds = "\n\r";
constexpr ByteSets kLineEnd{ByteSet(kLineEnds)};
constexpr ByteSets kCode{~ByteSet(" ")};

// Where code is more than code. The last three only in some places: see NextStop.
constexpr ByteSets kStops{ByteSet("\"'/#[{};\\") | kHigh, ByteSet("("), ByteSet(")"), ByteSet("]"),
                          ByteSet(",")};
constexpr ByteSets kInLiteral{ByteSet("\""), ByteSet("'"), ByteSet("\\") | kOdd, ByteSet("{"),
                              ByteSet(" ")};
constexpr ByteSets kNotPlain{kOdd, ByteSet(" ")};

constexpr bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; }

std::string_view WordAt(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && (IsAsciiLetter(text[end]) || IsAsciiDigit(text[end]) ||
                                 text[end] == '_' || kHigh.Has(text[end]))) {
        ++end;
    }
    return text.substr(at, end - at);
}

bool HasWord(std::string_view text, std::string_view word) {
    for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
        const bool begins = at == 0 || WordAt(text, at - 1).empty();
        if (begins && WordAt(text, at) == word) return true;
    }
    return false;
}

// Whether the literal's text is shown as the core sees it: without white space that reducing would
// change, and bytes beyond ASCII.
bool IsPlain(std::string_view literal) {
    for (std::size_t at = 0; at < literal.size(); at += kBlockSize - 1) {
        const auto [odd, blanks] = kNotPlain.In(literal, at);
        if (odd != 0 || (blanks & blanks >> 1) != 0) return false;
    }
    return true;
}

// Whether the core, to which a backslash escapes any character, finds the same end of a literal.
bool EndsAlike(std::string_view literal) {
    for (std::size_t at = 1; at < literal.size(); ++at) {
        if (literal[at] == '\\') {
            ++at;
        } else if (literal[at] == literal[0]) {
            return at + 1 == literal.size();
        }
    }
    return false;
}

class Reader {
  public:
    explicit Reader(std::string_view source) : source_(source), literals_(source) {
        reading_.text.resize(source.size());
        std::transform(source.begin(), source.end(), reading_.text.begin(),
                       [](char c) { return IsBlank(c) ? ' ' : c; });
    }

    Reading Read() {
        while (true) {
            TakeCode(NextStop());
            if (at_ == source_.size()) break;
            TakeStop();
        }
        conditionals_.Resolve(source_.size());
        LeaveOut(conditionals_.dropped());
        reading_.cut = conditionals_.cut();
        return std::move(reading_);
    }

  private:
    struct Block {
        bool isEnum;
        std::int64_t parentheses;  // open around it
    };

    std::size_t NextStop() {
        for (std::size_t at = at_; at < source_.size(); at += kBlockSize) {
            const auto [stops, opening, closing, bracket, commas] = kStops.In(source_, at);
            ByteMask found = stops;
            if (conditionals_.IsInside()) found |= opening | closing;
            if (section_.depth > 0) found |= bracket;
            if (InEnum()) found |= commas;
            const ByteMask passed = Below(found);
            const int opened = CountBits(opening & passed) - CountBits(closing & passed);
            parentheses_ += opened;
            conditionals_.AddParentheses(opened);
            if (found != 0) return at + First(found);
        }
        return source_.size();
    }

    void TakeCode(std::size_t end) {
        if (statementStart_) statementStart_ = Find(kCode, reading_.text, at_) >= end;
        at_ = end;
    }

    void TakeStop() {
        switch (source_[at_]) {
            case '"':
            case '\'': return TakeLiteral();
            case '/': return TakeSlash();
            case '#': return TakeNumberSign();
            case '[': return OpenBracket();
            case ']': return CloseBracket();
            case '{': return OpenBlock();
            case '}': return CloseBlock();
            case ';': return EndStatement();
            case ',': return EndEnumerator();
            case '(': return CountParenthesis(1);
            case ')': return CountParenthesis(-1);
            case '\\': return TakeEscape();
            default: return TakeHighBytes();
        }
    }

    void TakeAsCode() {
        statementStart_ = false;
        ++at_;
    }

    void CountParenthesis(int count) {
        parentheses_ += count;
        conditionals_.AddParentheses(count);
        TakeAsCode();
    }

    // Literals.

    void TakeLiteral() {
        statementStart_ = false;
        if (TakeShortLiteral()) return;
        const std::size_t begin = at_;
        const LiteralEnd found = literals_.EndOf(begin);
        const std::string_view literal = source_.substr(begin, found.end - begin);
        const bool alike = found.closed && EndsAlike(literal);
        if (!alike) Disarm(begin, found.end, found.closed);
        if (!alike || !IsPlain(literal)) reading_.verbatim.push_back({begin, found.end});
        at_ = found.end;
    }

    // The fast path: a literal of a few bytes without anything special.
    bool TakeShortLiteral() {
        if (at_ + 1 + kBlockSize > source_.size()) return false;
        const auto [doubles, singles, special, braces, blanks] =
            kInLiteral.In(source_.data() + at_ + 1);
        const std::size_t length = First(source_[at_] == '"' ? doubles : singles);
        const ByteMask holes = HasHoles() ? braces : 0;
        if (length + 1 >= kBlockSize) return false;
        if (((special | holes | (blanks & blanks >> 1)) & MaskOfFirst(length)) != 0) return false;
        // Two quotes may belong to a raw literal, or be one in a verbatim one.
        if (source_[at_] == '"' && source_[at_ + length + 2] == '"') return false;
        at_ += length + 2;
        return true;
    }

    bool HasHoles() const {
        const std::string_view before = source_.substr(0, at_);
        return before.ends_with('$') || before.ends_with("$@");
    }

    // Leaves letters and the outer quotes of a literal that the core would misread; of one that is
    // not closed no quote.
    void Disarm(std::size_t begin, std::size_t end, bool closed) {
        for (std::size_t at = begin; at < end; ++at) {
            const bool outer = closed && (at == begin || at + 1 == end);
            const char c = reading_.text[at];
            if (!outer && !IsAsciiLetter(c) && !IsAsciiDigit(c)) reading_.text[at] = '_';
        }
    }

    // Comments and directive lines.

    void TakeSlash() {
        const std::string_view rest = source_.substr(at_);
        if (rest.starts_with("//")) {
            TakeComment(LineEnd(at_));
        } else if (rest.starts_with("/*")) {
            const std::size_t end = source_.find("*/", at_ + 2);
            TakeComment(end == source_.npos ? source_.size() : end + 2);
        } else {
            TakeAsCode();
        }
    }

    void TakeComment(std::size_t end) {
        reading_.comments.push_back({at_, end});
        LeaveGap(end);
    }

    void LeaveGap(std::size_t end) {
        reading_.gaps.push_back({at_, end});
        Blank(at_, end);
        at_ = end;
    }

    void Blank(std::size_t begin, std::size_t end) {
        std::fill(reading_.text.begin() + static_cast<std::ptrdiff_t>(begin),
                  reading_.text.begin() + static_cast<std::ptrdiff_t>(end), ' ');
    }

    std::size_t LineEnd(std::size_t from) const { return Find(kLineEnd, source_, from); }

    bool IsLineStart(std::size_t at) const {
        while (at > 0 && kLineEnds.find(source_[at - 1]) == kLineEnds.npos) {
            if (!IsBlank(source_[--at])) return at == 2 && source_.starts_with("\xEF\xBB\xBF");
        }
        return true;
    }

    void TakeNumberSign() {
        if (IsLineStart(at_)) return TakeDirective();
        Replace(at_, at_ + 1, '_');
        TakeAsCode();
    }

    void TakeDirective() {
        const Span line{at_, LineEnd(at_)};
        std::string_view text = source_.substr(line.begin, line.end - line.begin);
        const std::size_t comment = std::min(text.find("//"), text.size());
        std::vector<std::string> parts;
        Cleaner().CleanerPartsList(ReplacedBlanks(text.substr(0, comment)), parts);
        const std::string keyword = parts.empty() ? "" : parts[0];
        const bool opens = keyword == "#if" || keyword == "#ifdef" || keyword == "#ifndef";
        const bool continues = keyword == "#elif" || keyword == "#else";
        if (opens) conditionals_.Open(line);
        if (continues) conditionals_.Continue(line, keyword == "#else");
        const bool cutsEnumerator = continues && InEnum() && !statementStart_ && EndsEnumerator();
        if (keyword == "#endif") conditionals_.Close(line);
        if ((opens || keyword == "#elif") && parts.size() > 1) AddOperand(std::move(parts[1]));
        if ((opens || continues || keyword == "#endif") && comment < text.size()) {
            reading_.comments.push_back({line.begin + comment, line.end});
        }
        LeaveGap(line.end);
        if (!cutsEnumerator) return;
        Replace(line.begin, line.begin + 1, ';');
        statementStart_ = true;
    }

    static std::string ReplacedBlanks(std::string_view text) {
        std::string line(text);
        std::replace_if(line.begin(), line.end(), IsBlank, ' ');
        return line;
    }

    void AddOperand(std::string operand) {
        if (known_.insert(operand).second) reading_.operands.push_back(std::move(operand));
    }

    // Structure.

    bool InEnum() const { return !blocks_.empty() && blocks_.back().isEnum; }

    void StartStatement() {
        ++at_;
        statementStart_ = true;
        statement_ = at_;
    }

    void OpenBlock() {
        blocks_.push_back({section_.depth == 0 && OpensEnum(), parentheses_});
        conditionals_.AddBraces(1);
        StartStatement();
    }

    // The word may stand in a literal too.
    bool OpensEnum() const {
        const std::string_view header =
            std::string_view(reading_.text).substr(statement_, at_ - statement_);
        return HasWord(header, "enum") && header.find_first_of("(=\"") == header.npos;
    }

    void CloseBlock() {
        if (section_.depth > 0 && section_.blocks == blocks_.size()) section_.depth = 0;
        if (!blocks_.empty()) {
            parentheses_ = blocks_.back().parentheses;
            blocks_.pop_back();
        }
        conditionals_.AddBraces(-1);
        StartStatement();
    }

    void EndStatement() {
        section_.depth = 0;
        StartStatement();
    }

    void EndEnumerator() {
        if (!EndsEnumerator()) return TakeAsCode();
        Replace(at_, at_ + 1, statementStart_ ? ' ' : ';');
        StartStatement();
    }

    bool EndsEnumerator() const {
        return section_.depth == 0 && parentheses_ == blocks_.back().parentheses;
    }

    // Attribute sections. A bracket at the start of a statement opens one, unless what follows the
    // bracket that closes it shows that it was an index, a pattern or a collection.

    void OpenBracket() {
        if (section_.depth > 0) {
            ++section_.depth;
        } else if (statementStart_) {
            section_ = {at_, blocks_.size(), 1};
        }
        TakeAsCode();
    }

    void CloseBracket() {
        TakeAsCode();
        if (--section_.depth > 0) return;
        const Span section{section_.begin, at_};
        if (!IsGlobal(source_.substr(section.begin, at_ - section.begin)) && !ComesDeclaration()) {
            return;
        }
        reading_.attributes.push_back(section);
        Blank(section.begin, section.end);
        statementStart_ = true;
    }

    bool ComesDeclaration() const {
        const std::size_t at = SkipGaps(at_);
        if (at == source_.size()) return false;
        const char c = source_[at];
        if (c == '[' || c == '(' || c == '~' || c == '@' || c == '\\') return true;
        const std::string_view word = WordAt(source_, at);
        if (word.empty() || IsAsciiDigit(c)) return false;
        constexpr std::array<std::string_view, 6> kOfPatterns{"when", "or", "and",
                                                              "is",   "as", "switch"};
        return std::find(kOfPatterns.begin(), kOfPatterns.end(), word) == kOfPatterns.end();
    }

    // White space, comments and directive lines.
    std::size_t SkipGaps(std::size_t at) const {
        while (at < source_.size()) {
            const std::string_view rest = source_.substr(at);
            if (IsBlank(rest[0])) {
                ++at;
            } else if (rest.starts_with("//") || (rest[0] == '#' && IsLineStart(at))) {
                at = LineEnd(at);
            } else if (rest.starts_with("/*")) {
                const std::size_t end = source_.find("*/", at + 2);
                at = end == source_.npos ? source_.size() : end + 2;
            } else {
                break;
            }
        }
        return at;
    }

    // What shows in texts, though not to the core: names beyond ASCII, commas of enumerators.

    void Replace(std::size_t begin, std::size_t end, char c) {
        std::fill(reading_.text.begin() + static_cast<std::ptrdiff_t>(begin),
                  reading_.text.begin() + static_cast<std::ptrdiff_t>(end), c);
        reading_.verbatim.push_back({begin, end});
    }

    // A letter by its number.
    void TakeEscape() {
        const std::string_view rest = source_.substr(at_);
        if (rest.starts_with("\\u") || rest.starts_with("\\U")) Replace(at_, at_ + 1, 'u');
        TakeAsCode();
    }

    void TakeHighBytes() {
        const std::size_t begin = at_;
        while (at_ < source_.size() && kHigh.Has(source_[at_])) {
            const std::size_t length =
                std::max<std::size_t>(1, SequenceLength(source_.substr(at_)));
            if (IsWideSpace(source_.substr(at_, length))) {
                if (at_ > begin) break;
                Blank(at_, at_ + length);
                at_ += length;
                return;
            }
            at_ += length;
        }
        Replace(begin, at_, 'a');
        statementStart_ = false;
    }

    // Branches that are left out.

    void LeaveOut(const std::vector<Span>& dropped) {
        if (dropped.empty()) return;
        for (const Span& span : dropped) Blank(span.begin, span.end);
        for (std::vector<Span>* list : {&reading_.verbatim, &reading_.gaps, &reading_.attributes}) {
            RemoveWithin(dropped, *list);
        }
        std::vector<Span> gaps;
        std::merge(reading_.gaps.begin(), reading_.gaps.end(), dropped.begin(), dropped.end(),
                   std::back_inserter(gaps), IsBefore);
        reading_.gaps = std::move(gaps);
    }

    static bool IsBefore(const Span& a, const Span& b) { return a.begin < b.begin; }

    static void RemoveWithin(const std::vector<Span>& dropped, std::vector<Span>& list) {
        auto next = dropped.begin();
        const auto lies = [&](const Span& span) {
            while (next != dropped.end() && next->end <= span.begin) ++next;
            return next != dropped.end() && next->begin <= span.begin;
        };
        list.erase(std::remove_if(list.begin(), list.end(), lies), list.end());
    }

    const std::string_view source_;
    LiteralFinder literals_;
    std::size_t at_ = 0;
    Reading reading_;
    bool statementStart_ = true;  // nothing of the next statement was read
    std::size_t statement_ = 0;   // where that begins
    std::int64_t parentheses_ = 0;
    std::vector<Block> blocks_;  // that are open
    struct {
        std::size_t begin;
        std::size_t blocks;     // open around it
        std::size_t depth = 0;  // brackets open in it; 0: there is none
    } section_{};               // perhaps of attributes
    Conditionals conditionals_;
    std::unordered_set<std::string> known_;  // operands
};

}  // namespace

Reading MakeReading(std::string_view source) { return Reader(source).Read(); }

bool IsGlobal(std::string_view section) {
    const std::string_view inside = ltrim(section.substr(1));
    const std::string_view target = WordAt(inside, 0);
    return (target == "assembly" || target == "module") &&
           ltrim(inside.substr(target.size())).starts_with(':');
}

}  // namespace plugincs
