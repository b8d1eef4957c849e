// The scan: turns a cleaned text into a tree in one pass.
#pragma once

#include "tree/ScanState.h"

namespace plugincs {

/// Scans the text to its end, or to where it cannot go on, which comes with a message among the
/// traces. Tells the parse how the scan ended, and which text is left over. Throws std::bad_alloc.
void ScanText(ScanState& scan);

}  // namespace plugincs
