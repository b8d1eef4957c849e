#include "rows/Texts.h"

#include <algorithm>
#include <limits>

#include "rows/Utf8.h"
#include "text/ByteSets.h"

namespace plugincs {

namespace {

constexpr ByteSets kNotCode{~ByteSet('!', '~')};
constexpr ByteSets kHigh{~ByteSet('\0', '\x7F')};

// Steps through a span, and puts a text together until that is longer than a given size; then it
// can go on.
class TextMaker {
  public:
    TextMaker(std::string_view source, const Reading& reading, Span span)
        : source_(source), at_(span.begin), end_(span.end) {
        gap_ = FirstBehind(reading.gaps);
        gapsEnd_ = reading.gaps.data() + reading.gaps.size();
        verbatim_ = FirstBehind(reading.verbatim);
        verbatimEnd_ = reading.verbatim.data() + reading.verbatim.size();
    }

    void Make(std::size_t size) {
        while (at_ < end_ && text.size() <= size) Step(size);
    }

    std::string text;
    std::size_t position = 0;  // of the byte that was appended last

  private:
    const Span* FirstBehind(const std::vector<Span>& spans) const {
        const auto found =
            std::upper_bound(spans.begin(), spans.end(), at_,
                             [](std::size_t at, const Span& span) { return at < span.end; });
        return spans.data() + (found - spans.begin());
    }

    void Step(std::size_t size) {
        while (gap_ != gapsEnd_ && gap_->end <= at_) ++gap_;
        while (verbatim_ != verbatimEnd_ && verbatim_->end <= at_) ++verbatim_;
        if (gap_ != gapsEnd_ && gap_->begin <= at_) {
            blank_ = true;
            at_ = gap_->end;
        } else if (verbatim_ != verbatimEnd_ && verbatim_->begin <= at_) {
            Append(std::min(verbatim_->end, Enough(size)), size);
        } else if (IsSpace()) {
            blank_ = true;
            at_ += std::max<std::size_t>(1, SequenceLength(source_.substr(at_)));
        } else {
            Append(EndOfCode(Enough(size)), size);
        }
    }

    // Where the text is long enough at the latest: no more is looked at.
    std::size_t Enough(std::size_t size) const {
        return at_ + std::min(end_ - at_, size + 1 - text.size());
    }

    // Of a run of printable bytes with nothing special in it, up to `end`.
    std::size_t EndOfCode(std::size_t end) const {
        if (gap_ != gapsEnd_) end = std::min(end, gap_->begin);
        if (verbatim_ != verbatimEnd_) end = std::min(end, verbatim_->begin);
        return Find(kNotCode, source_.substr(0, end), at_);
    }

    // Beyond ASCII all that is not verbatim is white space.
    bool IsSpace() const {
        const auto byte = static_cast<unsigned char>(source_[at_]);
        return byte <= ' ' || byte >= 0x7F;
    }

    // Appends what stands before `end`, but no more than makes the text longer than `size`.
    void Append(std::size_t end, std::size_t size) {
        if (blank_ && !text.empty()) text += ' ';
        blank_ = false;
        while (at_ < end && text.size() <= size) {
            const std::size_t high = Find(kHigh, source_.substr(0, end), at_);
            const std::size_t ascii = std::min(high - at_, size + 1 - text.size());
            text += source_.substr(at_, ascii);
            at_ += ascii;
            position = at_ - (ascii > 0 ? 1 : 0);
            if (at_ == high && at_ < end && text.size() <= size) AppendSequence();
        }
    }

    void AppendSequence() {
        const std::string_view rest = source_.substr(at_, end_ - at_);
        const std::size_t length = SequenceLength(rest);
        text += length == 0 ? kReplacement : rest.substr(0, length);
        position = at_;
        at_ += std::max<std::size_t>(1, length);
    }

    std::string_view source_;
    std::size_t at_;
    std::size_t end_;
    const Span* gap_;
    const Span* gapsEnd_;
    const Span* verbatim_;
    const Span* verbatimEnd_;
    bool blank_ = false;  // white space was passed
};

}  // namespace

bool Texts::IsPlain(Span span) {
    const std::vector<Span>& verbatim = reading_.verbatim;
    while (nextVerbatim_ < verbatim.size() && verbatim[nextVerbatim_].end <= span.begin) {
        ++nextVerbatim_;
    }
    return nextVerbatim_ == verbatim.size() || verbatim[nextVerbatim_].begin >= span.end;
}

std::string Texts::Of(Span span) const {
    TextMaker maker(source_, reading_, span);
    maker.Make(std::numeric_limits<std::size_t>::max() - 1);
    return std::move(maker.text);
}

std::vector<std::size_t> Texts::PositionsOf(Span span, std::vector<std::size_t> offsets) const {
    TextMaker maker(source_, reading_, span);
    for (std::size_t& offset : offsets) {
        maker.Make(offset);
        offset = maker.position;
    }
    return offsets;
}

}  // namespace plugincs
