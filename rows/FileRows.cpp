#include "rows/FileRows.h"

#include <cstdint>
#include <stdexcept>
#include <utility>

#include "plugin/Pipeline.h"
#include "rows/RowMaker.h"
#include "rows/Texts.h"

namespace plugincs {

namespace {

// Lines and columns are numbers of 32 bits.
std::string Checked(std::string source) {
    if (source.size() > INT32_MAX) throw std::length_error("a source");
    return source;
}

}  // namespace

FileRows::FileRows(std::string path, std::string source, Traces traces)
    : source_(Checked(std::move(source))),
      reading_(MakeReading(source_)),
      parse_(std::move(path), std::move(reading_.text), traces) {
    parse_.defines = reading_.operands;
    NodePlaces places;
    BuildTree(parse_, places);
    MakeRows(source_, reading_, places, parse_, rows_);
    Lines lines(source_);
    for (const std::size_t cut : reading_.cut) cutAt_.push_back(lines.At(cut).line);
    // After the error stands only the list of conditional operands.
    if (parse_.end == Parse::End::StoppedEarly) stoppedAt_ = rows_[rows_.size() - 2].begin.line;
}

std::size_t FileRows::PositionOf(std::size_t begin, std::size_t offset) const {
    return Texts(source_, reading_).PositionsOf({begin, source_.size()}, {offset}).front();
}

std::vector<Comment> FileRows::Comments() const {
    Lines lines(source_);
    std::vector<Comment> comments;
    for (const Span& span : reading_.comments) {
        const std::string_view text = std::string_view(source_).substr(span.begin);
        comments.push_back({lines.At(span.begin), text.substr(0, span.end - span.begin)});
    }
    return comments;
}

}  // namespace plugincs
