// Directives inside the scanned text. The cleaner removes lines that begin with '#', so these stand
// in the middle of a line, after a ';', '{' or '}'.
#pragma once

#include "tree/ScanState.h"

namespace plugincs {

/// What a newline did to the directive before it.
enum class DirectiveEnd {
    Unrecognised,  // no keyword: the newline is text, and the directive goes on
    Recognised,    // the directive has ended, and has added a node, closed one, or both
    Abandoned,     // it closes more than is open: the build is abandoned
};

/// Starts a directive at a '#', if the collected text before it is blank; otherwise returns false
/// and changes nothing.
bool StartDirective(ScanState& scan);

/// At a newline: ends the directive and consumes the newline, if the collected text begins with a
/// keyword. Otherwise the directive goes on, and the next newline tries again. Abandoned comes with
/// a message among the traces.
DirectiveEnd EndDirective(ScanState& scan);

}  // namespace plugincs
