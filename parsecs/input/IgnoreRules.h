// Patterns that tell which files are left out, as git reads them in a .gitignore.
//
//   *.g.cs        a name, at any depth
//   Generated/    folders alone
//   /src/a.cs     from the folder of the patterns on; so is all that has a '/' before its end
//   a/**/b        with any number of folders between
//   !kept.cs      not left out after all: the last pattern that fits decides
//   # \# \!       a comment; names that begin with these characters
//
// The text of a name is matched by SQLite's GLOB, which knows '*', '?' and sets as git does.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace plugincs {

class IgnoreRules {
  public:
    enum class Verdict : std::uint8_t { Unsaid, LeftOut, Kept };

    IgnoreRules() = default;
    /// Of a whole file, a pattern a line.
    explicit IgnoreRules(std::string_view text);

    void Add(std::string_view line);
    bool IsEmpty() const { return rules_.empty(); }

    /// The path is that from the folder of the patterns, without a '/' at either end.
    Verdict On(std::string_view path, bool isFolder) const;

  private:
    /// What stands between two slashes.
    struct Piece {
        std::string text;
        bool isGlob = false;
        bool isAnyDepth = false;  // "**"
    };
    struct Rule {
        std::vector<Piece> pieces;
        bool keeps = false;
        bool foldersOnly = false;
        bool nameOnly = false;  // at any depth
    };

    static Piece PieceOf(std::string_view text);
    static bool Fits(const Piece& piece, std::string_view name);
    static bool Fits(const Rule& rule, const std::vector<std::string>& names);

    std::vector<Rule> rules_;
};

/// The names of a path: "a/b" has two.
std::vector<std::string> NamesOf(std::string_view path);

}  // namespace plugincs
