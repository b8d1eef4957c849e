// The rows of a source, for the forms that are made of them.
#pragma once

#include "parsecs/form/Form.h"
#include "rows/FileRows.h"

namespace plugincs {

/// Throws std::bad_alloc, and std::length_error for a source that is too large.
FileRows RowsOf(ReadSource source);

/// How the rows of the file came about: they are never given up.
FileOutcome OutcomeOf(const FileRows& file);

}  // namespace plugincs
