#include "rows/Literals.h"

#include <algorithm>
#include <vector>

#include "text/ByteSets.h"

namespace plugincs {

namespace {

constexpr std::string_view kLineEnds = "\n\r";
constexpr ByteSets kDoubleStops{ByteSet("\"\\\n\r")};
constexpr ByteSets kSingleStops{ByteSet("'\\\n\r")};

std::size_t RunLength(std::string_view text, std::size_t at, char c) {
    const std::size_t end = std::min(text.find_first_not_of(c, at), text.size());
    return end - at;
}

// Of a literal without holes that ends at the quote, or at the end of the line.
LiteralEnd FindPlainEnd(std::string_view text, std::size_t quote) {
    const ByteSets<1>& stops = text[quote] == '"' ? kDoubleStops : kSingleStops;
    for (std::size_t at = quote + 1; at < text.size(); at += 2) {
        at = Find(stops, text, at);
        if (at == text.size()) break;
        if (text[at] == text[quote]) return {at + 1};
        if (text[at] != '\\') return {at, false};
        // A line end cannot be escaped.
        if (at + 1 < text.size() && kLineEnds.find(text[at + 1]) != kLineEnds.npos) --at;
    }
    return {text.size(), false};
}

// The literal that is read, or one that stands in a hole of it.
struct Frame {
    enum class In : unsigned char { Text, Hole, Format };

    std::size_t quotes;   // that end a raw one; 0 of others
    std::size_t dollars;  // as many braces open a hole
    bool verbatim;
    In in = In::Text;
    std::size_t braces = 0;    // open in the hole
    std::size_t brackets = 0;  // of other kinds
};

class LiteralReader {
  public:
    LiteralReader(std::string_view text, std::size_t quote) : text_(text), at_(quote) { Open(); }

    LiteralEnd Read() {
        while (!frames_.empty() && at_ < text_.size()) {
            switch (frames_.back().in) {
                case Frame::In::Text: TakeText(frames_.back()); break;
                case Frame::In::Hole: TakeCode(frames_.back()); break;
                case Frame::In::Format: TakeFormat(frames_.back()); break;
            }
            if (broken_) return {at_, false};
        }
        return {std::min(at_, text_.size()), frames_.empty()};
    }

  private:
    void Open() {
        const std::string_view prefix =
            text_.substr(FindPrefix(text_, at_), at_ - FindPrefix(text_, at_));
        const bool verbatim = prefix.find('@') != std::string_view::npos;
        const auto dollars =
            static_cast<std::size_t>(std::count(prefix.begin(), prefix.end(), '$'));
        const std::size_t quotes = RunLength(text_, at_, '"');
        const bool raw = !verbatim && quotes >= 3;
        frames_.push_back({raw ? quotes : 0, dollars, verbatim});
        at_ += raw ? quotes : 1;
    }

    void Close(std::size_t quotes) {
        at_ += quotes;
        frames_.pop_back();
    }

    void TakeText(Frame& frame) {
        const char c = text_[at_];
        if (c == '"') {
            TakeQuote(frame);
        } else if (c == '{' && frame.dollars > 0) {
            TakeBrace(frame);
        } else if (frame.quotes == 0 && !frame.verbatim && c == '\\') {
            at_ += EscapeLength();
        } else if (frame.quotes == 0 && !frame.verbatim && kLineEnds.find(c) != kLineEnds.npos) {
            broken_ = true;
        } else {
            ++at_;
        }
    }

    std::size_t EscapeLength() const {
        const std::string_view next = text_.substr(at_ + 1, 1);
        return next.find_first_of(kLineEnds) == next.npos ? 2 : 1;
    }

    // A verbatim literal doubles quotes; fewer quotes than a raw one has are text.
    void TakeQuote(const Frame& frame) {
        const std::size_t run = RunLength(text_, at_, '"');
        if (frame.quotes > 0) {
            run >= frame.quotes ? Close(run) : void(at_ += run);
        } else if (frame.verbatim) {
            at_ += run - run % 2;
            if (run % 2 == 1) Close(1);
        } else {
            Close(1);
        }
    }

    // Doubled braces are text; a raw literal has as many as it likes before those of the hole.
    void TakeBrace(Frame& frame) {
        const std::size_t run = RunLength(text_, at_, '{');
        const bool opens = frame.quotes > 0 ? run >= frame.dollars : run % 2 == 1;
        at_ += run;
        if (opens) frame.in = Frame::In::Hole;
    }

    void TakeCode(Frame& frame) {
        switch (text_[at_]) {
            case '"': return Open();
            case '\'': at_ = FindPlainEnd(text_, at_).end; return;
            case '/': return TakeSlash();
            case '{': ++frame.braces; break;
            case '}':
                if (frame.braces == 0) return CloseHole(frame);
                --frame.braces;
                break;
            case '(':
            case '[': ++frame.brackets; break;
            case ')':
            case ']': frame.brackets -= frame.brackets > 0 ? 1 : 0; break;
            case ':':
                if (text_.substr(at_).starts_with("::")) {
                    ++at_;
                } else if (frame.braces == 0 && frame.brackets == 0) {
                    frame.in = Frame::In::Format;
                }
                break;
            default: break;
        }
        ++at_;
    }

    void TakeSlash() {
        const std::string_view rest = text_.substr(at_);
        std::size_t end = at_ + 1;
        if (rest.starts_with("//")) end = text_.find_first_of(kLineEnds, at_);
        if (rest.starts_with("/*")) end = text_.find("*/", at_ + 2);
        at_ = std::min(end, text_.size());
    }

    // Quotes and braces mean nothing of their own here: "{date:d 'of' MMMM}".
    void TakeFormat(Frame& frame) {
        const char c = text_[at_];
        if (c == '}') {
            CloseHole(frame);
        } else if (c == '"' || kLineEnds.find(c) != kLineEnds.npos) {
            frame.in = Frame::In::Text;
        } else {
            ++at_;
        }
    }

    void CloseHole(Frame& frame) {
        const std::size_t most = frame.quotes > 0 ? frame.dollars : 1;
        at_ += std::min(RunLength(text_, at_, '}'), most);
        frame.in = Frame::In::Text;
        frame.brackets = 0;
    }

    std::string_view text_;
    std::size_t at_;
    std::vector<Frame> frames_;
    bool broken_ = false;
};

}  // namespace

std::size_t FindPrefix(std::string_view text, std::size_t quote) {
    std::size_t begin = quote;
    while (begin > 0 && (text[begin - 1] == '$' || text[begin - 1] == '@')) --begin;
    return begin;
}

LiteralEnd LiteralFinder::EndOf(std::size_t quote) {
    const bool plain = text_[quote] == '\'' || (FindPrefix(text_, quote) == quote &&
                                                !text_.substr(quote).starts_with("\"\"\""));
    if (plain || wasted_ > 4 * text_.size()) return FindPlainEnd(text_, quote);
    const LiteralEnd found = LiteralReader(text_, quote).Read();
    if (found.closed) return found;
    // What looked like a hole may be none.
    wasted_ += found.end - quote;
    return FindPlainEnd(text_, quote);
}

}  // namespace plugincs
