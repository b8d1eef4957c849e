// Steps through the text of a statement or a block's header, token by token.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "rows/Literals.h"

namespace plugincs {

/// Letters, '_', what stands for a letter by its number, and all bytes beyond ASCII.
bool BeginsWord(char c);
/// These and digits.
bool ContinuesWord(char c);

class Tokens {
  public:
    explicit Tokens(std::string_view text) : text_(text), literals_(text) {}

    /// The next token's first character, or 0 at the end; it is not taken.
    char Peek() {
        while (position_ < text_.size() && text_[position_] == ' ') ++position_;
        return position_ < text_.size() ? text_[position_] : '\0';
    }

    /// Whether the text goes on with the piece.
    bool IsNext(std::string_view piece) const { return Rest().starts_with(piece); }

    void Skip(std::size_t bytes = 1) { position_ += bytes; }

    /// The word that is next, without an '@' before it, which is taken alone where no word follows;
    /// empty when there is none.
    std::string_view TakeWord();

    /// A literal from its first quote on.
    void SkipLiteral();

    /// From an opening parenthesis or bracket to behind the one that closes it, or the end.
    void SkipBrackets();

    /// From a '<' to behind its '>', if what stands between them can only be types.
    bool SkipTypeArguments();

    std::size_t position() const { return position_; }
    std::string_view Rest() const { return text_.substr(position_); }
    /// The text from where a taken word begins up to the position.
    std::string_view Since(std::string_view word) const;

  private:
    std::string_view text_;
    LiteralFinder literals_;
    std::size_t position_ = 0;
};

}  // namespace plugincs
