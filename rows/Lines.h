// Lines and columns of a source.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace plugincs {

/// A byte of the source. Lines end with LF, CRLF or a lone CR, each once; columns count bytes; both
/// begin with 1, and 0 means that there is no place.
struct Place {
    std::int32_t line = 0;
    std::int32_t column = 0;
};

class Lines {
  public:
    /// Keeps nothing of the source but where its lines begin.
    explicit Lines(std::string_view source);

    /// The place of a position. Positions should mostly come in their order: each takes the time of
    /// the lines between it and the one before.
    Place At(std::size_t position);

    /// How many lines there are, and where each begins, from the first one's 1.
    std::size_t Count() const { return starts_.size(); }
    std::size_t BeginOf(std::size_t line) const { return starts_[line - 1]; }

  private:
    std::vector<std::size_t> starts_;
    std::size_t line_ = 0;  // of the last position
};

}  // namespace plugincs
