#include "output/TextBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#include "process/HugePages.h"

namespace plugincs {

TextBuffer::TextBuffer(std::size_t capacity) {
    Resize(capacity);
    AskForHugePages(begin_, capacity);
}

TextBuffer::~TextBuffer() { std::free(begin_); }

CText TextBuffer::Release() {
    constexpr std::string_view kEnd{"\0", 1};
    Writer(*this).Put(kEnd);
    // Only a block with much to spare is shrunk. Freed, it tells the allocator up to which size to
    // keep memory: a little smaller, and the next block of its old size came from the system again.
    const std::size_t size = View().size();
    if (static_cast<std::size_t>(limit_ - begin_) > size + size / 4) Resize(size);
    end_ = limit_ = nullptr;
    return CText(std::exchange(begin_, nullptr));
}

void TextBuffer::Grow(std::size_t bytes) {
    const std::size_t half = static_cast<std::size_t>(limit_ - begin_) / 2;
    Resize(View().size() + std::max(bytes, half));
}

void TextBuffer::Resize(std::size_t capacity) {
    const std::size_t size = View().size();
    void* const block = std::realloc(begin_, capacity);
    if (block == nullptr) throw std::bad_alloc();
    begin_ = static_cast<char*>(block);
    end_ = begin_ + std::min(size, capacity);
    limit_ = begin_ + capacity;
}

}  // namespace plugincs
