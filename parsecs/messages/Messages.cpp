#include "parsecs/messages/Messages.h"

#include <cstdio>
#include <new>
#include <stdexcept>

#include "rows/Utf8.h"

namespace plugincs {

namespace {

constexpr const char* kClearLine = "\r\x1B[K";

bool passing = false;

void Write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

// A line on its way. It needs no memory of its own, as there may be none, and all but the longest
// go out at once, so that those of several programs do not mix.
class Line {
  public:
    Line() = default;
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() { Flush(); }

    void Put(std::string_view text) {
        if (text.size() > sizeof bytes_ - size_) Flush();
        size_ += text.copy(bytes_ + size_, sizeof bytes_);
    }

  private:
    void Flush() {
        Write({bytes_, size_});
        size_ = 0;
    }

    char bytes_[1024];
    std::size_t size_ = 0;
};

void PutShown(std::string_view text, Line& line) {
    while (!text.empty()) {
        const std::string_view sequence = text.substr(0, SequenceLength(text));
        const bool shown = !sequence.empty() && !IsControl(sequence);
        line.Put(shown ? sequence : "?");
        text.remove_prefix(sequence.empty() ? 1 : sequence.size());
    }
}

}  // namespace

void Say(std::string_view message) {
    ClearPassing();
    Line line;
    line.Put("parsecs: ");
    PutShown(message, line);
    line.Put("\n");
}

void ShowPassing(std::string_view message) {
    Write(kClearLine);
    Write(message);
    passing = true;
}

void ClearPassing() {
    if (passing) Write(kClearLine);
    passing = false;
}

std::string_view ReasonOf(const std::exception& failure) {
    if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr) return "out of memory";
    if (dynamic_cast<const std::length_error*>(&failure) != nullptr) return "too large";
    return failure.what();
}

}  // namespace plugincs
