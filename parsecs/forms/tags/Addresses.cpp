#include "parsecs/forms/tags/Addresses.h"

#include <algorithm>
#include <bitset>
#include <unordered_map>

#include "rows/Utf8.h"
#include "text/ByteSets.h"

namespace plugincs {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr ByteSets kUnusual{~(ByteSet(' ', '~') | ByteSet("\t"))};
constexpr ByteSets kEscaped{ByteSet("\\/")};

std::string_view WithoutEnd(std::string_view line) {
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// Not within a UTF-8 sequence.
std::string_view Cut(std::string_view text) {
    if (text.size() <= kLongestPattern) return text;
    std::size_t end = kLongestPattern;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) --end;
    return text.substr(0, end);
}

void AppendEscaped(std::string_view text, bool whole, std::string& out) {
    const bool dollar = whole && text.ends_with('$');
    if (dollar) text.remove_suffix(1);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = Find(kEscaped, text, at);
        out.append(text, at, next - at);
        if (next < text.size()) out.append("\\").append(1, text[next]);
        at = next + 1;
    }
    if (dollar) out += "\\$";
}

// Tells most texts that were not added by some of their bytes.
class Sieve {
  public:
    void Add(std::string_view text) { bits_.set(KeyOf(text)); }
    bool MayHave(std::string_view text) const { return bits_.test(KeyOf(text)); }

  private:
    static std::size_t KeyOf(std::string_view text) {
        const std::size_t size = text.size();
        if (size == 0) return 0;
        const auto byte = [text](std::size_t at) -> std::size_t {
            return static_cast<unsigned char>(text[at]);
        };
        return (size + 37 * byte(size / 2) + 1031 * byte(size - 1 - size / 4)) % kBits;
    }

    static constexpr std::size_t kBits = 8192;
    std::bitset<kBits> bits_;
};

}  // namespace

Addresses::Addresses(std::string_view source, const Lines& lines,
                     const std::vector<std::size_t>& wanted)
    : source_(source), lines_(lines) {
    CountEnds();
    if (!wanted.empty()) FindRepeated(wanted);
}

void Addresses::FindRepeated(const std::vector<std::size_t>& wanted) {
    std::unordered_map<std::string_view, std::size_t> first;  // line that has the text
    Sieve sieve;
    for (const std::size_t line : wanted) {
        const std::string_view text = TextOf(line);
        sieve.Add(text);
        const auto [known, isNew] = first.emplace(text, line);
        if (!isNew && known->second < line) repeated_.push_back(line);
    }
    for (std::size_t line = 1; line < wanted.back(); ++line) {
        const std::string_view text = TextOf(line);
        if (!sieve.MayHave(text)) continue;
        const auto found = first.find(text);
        if (found == first.end() || found->second <= line) continue;
        repeated_.push_back(found->second);
        found->second = line;
    }
    std::sort(repeated_.begin(), repeated_.end());
}

void Addresses::CountEnds() {
    for (std::size_t line = 1; line < lines_.Count(); ++line) {
        const std::string_view text = WithEnd(line);
        if (text.ends_with("\r\n")) {
            ++ends_.pairs;
        } else {
            ++(text.ends_with('\n') ? ends_.lineFeeds : ends_.returns);
        }
    }
}

std::string_view Addresses::WithEnd(std::size_t line) const {
    const std::size_t begin = lines_.BeginOf(line);
    const std::size_t end = line < lines_.Count() ? lines_.BeginOf(line + 1) : source_.size();
    return source_.substr(begin, end - begin);
}

std::string_view Addresses::TextOf(std::size_t line) const {
    std::string_view text = WithoutEnd(WithEnd(line));
    if (line == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    return text;
}

// Editors differ in what a lone carriage return is to them, and in how they read what is no UTF-8.
bool Addresses::HasPattern(std::string_view text) const {
    if (ends_.returns > 0) return false;
    for (std::size_t at = 0; (at = Find(kUnusual, text, at)) < text.size();) {
        const std::size_t length = SequenceLength(text.substr(at));
        if (length == 0 || IsControl(text.substr(at, length))) return false;
        at += length;
    }
    return true;
}

// Where only some lines end in a pair, its carriage return is a part of the line to editors.
bool Addresses::IsWhole(std::size_t line) const {
    const bool mixed = ends_.pairs > 0 && ends_.lineFeeds > 0;
    return TextOf(line).size() <= kLongestPattern && !(mixed && WithEnd(line).ends_with("\r\n"));
}

void Addresses::Append(std::size_t line, std::string& out) const {
    const std::string_view cut = Cut(TextOf(line));
    if (!HasPattern(cut)) {
        out += std::to_string(line);
        return;
    }
    const bool whole = IsWhole(line);
    const bool repeated = std::binary_search(repeated_.begin(), repeated_.end(), line);
    if (!whole || repeated) out.append(std::to_string(line - 1)).append(";");
    out += "/^";
    AppendEscaped(cut, whole, out);
    out += whole ? "$/" : "/";
}

}  // namespace plugincs
