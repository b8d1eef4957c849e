#include "text/StringHelpers.h"

#include <bit>
#include <utility>

#include "text/ByteSets.h"
#include "text/CharClass.h"

namespace plugincs {

namespace {

constexpr std::string_view kPathSeparators = "\\/";

constexpr ByteSets kEscapedBytes{ByteSet(kEscaped)};

constexpr ByteSets kVisible{~(ByteSet(" ") | ByteSet('\t', '\r'))};
constexpr ByteSets kWhiteSpace{ByteSet(" "), ByteSet("\n\r\t"), ByteSet("\f\v")};

// The first position that reducing changes: a reducible character that is no blank, or a blank
// before another. The text's size if there is none.
std::size_t FirstUnreduced(std::string_view text) {
    // The blocks overlap, so that each pair is in one.
    for (std::size_t at = 0; at < text.size(); at += kBlockSize - 1) {
        const auto [blanks, others, feeds] = kWhiteSpace.In(text, at);
        const ByteMask found = others | (blanks & blanks >> 1);
        if (found != 0) return at + First(found);
    }
    return text.size();
}

// Returns the size of the reduced text. `from` is the first position that reducing changes, or one
// before it.
std::size_t ReduceInPlace(std::span<char> text, std::size_t from) {
    std::size_t end = from;
    bool inRun = end > 0 && end < text.size() && text[end - 1] == ' ';
    for (std::size_t i = end; i < text.size(); ++i) {
        const bool reducible = IsReducible(text[i]);
        if (!reducible) {
            text[end++] = text[i];
        } else if (!inRun) {
            text[end++] = ' ';
        }
        inRun = reducible;
    }
    return end;
}

std::size_t ReduceInPlace(std::span<char> text) {
    return ReduceInPlace(text, FirstUnreduced({text.data(), text.size()}));
}

// `TrimAndReduceInPlace` of a text that fits into a block, which can be read.
std::string_view TrimAndReduceShort(std::span<char> text) {
    const auto [blanks, others, feeds] = kWhiteSpace.In(text.data());
    const ByteMask visible = MaskOfFirst(text.size()) & ~(blanks | others | feeds);
    if (visible == 0) return {text.data(), 0};
    const std::size_t first = First(visible);
    const auto behind = static_cast<std::size_t>(std::bit_width(visible));
    const std::span<char> kept = text.subspan(first, behind - first);
    const ByteMask inner = MaskOfFirst(behind) & ~MaskOfFirst(first);
    const ByteMask unreduced = (others | (blanks & blanks >> 1)) & inner;
    if (unreduced == 0) return {kept.data(), kept.size()};
    return {kept.data(), ReduceInPlace(kept, First(unreduced) - first)};
}

// Without a branch for each byte: the backslash is overwritten where there shall be none.
char* WriteEscapedBytes(std::string_view text, char* out) {
    for (const char c : text) {
        *out = '\\';
        out += kEscapedBytes.Have(c) ? 1 : 0;
        *out++ = c;
    }
    return out;
}

}  // namespace

std::string_view ltrim(std::string_view text) {
    std::size_t first = 0;
    while (first < text.size() && IsAsciiSpace(text[first])) ++first;
    return text.substr(first);
}

std::string_view rtrim(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && IsAsciiSpace(text[end - 1])) --end;
    return text.substr(0, end);
}

std::string_view trim(std::string_view text) { return rtrim(ltrim(text)); }

std::string ConvertWhiteSpacesToSingleSpace(std::string text) {
    text.resize(ReduceInPlace(text));
    return text;
}

std::string TrimAndReduce(std::string_view text) {
    std::string copy(text);
    return std::string(TrimAndReduceInPlace(copy));
}

std::string_view TrimAndReduceInPlace(std::span<char> text, std::size_t readable) {
    // Most long texts are short ones behind much white space.
    if (text.size() > kBlockSize && readable > text.size() && IsAsciiSpace(text[0])) {
        const std::size_t skipped = Find(kVisible, {text.data(), text.size()}, 0);
        text = text.subspan(skipped);
        readable -= skipped;
    }
    if (text.size() <= kBlockSize && readable >= kBlockSize) return TrimAndReduceShort(text);
    // Trimming first is the same and leaves less to reduce: the trim set holds the reduce set.
    const std::string_view trimmed = trim({text.data(), text.size()});
    const auto start = static_cast<std::size_t>(trimmed.data() - text.data());
    const std::span<char> kept = text.subspan(start, trimmed.size());
    return {kept.data(), ReduceInPlace(kept)};
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty()) return;
    std::size_t found = text.find(from);
    if (found == std::string::npos) return;
    if (from.size() == 1 && to.size() == 1) {
        // Stores every byte, changed or not: without a branch the loop vectorises.
        const char before = from[0];
        const char after = to[0];
        for (char& c : text) c = c == before ? after : c;
        return;
    }
    std::string replaced;
    std::size_t copied = 0;
    for (; found != std::string::npos; found = text.find(from, copied)) {
        replaced.append(text, copied, found - copied).append(to);
        copied = found + from.size();
    }
    replaced.append(text, copied, std::string::npos);
    text = std::move(replaced);
}

std::string_view FirstWord(std::string_view text) {
    std::size_t end = 0;
    while (end < text.size() && IsWordCharacter(text[end])) ++end;
    return text.substr(0, end);
}

std::string_view LastWord(std::string_view text) { return text.substr(0, text.rfind(' ')); }

std::string_view WithoutBaseClause(std::string_view text) {
    const std::size_t colon = text.rfind(':');
    if (colon != std::string_view::npos && colon > 0) text = text.substr(0, colon - 1);
    const std::size_t blank = text.rfind(' ');
    if (blank != std::string_view::npos && blank + 1 < text.size()) text = text.substr(blank + 1);
    return text;
}

std::string LastWordNoDots(std::string& text) {
    return text = std::string(WithoutBaseClause(text));
}

std::string EscapeString(std::string& text) {
    std::string escaped(2 * text.size(), '\0');
    escaped.resize(static_cast<std::size_t>(WriteEscaped(text, escaped.data()) - escaped.data()));
    text = std::move(escaped);
    return text;
}

char* WriteEscaped(std::string_view text, char* out) {
    for (; text.size() >= kBlockSize; text.remove_prefix(kBlockSize)) {
        const std::string_view block = text.substr(0, kBlockSize);
        const bool plain = kEscapedBytes.In(block.data())[0] == 0;
        out = plain ? out + block.copy(out, kBlockSize) : WriteEscapedBytes(block, out);
    }
    return WriteEscapedBytes(text, out);
}

bool Contains(std::string_view text, std::string_view target) {
    return text.find(target) != std::string_view::npos;
}

bool ContainsWord(std::string_view text, std::string_view target) { return Contains(text, target); }

std::int64_t IndexOf(std::string_view text, std::string_view target) {
    return static_cast<std::int64_t>(text.find(target));
}

bool OutsideStringMatch(std::string_view text, std::string_view target) {
    if (!Contains(text, target)) return false;
    std::int64_t braces = 0;
    std::int64_t parentheses = 0;
    std::int64_t angles = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"') {
            quoted = !quoted;
            continue;
        }
        if (quoted) continue;
        switch (c) {
            case '{': ++braces; continue;
            case '}': --braces; continue;
            case '(': ++parentheses; continue;
            case ')': --parentheses; continue;
            case '<': ++angles; continue;
            case '>': --angles; continue;
            default: break;
        }
        if (braces != 0 || parentheses != 0 || angles != 0) continue;
        if (text.substr(i, target.size()) == target) return true;
    }
    return false;
}

std::string_view FileNameWithExtension(std::string_view path) {
    // Without a separator find_last_of returns npos, and npos + 1 wraps around to 0.
    return path.substr(path.find_last_of(kPathSeparators) + 1);
}

std::string_view FileName(std::string_view path) {
    const std::string_view name = FileNameWithExtension(path);
    return name.substr(0, name.rfind('.'));
}

bool BothAreSpaces(char a, char b) { return a == b && a == ' '; }

}  // namespace plugincs
