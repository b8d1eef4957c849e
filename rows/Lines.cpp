#include "rows/Lines.h"

#include "text/ByteSets.h"

namespace plugincs {

namespace {

constexpr ByteSets kLineEnds{ByteSet("\n\r")};

}  // namespace

Lines::Lines(std::string_view source) : starts_{0} {
    constexpr std::size_t kUsualLine = 32;
    starts_.reserve(source.size() / kUsualLine);
    for (std::size_t block = 0; block < source.size(); block += kBlockSize) {
        for (ByteMask ends = kLineEnds.In(source, block)[0]; ends != 0; ends &= ends - 1) {
            const std::size_t end = block + First(ends);
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

}  // namespace plugincs
