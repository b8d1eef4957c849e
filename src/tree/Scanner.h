// The scan: turns a cleaned text into a tree in one pass.
#pragma once

#include "tree/ScanState.h"

/// How the scan goes on after a step, and how it ended.
enum class ScanStep {
    Continue,  // as an end: the whole text was scanned
    Stop,      // at a structural error, which has added an error node to the root
    Abandon,   // the build is abandoned, and the tree is not to be used
};

/// Scans the text to its end, or to the first step that does not continue, and returns that. Stop
/// and Abandon come with a message on standard output. Sets `chunk` to the text that made no node.
/// Throws std::bad_alloc.
ScanStep ScanText(ScanState& scan);
