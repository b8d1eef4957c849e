#pragma once

#include <string>
#include <string_view>

namespace plugincs {

/// The long name of the option that was meant by a name that no option has, or nothing: a word that
/// other programs have for it, a beginning or another shortened form of its name, its name with a
/// word more, or one mistyped by a third of its letters at most.
std::string_view MeantBy(std::string_view name);

}  // namespace plugincs
