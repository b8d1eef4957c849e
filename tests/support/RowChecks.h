// Invariants of the rows of any bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rows/FileRows.h"

/// Byte offsets of places, found by a scan for line ends: independent of how the rows were placed.
class Positions {
  public:
    explicit Positions(std::string_view source) : size_(source.size()) {
        for (std::size_t at = 0; at < size_; ++at) {
            const bool first =
                at == 0 || source[at - 1] == '\n' || (source[at - 1] == '\r' && source[at] != '\n');
            if (first) starts_.push_back(at);
        }
    }

    /// npos for a place outside the source.
    std::size_t Of(plugincs::Place place) const {
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

/// The invariant that the rows break, or an empty text. Without a source places are not checked.
std::string BrokenByRows(const plugincs::FileRows& file, std::string_view source);
