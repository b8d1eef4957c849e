// A source's tokens one by one: comments, white space and regions are left out, all else is there.
//
// Unlike the rows this keeps directive lines and the branches that no row shows, so what is told
// from the tokens misses nothing of a file.
#pragma once

#include <cstddef>
#include <string_view>

#include "rows/Literals.h"

namespace plugincs {

struct SourceToken {
    enum class Kind : unsigned char {
        End,
        Word,       ///< Numbers too.
        Literal,    ///< From its first quote to its last one.
        Sign,       ///< One character, or two that are one sign.
        Directive,  ///< A line, up to its comment.
    };
    Kind kind = Kind::End;
    std::string_view text{};
    std::size_t position = 0;
};

class SourceTokens {
  public:
    explicit SourceTokens(std::string_view source) : source_(source), literals_(source) {}

    /// Linear in all of the source, however it is broken.
    SourceToken Next();

  private:
    bool SkipsSpace();
    bool SkipsComment();
    SourceToken Take(SourceToken::Kind kind, std::size_t end);
    SourceToken TakeDirective();
    std::size_t WordEnd() const;
    std::size_t LineEnd(std::size_t from) const;

    std::string_view source_;
    LiteralFinder literals_;
    std::size_t at_ = 0;
    bool lineStart_ = true;  // nothing but blanks stands before it in its line
};

}  // namespace plugincs
