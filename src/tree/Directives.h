// Directive lines inside the scanned text. The cleaner removes every line that begins with '#', so
// these are the ones in the middle of a line, behind a ';', '{' or '}'.
#pragma once

#include "tree/ScanState.h"

/// What the newline at the end of a directive line comes to.
enum class DirectiveEnd {
    Unrecognised,  // no keyword: the newline is text, and the directive goes on
    Recognised,    // its action is done: it has a node, or has closed one
    Abandoned,     // it closes what is not open: the whole build is given up
};

/// Takes a '#' with no text before it as the start of a directive; false where there is some.
bool StartDirective(ScanState& scan);

/// Ends the directive that was collected, and takes the newline, if its text begins with a keyword.
/// An unrecognised one goes on until a later line's end finds collected text that does.
DirectiveEnd EndDirective(ScanState& scan);
