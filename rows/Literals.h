// C#'s literals: regular, verbatim, interpolated and raw ones, and characters.
//
//   '...'   "..."   @"..."   $"...{hole}..."   $@"..."   """..."""   $$"""...{{hole}}..."""
//
// Holes hold code, with literals of their own at any depth. No function here recurses.
#pragma once

#include <cstddef>
#include <string_view>

namespace plugincs {

struct LiteralEnd {
    std::size_t end;     ///< After its last byte.
    bool closed = true;  ///< False if the end of its line, or of the text, leaves it open.
};

/// Where the prefix, of '$' and '@', begins of the literal whose first quote is at `quote`; `quote`
/// where it has none.
std::size_t FindPrefix(std::string_view text, std::size_t quote);

/// Finds the literals of one text. In broken code what seems to be one may have no end: that is
/// looked for only so often that all of it takes time linear in the text.
class LiteralFinder {
  public:
    explicit LiteralFinder(std::string_view text) : text_(text) {}

    /// The end of the literal whose first quote, single or double, is at `quote`.
    LiteralEnd EndOf(std::size_t quote);

  private:
    std::string_view text_;
    std::size_t wasted_ = 0;  // bytes that were looked at for ends that are not there
};

}  // namespace plugincs
