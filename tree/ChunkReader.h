// What the scanner asks of the accumulator `chunk` beside its plain content.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Answers questions about a growing text without looking at any byte twice. An unclosed
/// parenthesis can make the rest of a file one chunk, and every newline and every '#' in it asks.
///
/// The text may only grow between two calls; whoever empties it calls `Forget`.
class ChunkReader {
  public:
    /// The text must outlive the reader.
    explicit ChunkReader(const std::string& text) : text_(text) {}

    /// Forgets the text read so far.
    void Forget();

    /// Whether `trim` of the text is empty.
    bool IsBlank() { return LeftTrimmed().empty(); }

    /// The text from its first character outside the trim set on: what its `TrimAndReduce` begins
    /// with, up to the first white space.
    std::string_view LeftTrimmed();

    /// Whether `LastWord` of the text, everything before its last blank, ends in a backslash.
    bool LastWordEndsInBackslash();

  private:
    const std::string& text_;
    std::size_t blankPrefix_ = 0;    // length of the leading white space seen so far
    std::size_t blankSearched_ = 0;  // how much of the text was searched for its last blank
    std::size_t lastBlank_ = std::string::npos;
};
