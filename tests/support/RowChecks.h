// What holds for the rows of any bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "parsecs/rows/ParsedFile.h"

/// Finds positions by counting lines from the start: slow, and not how the rows did it.
class Positions {
  public:
    explicit Positions(std::string_view source) : size_(source.size()) {
        for (std::size_t at = 0; at < size_; ++at) {
            const bool first =
                at == 0 || source[at - 1] == '\n' || (source[at - 1] == '\r' && source[at] != '\n');
            if (first) starts_.push_back(at);
        }
    }

    /// npos for a place that is not in the source.
    std::size_t Of(Place place) const {
        if (place.line < 1 || place.column < 1) return std::string_view::npos;
        const auto line = static_cast<std::size_t>(place.line);
        if (line > starts_.size()) return std::string_view::npos;
        const std::size_t at = starts_[line - 1] + static_cast<std::size_t>(place.column) - 1;
        return at < (line < starts_.size() ? starts_[line] : size_) ? at : std::string_view::npos;
    }

  private:
    std::size_t size_;
    std::vector<std::size_t> starts_;
};

/// The promise that the rows of the source break, or nothing.
std::string BrokenByRows(const ParsedFile& file, std::string_view source);
