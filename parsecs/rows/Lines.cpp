#include "parsecs/rows/Lines.h"

#include <bit>

#include "text/BlockScan.h"

namespace {

struct LineEnds {
    LineEnds() = default;
    explicit LineEnds(const Block64& block) : found(block.IsOneOf("\n\r")) {}

    ByteMask found = 0;
};

}  // namespace

Lines::Lines(std::string_view source) : starts_{0} {
    constexpr std::size_t kUsualLine = 32;
    starts_.reserve(source.size() / kUsualLine);
    BlockScan<LineEnds> scan(source);
    for (std::size_t block = 0; block < source.size(); block += Block64::kSize) {
        for (ByteMask ends = scan.At(block).found; ends != 0; ends &= ends - 1) {
            const std::size_t end = block + static_cast<unsigned>(std::countr_zero(ends));
            const bool pair = source[end] == '\r' && source.substr(end + 1).starts_with('\n');
            if (!pair) starts_.push_back(end + 1);
        }
    }
}

Place Lines::At(std::size_t position) {
    while (line_ + 1 < starts_.size() && starts_[line_ + 1] <= position) ++line_;
    while (starts_[line_] > position) --line_;
    return {static_cast<std::int32_t>(line_ + 1),
            static_cast<std::int32_t>(position - starts_[line_] + 1)};
}
