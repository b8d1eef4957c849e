#include "analysis/PartWalker.h"

#include <array>

#include "text/CharClass.h"

namespace {

enum class Kind : unsigned char { Word, Space, Quote, Single, Dot, Comparison, Arithmetic };

constexpr std::array<Kind, 256> kKinds = [] {
    std::array<Kind, 256> kinds{};
    const auto set = [&kinds](std::string_view characters, Kind kind) {
        for (const char c : characters) kinds[static_cast<unsigned char>(c)] = kind;
    };
    set(" \t\n\v\f\r", Kind::Space);
    set("'\"", Kind::Quote);
    set(":();[]{},", Kind::Single);
    set(".", Kind::Dot);
    set("><=", Kind::Comparison);
    set("+*%/-", Kind::Arithmetic);
    return kinds;
}();

constexpr Kind KindOf(char c) { return kKinds[static_cast<unsigned char>(c)]; }

}  // namespace

std::string_view PartWalker::Next() {
    SkipSpace();
    if (position_ == text_.size()) return {};
    const std::size_t start = position_;
    const char first = text_[position_++];
    switch (KindOf(first)) {
        case Kind::Quote: SkipLiteral(first); break;
        case Kind::Comparison:
        case Kind::Arithmetic: SkipOperator(); break;
        case Kind::Word: SkipWord(); break;
        default: break;
    }
    return text_.substr(start, position_ - start);
}

void PartWalker::SkipSpace() {
    while (position_ < text_.size() && KindOf(text_[position_]) == Kind::Space) ++position_;
}

void PartWalker::SkipLiteral(char quote) {
    while (position_ < text_.size()) {
        const char c = text_[position_++];
        if (c == quote) return;
        if (c == '\\' && position_ < text_.size()) ++position_;
    }
}

void PartWalker::SkipOperator() {
    for (; position_ < text_.size(); ++position_) {
        const Kind kind = KindOf(text_[position_]);
        const bool joins =
            kind == Kind::Comparison ||
            (kind == Kind::Arithmetic && KindOf(text_[position_ - 1]) == Kind::Arithmetic);
        if (!joins) return;
    }
}

void PartWalker::SkipWord() {
    for (; position_ < text_.size(); ++position_) {
        const Kind kind = KindOf(text_[position_]);
        const bool joins =
            kind == Kind::Word || (kind == Kind::Dot && IsAsciiDigit(text_[position_ - 1]));
        if (!joins) return;
    }
}

void PartsList(std::string_view text, std::vector<std::string>& parts) {
    PartWalker walker(text);
    for (auto part = walker.Next(); !part.empty(); part = walker.Next()) parts.emplace_back(part);
}
