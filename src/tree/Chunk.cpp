#include "tree/Chunk.h"

#include <cassert>
#include <cstring>

#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace plugincs {

void Chunk::Keep(std::size_t start, std::size_t end) {
    assert(!taken_ && end_ <= start && start <= end && end <= text_.size());
    if (start != end_) std::memmove(&text_[end_], &text_[start], end - start);
    end_ += end - start;
}

void Chunk::Restart(std::size_t position) {
    assert(end_ <= position && position <= text_.size());
    start_ = end_ = leftTrimmed_ = blankSearched_ = position;
    lastBlank_ = kNone;
    hasBackslash_ = taken_ = false;
}

std::string_view Chunk::LeftTrimmed() {
    while (leftTrimmed_ < end_ && IsAsciiSpace(text_[leftTrimmed_])) ++leftTrimmed_;
    return View().substr(leftTrimmed_ - start_);
}

bool Chunk::LastWordEndsInBackslash() {
    if (!hasBackslash_) return false;
    const std::string_view unsearched(text_.data() + blankSearched_, end_ - blankSearched_);
    const std::size_t blank = unsearched.rfind(' ');
    if (blank != kNone) lastBlank_ = blankSearched_ + blank;
    blankSearched_ = end_;
    const std::size_t wordEnd = lastBlank_ == kNone ? end_ : lastBlank_;
    return wordEnd > start_ && text_[wordEnd - 1] == '\\';
}

std::string_view Chunk::TakeContents() {
    assert(!taken_);
    taken_ = true;
    return TrimAndReduceInPlace(text_.subspan(start_, end_ - start_), Readable());
}

}  // namespace plugincs
