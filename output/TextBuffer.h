// A text that grows in one block of the C allocator, so that it can be handed to a C host as it
// stands, without a copy.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/StringHelpers.h"

class TextBuffer {
  public:
    /// Makes room for so many bytes at once; a good guess spares growing. Throws std::bad_alloc.
    explicit TextBuffer(std::size_t capacity);
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    ~TextBuffer();

    /// Makes room for so many more bytes. The calls below write into room made before and do not
    /// look again: whoever writes a piece states its greatest size first. Throws std::bad_alloc.
    void MakeRoom(std::size_t bytes) {
        if (bytes > static_cast<std::size_t>(limit_ - end_)) Grow(bytes);
    }

    void Put(std::string_view text) { end_ += text.copy(end_, text.size()); }

    /// Plain decimal, at most `kNumberSize` bytes.
    void PutNumber(std::int32_t value) { end_ = std::to_chars(end_, limit_, value).ptr; }

    /// Escaped as `EscapeString` does, at most twice the text's size.
    void PutEscaped(std::string_view text) { end_ = WriteEscaped(text, end_); }

    std::string_view View() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

    /// Hands out the text, NUL-terminated, in a block that the caller releases with `free`; the
    /// buffer is empty afterwards.
    char* Release();

    static constexpr std::size_t kNumberSize = 11;

  private:
    void Grow(std::size_t bytes);
    void Resize(std::size_t capacity);

    char* begin_ = nullptr;
    char* end_ = nullptr;
    char* limit_ = nullptr;
};
