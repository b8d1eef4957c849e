#include "analysis/PartWalker.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "text/CharClass.h"

namespace plugincs {

namespace {

enum class Kind : unsigned char { Word, Space, Quote, Single, Dot, Comparison, Arithmetic };

constexpr std::array<Kind, 256> kKinds = [] {
    std::array<Kind, 256> kinds{};
    const auto set = [&kinds](const ByteSet& bytes, Kind kind) {
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            if (bytes.Has(static_cast<char>(i))) kinds[i] = kind;
        }
    };
    set(PartBytes::kSpace, Kind::Space);
    set(PartBytes::kQuote, Kind::Quote);
    set(PartBytes::kSingle, Kind::Single);
    set(PartBytes::kDot, Kind::Dot);
    set(PartBytes::kComparison, Kind::Comparison);
    set(PartBytes::kArithmetic, Kind::Arithmetic);
    return kinds;
}();

constexpr Kind KindOf(char c) { return kKinds[static_cast<unsigned char>(c)]; }

// Each of these skips one thing from `at` on and returns the position after it.

std::size_t SkipSpace(std::string_view text, std::size_t at) {
    while (at < text.size() && KindOf(text[at]) == Kind::Space) ++at;
    return at;
}

std::size_t SkipLiteral(std::string_view text, std::size_t at, char quote) {
    while (at < text.size()) {
        const char c = text[at++];
        if (c == quote) break;
        if (c == '\\' && at < text.size()) ++at;
    }
    return at;
}

std::size_t SkipOperator(std::string_view text, std::size_t at) {
    for (; at < text.size(); ++at) {
        const Kind kind = KindOf(text[at]);
        const bool joins = kind == Kind::Comparison ||
                           (kind == Kind::Arithmetic && KindOf(text[at - 1]) == Kind::Arithmetic);
        if (!joins) break;
    }
    return at;
}

std::size_t SkipWord(std::string_view text, std::size_t at) {
    while (true) {
        while (at < text.size() && KindOf(text[at]) == Kind::Word) ++at;
        if (at == text.size() || text[at] != '.' || !IsAsciiDigit(text[at - 1])) return at;
        ++at;
    }
}

}  // namespace

std::string_view PartWalker::Next() {
    const std::size_t start = SkipSpace(text_, position_);
    position_ = start;
    if (start == text_.size()) return {};
    const char first = text_[start];
    position_ = start + 1;
    switch (KindOf(first)) {
        case Kind::Quote: position_ = SkipLiteral(text_, position_, first); break;
        case Kind::Comparison:
        case Kind::Arithmetic: position_ = SkipOperator(text_, position_); break;
        case Kind::Word: position_ = SkipWord(text_, position_); break;
        default: break;
    }
    return text_.substr(start, position_ - start);
}

void PartsList(std::string_view text, std::vector<std::string>& parts) {
    std::vector<std::string> found;  // the text may be one of `parts`, which growing them moves
    PartWalker walker(text);
    for (auto part = walker.Next(); !part.empty(); part = walker.Next()) found.emplace_back(part);
    std::move(found.begin(), found.end(), std::back_inserter(parts));
}

}  // namespace plugincs
