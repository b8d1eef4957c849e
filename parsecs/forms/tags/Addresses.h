// How an editor finds a line again, as a tags file says it.
//
//   /^    public int Count$/      the first line that reads so
//   41;/^    public int Count$/   the next one behind line 41, where others before it read so too
//   42                            that line, where no pattern would do
//
// In a pattern '\', '/' and a '$' at the end have a '\' before them. A line is cut after 96 bytes,
// and its pattern ends without a '$' then.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rows/Lines.h"

namespace plugincs {

inline constexpr std::size_t kLongestPattern = 96;  // bytes of the line

class Addresses {
  public:
    /// Of these lines, which count from 1, each once and ascending. The source and its lines must
    /// outlive this.
    Addresses(std::string_view source, const Lines& lines, const std::vector<std::size_t>& wanted);

    /// Of one of those.
    void Append(std::size_t line, std::string& out) const;

  private:
    /// Which ends the lines have tells what an editor takes for lines, and shows of their ends.
    struct Ends {
        std::size_t lineFeeds = 0;
        std::size_t pairs = 0;
        std::size_t returns = 0;
    };

    std::string_view WithEnd(std::size_t line) const;
    std::string_view TextOf(std::size_t line) const;
    void CountEnds();
    void FindRepeated(const std::vector<std::size_t>& wanted);
    bool HasPattern(std::string_view text) const;
    bool IsWhole(std::size_t line) const;

    std::string_view source_;
    const Lines& lines_;
    Ends ends_;
    std::vector<std::size_t> repeated_;  // lines that read as some line before them, ascending
};

}  // namespace plugincs
