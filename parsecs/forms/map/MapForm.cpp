#include "parsecs/forms/map/MapForm.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "parsecs/form/SourceRows.h"
#include "parsecs/forms/map/Link.h"
#include "parsecs/forms/map/MapPage.h"
#include "parsecs/output/OutputFile.h"

namespace plugincs {

namespace {

// Nothing where it is gone: the page then does without.
std::string FolderName() {
    std::error_code error;
    const std::filesystem::path here = std::filesystem::current_path(error);
    if (error && error != std::errc::no_such_file_or_directory) throw std::system_error(error);
    return here.filename().string();
}

struct RowsPiece : Piece {
    explicit RowsPiece(ReadSource source)
        : file(std::move(source.path), std::move(source.text), source.traces) {}
    FileRows file;
};

}  // namespace

MadeFile MapForm::Make(ReadSource source) const {
    auto piece = std::make_unique<RowsPiece>(std::move(source));
    const FileOutcome outcome = OutcomeOf(piece->file);
    return {outcome, std::move(piece)};
}

void MapForm::Take(const FoundFile& /*file*/, Piece& piece) {
    const FileRows& file = static_cast<const RowsPiece&>(piece).file;
    definitions_.Add(file);
    if (!statements_) return;
    statements_->Add(file);
    if (!ShowsStatements(statements_->files(), statements_->rows())) statements_.reset();
}

void MapForm::Finish(bool complete) {
    if (!complete) return;
    MapColumns& columns = statements_ ? *statements_ : definitions_;
    OutputFile output(output_);
    WriteMapPage(columns.Pieces(), [&output](std::string_view part) { output.Write(part); });
    output.Finish();
}

constinit const FormKind kMapForm{
    .option = "html",
    .argument = "FILE",
    .help = "A map to look at and to search: FILE is one page for a browser.",
    .suffix = "",
    .make = [](const Options& options, const Inputs& /*inputs*/) -> std::unique_ptr<Form> {
        if (!options.link.empty()) CheckLink(options.link);
        return std::make_unique<MapForm>(options.output, MapSetting{FolderName(), options.link});
    },
};

}  // namespace plugincs
