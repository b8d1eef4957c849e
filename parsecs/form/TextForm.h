// Forms that are texts: each file becomes a piece of one output, or a file of its own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "parsecs/form/Form.h"
#include "parsecs/options/Options.h"

namespace plugincs {

struct TextFormat {
    /// In any thread: appends what the form makes of the source, nothing when that is given up.
    std::function<FileOutcome(ReadSource source, std::string& out)> append;
    std::string_view head{};  ///< Of each output.
};

/// `options` tells the form, and the output or the folder.
std::unique_ptr<Form> MakeTextForm(const Options& options, TextFormat format);

}  // namespace plugincs
