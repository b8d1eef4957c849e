// The module's own bytes, from the code that it is made of.
#pragma once

#include <string>

#include "parsecs/form/Form.h"

namespace plugincs {

/// Appends the text that the module makes of the source, nothing when it gives the file up. Throws
/// std::bad_alloc.
FileOutcome AppendRecords(ReadSource source, std::string& out);

}  // namespace plugincs
