// The form of outlines: trees for reading.
#pragma once

#include "parsecs/form/FormKind.h"

namespace plugincs {

extern const FormKind kOutlineForm;

}  // namespace plugincs
