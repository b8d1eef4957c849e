// The pieces of a declaration's text that tell how it is used.
#pragma once

#include <string_view>

#include "rows/Row.h"

namespace plugincs {

/// What stands in parentheses or brackets behind the name: "(int a = 1)", "[int i]", and the
/// parameters of a type's own. Empty where nothing does, and for variables.
std::string_view ParametersOf(const Row& row);

/// The declaration without its body: initial values and what else follows '=' or '=>', and what a
/// constructor calls first.
std::string_view SignatureOf(const Row& row);

}  // namespace plugincs
