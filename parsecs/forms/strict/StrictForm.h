// The form of records as valid JSON.
#pragma once

#include "parsecs/form/FormKind.h"

namespace plugincs {

extern const FormKind kStrictForm;

}  // namespace plugincs
