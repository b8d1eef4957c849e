// A text that grows in one block from malloc, so that it can be handed to a C host without a copy.
#pragma once

#include <cassert>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/CText.h"
#include "text/StringHelpers.h"

namespace plugincs {

class TextBuffer {
  public:
    /// Reserves `capacity` bytes; a good guess spares growing. Throws std::bad_alloc.
    explicit TextBuffer(std::size_t capacity);
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    ~TextBuffer();

    class Writer;

    /// Complete once no Writer lives; valid until the buffer grows or is released.
    std::string_view View() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

    /// Hands out the text, NUL-terminated; the buffer is empty afterwards. Throws std::bad_alloc.
    CText Release();

  private:
    void Grow(std::size_t bytes);
    void Resize(std::size_t capacity);

    char* begin_ = nullptr;
    char* end_ = nullptr;
    char* limit_ = nullptr;
};

/// Appends to a buffer, which nobody else may use meanwhile. All of its functions grow the buffer
/// as needed and throw nothing but std::bad_alloc. It keeps a copy of the buffer's pointers, and
/// writes the end back when destroyed: chars may alias anything, so a compiler would reload the
/// buffer's own pointers after every byte written.
class TextBuffer::Writer {
  public:
    explicit Writer(TextBuffer& buffer)
        : buffer_(buffer), end_(buffer.end_), limit_(buffer.limit_) {}
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { buffer_.end_ = end_; }

    void Put(std::string_view text) {
        MakeRoom(text.size());
        end_ += text.copy(end_, text.size());
    }

    /// The same for a text of which 64 bytes may be read, and which has no more: a copy of fixed
    /// size costs less than one of the text's, whose branches on the size cannot be predicted.
    void PutShort(std::string_view text) {
        constexpr std::size_t kMost = 64;
        assert(text.size() <= kMost);
        MakeRoom(kMost);
        std::memcpy(end_, text.data(), kMost);
        end_ += text.size();
    }

    /// In decimal.
    void PutNumber(std::int32_t value) {
        constexpr std::size_t kMostDigits = 11;  // with the sign
        MakeRoom(kMostDigits);
        end_ = std::to_chars(end_, limit_, value).ptr;
    }

    /// Escaped as by `EscapeString`.
    void PutEscaped(std::string_view text) {
        if (text.empty()) return;
        MakeRoom(2 * text.size());
        end_ = WriteEscaped(text, end_);
    }

  private:
    void MakeRoom(std::size_t bytes) {
        if (bytes <= static_cast<std::size_t>(limit_ - end_)) return;
        buffer_.end_ = end_;
        buffer_.Grow(bytes);
        end_ = buffer_.end_;
        limit_ = buffer_.limit_;
    }

    TextBuffer& buffer_;
    char* end_;
    char* limit_;
};

}  // namespace plugincs
