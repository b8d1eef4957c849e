#include "parsecs/report/Messages.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr const char* kClearLine = "\r\x1B[K";

bool passing = false;

void Write(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stderr); }

}  // namespace

void Say(const std::string& message) {
    ClearPassing();
    std::string line = "parsecs: " + message;
    const auto isControl = [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    };
    std::replace_if(line.begin(), line.end(), isControl, '?');
    Write(line + '\n');
}

void ShowPassing(const std::string& message) {
    Write(kClearLine + message);
    passing = true;
}

void ClearPassing() {
    if (passing) Write(kClearLine);
    passing = false;
}
