#include "parsecs/map/MapForm.h"

#include <utility>

#include "parsecs/map/MapPage.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/rows/Outcome.h"
#include "parsecs/rows/RowCodec.h"

namespace {

// Beyond either a page takes long to load and much memory to keep.
constexpr std::size_t kMostFiles = 10'000;
constexpr std::size_t kMostRows = 3'000'000;

}  // namespace

FileOutcome MapForm::Make(ReadSource source, std::string& made) const {
    const ParsedFile file(std::move(source.path), std::move(source.text));
    EncodeRows(file, made);
    return OutcomeOf(file);
}

void MapForm::Take(const FoundFile& file, std::string_view made) {
    rows_.clear();
    RowReader reader(made);
    for (Row row; reader.Next(row);) rows_.push_back(row);
    const std::string path = file.path == "-" ? "/dev/stdin" : file.path;
    definitions_.Add(path, rows_);
    if (!statements_) return;
    statements_->Add(path, rows_);
    if (statements_->files() > kMostFiles || statements_->rows() > kMostRows) statements_.reset();
}

void MapForm::Finish(bool complete) {
    if (!complete) return;
    MapColumns& columns = statements_ ? *statements_ : definitions_;
    OutputFile output(output_);
    WriteMapPage(columns.Pieces(), [&output](std::string_view part) { output.Write(part); });
    output.Finish();
}
