#include "text/StringHelpers.h"

#include <cstring>
#include <utility>

#include "text/ByteScan.h"
#include "text/CharClass.h"

namespace {

constexpr std::string_view kTrimSet = " \n\r\t\f\v";
constexpr std::string_view kPathSeparators = "\\/";

constexpr bool IsReducible(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

constexpr bool IsWordCharacter(char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || c == '#';
}

Bytes16 AreEscaped(Bytes16 bytes) { return bytes.Is('"') | bytes.Is('\'') | bytes.Is('\\'); }

// Whether reducing would change nothing: no reducible character but single blanks.
bool IsReduced(std::string_view text) {
    const auto changes = [text](std::size_t at) {
        const Bytes16 here = Bytes16::Load(text.data() + at);
        const Bytes16 next = Bytes16::Load(text.data() + at + 1);
        return ((here.Is(' ') & next.Is(' ')) | next.Is('\n') | next.Is('\r') | next.Is('\t'))
            .Mask();
    };
    constexpr std::size_t kWindow = Bytes16::kSize + 1;
    if (text.empty()) return true;
    if (text[0] != ' ' && IsReducible(text[0])) return false;
    if (text.size() < kWindow) {
        for (std::size_t i = 1; i < text.size(); ++i) {
            if (IsReducible(text[i]) && (text[i] != ' ' || text[i - 1] == ' ')) return false;
        }
        return true;
    }
    for (std::size_t i = 0; i + kWindow < text.size(); i += Bytes16::kSize) {
        if (changes(i) != 0) return false;
    }
    return changes(text.size() - kWindow) == 0;
}

// Reduces the text's own bytes; returns the size that is left.
std::size_t ReduceInPlace(char* text, std::size_t size) {
    if (IsReduced({text, size})) return size;
    std::size_t end = 0;
    bool inRun = false;
    for (std::size_t i = 0; i < size; ++i) {
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
    text.resize(ReduceInPlace(text.data(), text.size()));
    return text;
}

std::string TrimAndReduce(std::string_view text) {
    std::string copy(text);
    return std::string(TrimAndReduceInPlace(copy.data(), copy.size()));
}

std::string_view TrimAndReduceInPlace(char* text, std::size_t size) {
    // Trimming first is the same and leaves less to reduce: the trim set holds the reduce set.
    const std::string_view trimmed = trim({text, size});
    char* const start = text + (trimmed.data() - text);
    return {start, ReduceInPlace(start, trimmed.size())};
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty()) return;
    std::size_t found = text.find(from);
    if (found == std::string::npos) return;
    if (from.size() == 1 && to.size() == 1) {
        // Stores to every byte, changed or not: without a branch compilers take many at once.
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

std::string_view LastWordNoDots(std::string_view& text) {
    const std::size_t colon = text.rfind(':');
    if (colon != std::string_view::npos && colon > 0) text = text.substr(0, colon - 1);
    const std::size_t blank = text.rfind(' ');
    if (blank != std::string_view::npos && blank + 1 < text.size()) text = text.substr(blank + 1);
    return text;
}

std::string EscapeString(std::string& text) {
    std::string escaped(2 * text.size(), '\0');
    escaped.resize(static_cast<std::size_t>(WriteEscaped(text, escaped.data()) - escaped.data()));
    text = std::move(escaped);
    return text;
}

char* WriteEscaped(std::string_view text, char* out) {
    std::size_t copied = 0;
    while (true) {
        const std::size_t found = FindWhere(text, copied, AreEscaped);
        out += text.copy(out, found - copied, copied);
        if (found == text.size()) return out;
        *out++ = '\\';
        *out++ = text[found];
        copied = found + 1;
    }
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
    // Without a separator the search gives the largest position, and one more is the start.
    return path.substr(path.find_last_of(kPathSeparators) + 1);
}

std::string_view FileName(std::string_view path) {
    const std::string_view name = FileNameWithExtension(path);
    return name.substr(0, name.rfind('.'));
}

bool BothAreSpaces(char a, char b) { return a == b && a == ' '; }
