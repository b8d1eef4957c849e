// The form of the parser's own records, byte for byte.
#pragma once

#include "parsecs/form/FormKind.h"

namespace plugincs {

extern const FormKind kRecordsForm;

}  // namespace plugincs
