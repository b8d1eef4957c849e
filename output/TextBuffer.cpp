#include "output/TextBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

TextBuffer::~TextBuffer() { std::free(begin_); }

char* TextBuffer::Release() {
    const std::size_t size = View().size();
    Resize(size + 1);
    begin_[size] = '\0';
    end_ = limit_ = nullptr;
    return std::exchange(begin_, nullptr);
}

void TextBuffer::Grow(std::size_t bytes) {
    constexpr std::size_t kFirstCapacity = 16384;
    const std::size_t doubled = 2 * static_cast<std::size_t>(limit_ - begin_);
    Resize(std::max({kFirstCapacity, doubled, View().size() + bytes}));
}

void TextBuffer::Resize(std::size_t capacity) {
    const std::size_t size = View().size();
    void* const block = std::realloc(begin_, capacity);
    if (block == nullptr) throw std::bad_alloc();
    begin_ = static_cast<char*>(block);
    end_ = begin_ + size;
    limit_ = begin_ + capacity;
}
