// All forms of output.
#pragma once

#include <span>

#include "parsecs/form/FormKind.h"

namespace plugincs {

/// In the order of the help; the first is the one that is made without an option.
extern const std::span<const FormKind* const> kFormKinds;

}  // namespace plugincs
