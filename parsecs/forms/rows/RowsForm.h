// The form of rows as JSON Lines.
#pragma once

#include "parsecs/form/FormKind.h"

namespace plugincs {

extern const FormKind kRowsForm;

}  // namespace plugincs
