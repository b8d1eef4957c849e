#include "rows/Tokens.h"

#include "text/CharClass.h"

namespace plugincs {

namespace {

// Most bytes of a text are asked.
constexpr std::array<bool, 256> kContinuesWord = [] {
    std::array<bool, 256> continues{};
    for (std::size_t byte = 0; byte < continues.size(); ++byte) {
        const char c = static_cast<char>(byte);
        continues[byte] =
            byte >= 0x80 || IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || c == '\\';
    }
    return continues;
}();

}  // namespace

bool ContinuesWord(char c) { return kContinuesWord[static_cast<unsigned char>(c)]; }

bool BeginsWord(char c) { return ContinuesWord(c) && !IsAsciiDigit(c); }

std::string_view Tokens::TakeWord() {
    if (Peek() == '@') ++position_;
    const std::size_t start = position_;
    if (start == text_.size() || !BeginsWord(text_[start])) return {};
    while (position_ < text_.size() && ContinuesWord(text_[position_])) ++position_;
    return text_.substr(start, position_ - start);
}

void Tokens::SkipLiteral() { position_ = literals_.EndOf(position_).end; }

void Tokens::SkipBrackets() {
    std::size_t open = 0;
    do {
        const char c = text_[position_];
        if (c == '"' || c == '\'') {
            SkipLiteral();
            continue;
        }
        if (c == '(' || c == '[') ++open;
        if (c == ')' || c == ']') --open;
        ++position_;
    } while (open > 0 && position_ < text_.size());
}

bool Tokens::SkipTypeArguments() {
    std::size_t open = 0;
    while (position_ < text_.size()) {
        const char c = text_[position_];
        if (c == '[') {
            SkipBrackets();  // a rank, or attributes
            continue;
        }
        if (c == '<') ++open;
        if (c == '>' && --open == 0) {
            ++position_;
            return true;
        }
        constexpr std::string_view kOfTypes = "<> ,.:?*()@";
        if (!ContinuesWord(c) && kOfTypes.find(c) == std::string_view::npos) return false;
        ++position_;
    }
    return false;
}

std::string_view Tokens::Since(std::string_view word) const {
    const auto start = static_cast<std::size_t>(word.data() - text_.data());
    return text_.substr(start, position_ - start);
}

}  // namespace plugincs
