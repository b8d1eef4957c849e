// The text that the scanner has collected since it last made a node.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "text/SourceMap.h"

/// Collects pieces of the scanned text where they stand, and answers what the scan asks of them
/// without looking at any byte twice: an unclosed parenthesis can make the rest of a file one
/// chunk, and its newlines and every '#' in it ask.
///
/// Pieces come from left to right; where bytes are left out in between, those kept behind them are
/// moved up, over text that was scanned already. Nodes hold views into the text.
class Chunk {
  public:
    /// The text must outlive the chunk, and the views that it gave. `moves`, unless it is null, is
    /// told where pieces go.
    explicit Chunk(std::span<char> text, SourceMap* moves) : text_(text), moves_(moves) {}

    /// Appends the text from `start` up to `end`.
    void Keep(std::size_t start, std::size_t end);

    /// What was kept last has a backslash in it.
    void NoteBackslash() { hasBackslash_ = true; }
    bool HasBackslash() const { return hasBackslash_; }

    /// Empties the chunk; what is kept next begins at `position` or behind.
    void Restart(std::size_t position);

    std::string_view View() const { return {text_.data() + start_, end_ - start_}; }
    bool IsEmpty() const { return start_ == end_; }

    /// Whether `trim` of the chunk is empty.
    bool IsBlank() { return LeftTrimmed().empty(); }

    /// The chunk from its first character outside the trim set on: what its `TrimAndReduce` begins
    /// with, up to the first white space.
    std::string_view LeftTrimmed();

    /// Whether `LastWord` of the chunk, everything before its last blank, ends in a backslash.
    bool LastWordEndsInBackslash();

    /// `TrimAndReduce` of the chunk, made where it stands; the chunk can only be restarted then.
    std::string_view TakeContents();

  private:
    static constexpr std::size_t kNone = std::string_view::npos;

    std::span<char> text_;
    SourceMap* moves_;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
    std::size_t leftTrimmed_ = 0;  // where the leading white space ends, as far as it was looked at
    std::size_t blankSearched_ = 0;  // up to where the last blank was looked for
    std::size_t lastBlank_ = kNone;
    bool hasBackslash_ = false;
    bool taken_ = false;  // its text is a node's by now
};
