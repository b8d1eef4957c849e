// The text that the scanner has collected since it last made a node.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace plugincs {

/// Collects pieces of the scanned text in place. Its queries remember how far they have looked, so
/// that each looks at a byte only once: an unclosed parenthesis can make the rest of a file one
/// chunk, with a query at each newline and '#'.
///
/// Pieces come from left to right; where bytes between two are dropped, the later one is moved
/// left, over text that was scanned already. Nodes hold views into the text.
class Chunk {
  public:
    /// The text must outlive the chunk and the views it returns.
    explicit Chunk(std::span<char> text) : text_(text) {}

    /// Appends the text from `start` up to `end`.
    void Keep(std::size_t start, std::size_t end);

    /// Tells the chunk that what was kept last has a backslash in it.
    void NoteBackslash() { hasBackslash_ = true; }
    bool HasBackslash() const { return hasBackslash_; }

    /// Empties the chunk; what is kept next begins at `position` or later.
    void Restart(std::size_t position);

    /// Valid until the chunk changes.
    std::string_view View() const { return {text_.data() + start_, end_ - start_}; }
    /// How many bytes may be read from the view's beginning, past its end too.
    std::size_t Readable() const { return text_.size() - start_; }
    bool IsEmpty() const { return start_ == end_; }

    /// Whether `trim` of the chunk is empty.
    bool IsBlank() { return LeftTrimmed().empty(); }

    /// `ltrim` of the chunk. Up to the first white space `TakeContents` begins with the same.
    std::string_view LeftTrimmed();

    /// Whether `LastWord` of the chunk, everything before its last blank, ends in a backslash.
    bool LastWordEndsInBackslash();

    /// `TrimAndReduce` of the chunk, done in place: the view is valid as long as the text. After
    /// this the chunk can only be restarted.
    std::string_view TakeContents();

  private:
    static constexpr std::size_t kNone = std::string_view::npos;

    std::span<char> text_;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
    std::size_t leftTrimmed_ = 0;    // up to here all is white space
    std::size_t blankSearched_ = 0;  // up to here the last blank is known
    std::size_t lastBlank_ = kNone;
    bool hasBackslash_ = false;
    bool taken_ = false;  // its text belongs to a node, and must not change
};

}  // namespace plugincs
