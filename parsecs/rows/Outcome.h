#pragma once

#include "parsecs/Form.h"
#include "rows/FileRows.h"

/// How the rows of the file came about: they are never given up.
FileOutcome OutcomeOf(const FileRows& file);
