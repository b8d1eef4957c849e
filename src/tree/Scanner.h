// The scan over a cleaned text: its steps in the order in which a character meets them.
#pragma once

#include "tree/ScanState.h"

/// What the scan does after a step, and how it ended.
enum class ScanStep {
    Continue,
    Stop,     // at a structural error; it left an error node below the root
    Abandon,  // the build is given up
};

/// Scans the text to its end or to the first step that does not continue, whose result it returns;
/// Stop and Abandon come with a message on standard output. Leaves in `chunk` what made no node.
ScanStep ScanText(ScanState& scan);
