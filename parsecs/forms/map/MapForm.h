// The map as a form of output: one HTML page for all inputs.
#pragma once

#include <optional>
#include <string>

#include "parsecs/form/FormKind.h"
#include "parsecs/forms/map/MapColumns.h"

namespace plugincs {

class MapForm : public Form {
  public:
    /// The page becomes the file `output`.
    explicit MapForm(std::string output) : output_(std::move(output)) {}

    MadeFile Make(ReadSource source) const override;
    void Take(const FoundFile& file, Piece& piece) override;
    void Finish(bool complete) override;

  private:
    std::string output_;
    MapColumns definitions_{MapDetail::Definitions};
    /// Nothing once there are more than a browser shows at ease.
    std::optional<MapColumns> statements_{MapDetail::Statements};
};

extern const FormKind kMapForm;

}  // namespace plugincs
