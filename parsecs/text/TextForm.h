// The forms that are texts: each file becomes a piece of one output, or a file of its own.
#pragma once

#include <memory>

#include "parsecs/Form.h"
#include "parsecs/command/Options.h"

/// Whether several files may go to one output in that form, or each needs its own.
bool TakesSeveral(Options::Form form);

/// What follows the name of an input in that of its output below a folder.
std::string_view OutputSuffix(Options::Form form);

/// `options` tells form, output and folder, and whether the outline has colours.
std::unique_ptr<Form> MakeTextForm(const Options& options);
