#include "text/StringHelpers.h"

#include <cstring>
#include <utility>

#include "text/CharClass.h"

namespace {

constexpr std::string_view kTrimSet = " \n\r\t\f\v";
constexpr std::string_view kPathSeparators = "\\/";

constexpr bool IsReducible(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

constexpr bool IsWordCharacter(char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || c == '#';
}

constexpr bool IsEscaped(char c) { return c == '"' || c == '\'' || c == '\\'; }

// Most texts need none. Like `IsReduced`, written without a way out of the loop.
bool NeedsEscape(std::string_view text) {
    unsigned found = 0;
    for (const char c : text) {
        found |= static_cast<unsigned>(c == '"') | static_cast<unsigned>(c == '\'') |
                 static_cast<unsigned>(c == '\\');
    }
    return found != 0;
}

// Whether reducing would change nothing: no reducible character but single blanks. Written
// without a way out of the loop so that compilers test many bytes at once.
bool IsReduced(std::string_view text) {
    unsigned found = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        const char c = text[i];
        found |= static_cast<unsigned>(c == '\n') | static_cast<unsigned>(c == '\r') |
                 static_cast<unsigned>(c == '\t') |
                 (static_cast<unsigned>(c == ' ') & static_cast<unsigned>(text[i - 1] == ' '));
    }
    return found == 0 && (text.empty() || text[0] == ' ' || !IsReducible(text[0]));
}

void AppendReduced(std::string_view text, std::string& out) {
    if (IsReduced(text)) {
        out.append(text);
        return;
    }
    bool inRun = false;
    for (const char c : text) {
        const bool reducible = IsReducible(c);
        if (!reducible) {
            out.push_back(c);
        } else if (!inRun) {
            out.push_back(' ');
        }
        inRun = reducible;
    }
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

std::string ConvertWhiteSpacesToSingleSpace(std::string_view text) {
    std::string out;
    AppendReduced(text, out);
    return out;
}

std::string TrimAndReduce(std::string_view text) {
    std::string out;
    AppendTrimmedAndReduced(text, out);
    return out;
}

void AppendTrimmedAndReduced(std::string_view text, std::string& out) {
    // Trimming first is the same and leaves less to reduce: the trim set holds the reduce set.
    AppendReduced(trim(text), out);
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty()) return;
    if (from.size() == 1 && to.size() == 1) {
        // Stores to every byte, changed or not: without a branch compilers take many at once.
        const char before = from[0];
        const char after = to[0];
        for (char& c : text) c = c == before ? after : c;
        return;
    }
    std::size_t found = text.find(from);
    if (found == std::string::npos) return;
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
    if (!NeedsEscape(text)) return out + text.copy(out, text.size());
    for (const char c : text) {
        if (IsEscaped(c)) *out++ = '\\';
        *out++ = c;
    }
    return out;
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
