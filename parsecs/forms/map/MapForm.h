// The map as a form of output: one HTML page for all inputs.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "parsecs/form/FormKind.h"
#include "parsecs/forms/map/MapColumns.h"

namespace plugincs {

/// Whether a browser shows so much at ease. Beyond, a page takes long to load and much memory to
/// keep, and shows definitions alone.
constexpr bool ShowsStatements(std::size_t files, std::size_t rows) {
    return files <= 10'000 && rows <= 3'000'000;
}

class MapForm : public Form {
  public:
    /// The page becomes the file `output`.
    MapForm(std::string output, const MapSetting& setting)
        : output_(std::move(output)),
          definitions_(MapDetail::Definitions, setting),
          statements_(std::in_place, MapDetail::Statements, setting) {}

    MadeFile Make(ReadSource source) const override;
    void Take(const FoundFile& file, Piece& piece) override;
    void Finish(bool complete) override;

  private:
    std::string output_;
    MapColumns definitions_;
    /// Nothing once they are too many.
    std::optional<MapColumns> statements_;
};

extern const FormKind kMapForm;

}  // namespace plugincs
