#include "parsecs/input/IgnoreRules.h"

#include <sqlite3.h>

#include <algorithm>

namespace plugincs {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Blanks at the end are no part of a pattern, but for one behind a backslash.
std::string_view WithoutEnd(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    std::size_t end = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const bool blank = line[at] == ' ';
        if (line[at] == '\\' && at + 1 < line.size()) ++at;
        if (!blank) end = at + 1;
    }
    return line.substr(0, end);
}

struct NamedSet {
    std::string_view name;
    std::string_view characters;
};

constexpr NamedSet kNamedSets[] = {
    {"[:alnum:]", "0-9A-Za-z"}, {"[:alpha:]", "A-Za-z"},     {"[:digit:]", "0-9"},
    {"[:lower:]", "a-z"},       {"[:upper:]", "A-Z"},        {"[:space:]", " \t\n\v\f\r"},
    {"[:blank:]", " \t"},       {"[:xdigit:]", "0-9A-Fa-f"},
};

// Makes SQLite's pattern of git's. SQLite knows no backslashes, and no sets by name; it inverts a
// set at a '^' alone, and a ']' that belongs to a set stands first in it.
class GlobMaker {
  public:
    explicit GlobMaker(std::string_view text) : text_(text) {}

    std::string Make() {
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '\\' && at_ < text_.size()) {
                PutLiteral(text_[at_++]);
            } else if (c == '[') {
                PutSet();
            } else {
                glob_ += c;
            }
        }
        return std::move(glob_);
    }

  private:
    void PutLiteral(char c) {
        const bool special = std::string_view("*?[").find(c) != std::string_view::npos;
        glob_ += special ? std::string{'[', c, ']'} : std::string{c};
    }

    void PutSet() {
        const bool inverted = at_ < text_.size() && (text_[at_] == '!' || text_[at_] == '^');
        if (inverted) ++at_;
        std::string set;
        for (bool first = true; at_ < text_.size(); first = false) {
            if (text_[at_] == ']' && !first) break;
            TakeMember(set);
        }
        const bool closed = at_++ < text_.size();
        glob_.append(inverted ? "[^" : "[").append(set).append(closed ? "]" : "");
    }

    void TakeMember(std::string& set) {
        for (const auto& [name, characters] : kNamedSets) {
            if (!text_.substr(at_).starts_with(name)) continue;
            set += characters;
            at_ += name.size();
            return;
        }
        const bool escaped = text_[at_] == '\\' && at_ + 1 < text_.size();
        if (escaped) ++at_;
        const char c = text_[at_++];
        escaped&& c == ']' ? set.insert(0, 1, c) : set.append(1, c);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::string glob_;
};

std::string WithoutBackslashes(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && at + 1 < text.size()) ++at;
        plain += text[at];
    }
    return plain;
}

}  // namespace

std::vector<std::string> NamesOf(std::string_view path) {
    std::vector<std::string> names;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        names.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

IgnoreRules::IgnoreRules(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        Add(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void IgnoreRules::Add(std::string_view line) {
    if (line.starts_with('#')) return;
    line = WithoutEnd(line);
    Rule rule;
    rule.keeps = line.starts_with('!');
    if (rule.keeps) line.remove_prefix(1);
    rule.foldersOnly = line.ends_with('/');
    if (rule.foldersOnly) line.remove_suffix(1);
    rule.nameOnly = line.find('/') == std::string_view::npos;
    if (line.starts_with('/')) line.remove_prefix(1);
    for (const std::string& name : NamesOf(line)) {
        rule.pieces.push_back(rule.nameOnly || name != "**" ? PieceOf(name)
                                                            : Piece{"", false, true});
    }
    if (rule.pieces.empty()) return;
    // All that is in a folder, but not the folder.
    if (rule.pieces.back().isAnyDepth) rule.pieces.push_back(PieceOf("*"));
    rules_.push_back(std::move(rule));
}

IgnoreRules::Piece IgnoreRules::PieceOf(std::string_view text) {
    const bool isGlob = text.find_first_of("*?[") != std::string_view::npos;
    return {isGlob ? GlobMaker(text).Make() : WithoutBackslashes(text), isGlob, false};
}

bool IgnoreRules::Fits(const Piece& piece, std::string_view name) {
    if (!piece.isGlob) return piece.text == name;
    return sqlite3_strglob(piece.text.c_str(), std::string(name).c_str()) == 0;
}

// Where a piece does not fit, the last "**" before it takes one name more.
bool IgnoreRules::Fits(const Rule& rule, const std::vector<std::string>& names) {
    const std::vector<Piece>& pieces = rule.pieces;
    std::size_t piece = 0;
    std::size_t retryPiece = pieces.size();
    std::size_t retryName = 0;
    for (std::size_t name = 0; name < names.size() || piece < pieces.size();) {
        if (piece < pieces.size() && pieces[piece].isAnyDepth) {
            retryPiece = ++piece;
            retryName = name;
        } else if (piece < pieces.size() && name < names.size() &&
                   Fits(pieces[piece], names[name])) {
            ++piece;
            ++name;
        } else if (retryPiece < pieces.size() && retryName < names.size()) {
            piece = retryPiece;
            name = ++retryName;
        } else {
            return false;
        }
    }
    return true;
}

IgnoreRules::Verdict IgnoreRules::On(std::string_view path, bool isFolder) const {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    std::vector<std::string> names;
    for (auto rule = rules_.rbegin(); rule != rules_.rend(); ++rule) {
        if (rule->foldersOnly && !isFolder) continue;
        if (!rule->nameOnly && names.empty()) names = NamesOf(path);
        const bool fits = rule->nameOnly ? Fits(rule->pieces.front(), name) : Fits(*rule, names);
        if (fits) return rule->keeps ? Verdict::Kept : Verdict::LeftOut;
    }
    return Verdict::Unsaid;
}

}  // namespace plugincs
