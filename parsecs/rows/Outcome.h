#pragma once

#include "parsecs/Form.h"
#include "parsecs/rows/ParsedFile.h"

/// With the line of the node that tells of the error.
FileOutcome OutcomeOf(const ParsedFile& file);
