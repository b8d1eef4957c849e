// Stretches of a source as texts: its own bytes, with comments and directives left out, and white
// space reduced outside of literals.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rows/Reading.h"

namespace plugincs {

class Texts {
  public:
    /// Both must outlive it.
    Texts(std::string_view source, const Reading& reading) : source_(source), reading_(reading) {}

    /// Whether the text of the span is what the core made of it. Spans come in the order of their
    /// beginnings: each takes the time of what lies between it and the one before.
    bool IsPlain(Span span);

    /// In valid UTF-8: each byte that belongs to no sequence becomes U+FFFD. Throws std::bad_alloc.
    std::string Of(Span span) const;

    /// Where the bytes of the span's text at these offsets stand, which come in their order. Throws
    /// std::bad_alloc.
    std::vector<std::size_t> PositionsOf(Span span, std::vector<std::size_t> offsets) const;

  private:
    std::string_view source_;
    const Reading& reading_;
    std::size_t nextVerbatim_ = 0;
};

}  // namespace plugincs
