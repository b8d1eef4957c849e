#include "tree/ChunkReader.h"

#include "text/CharClass.h"

void ChunkReader::Forget() {
    blankPrefix_ = 0;
    blankSearched_ = 0;
    lastBlank_ = std::string::npos;
}

std::string_view ChunkReader::LeftTrimmed() {
    while (blankPrefix_ < text_.size() && IsAsciiSpace(text_[blankPrefix_])) ++blankPrefix_;
    return std::string_view(text_).substr(blankPrefix_);
}

bool ChunkReader::LastWordEndsInBackslash() {
    const std::size_t blank = std::string_view(text_).substr(blankSearched_).rfind(' ');
    if (blank != std::string_view::npos) lastBlank_ = blankSearched_ + blank;
    blankSearched_ = text_.size();
    const std::string_view lastWord = std::string_view(text_).substr(0, lastBlank_);
    return !lastWord.empty() && lastWord.back() == '\\';
}
