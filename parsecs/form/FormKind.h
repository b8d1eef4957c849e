// A form of output as the rest of the program knows it. Each form hands over one of these rows,
// which the command line, the manual, the plan and the program read.
#pragma once

#include <memory>
#include <string_view>

#include "parsecs/form/Form.h"
#include "parsecs/input/Inputs.h"
#include "parsecs/options/Options.h"

namespace plugincs {

struct FormKind {
    std::string_view option;    ///< Its long name; empty for the form that needs none.
    std::string_view argument;  ///< "FILE" for a form that makes one file of all inputs.
    std::string_view help;
    std::string_view
        suffix;  ///< What follows an input's name in that of its output below a folder.
    bool takesSeveral = true;  ///< Whether several inputs may go to one output.
    bool streams = true;       ///< Whether that output may be standard output.

    /// The outputs that the options name must be allowed. Throws std::runtime_error with a message
    /// that names the output.
    std::unique_ptr<Form> (*make)(const Options& options, const Inputs& inputs);
};

}  // namespace plugincs
