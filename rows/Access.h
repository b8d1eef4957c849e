// Who may use a declaration.
#pragma once

#include <cstdint>
#include <string_view>

#include "rows/Row.h"

namespace plugincs {

enum class Access : std::uint8_t {
    Open,  ///< Nothing says, or nothing can: namespaces, explicit members, parts of a type.
    Public,
    ProtectedInternal,
    Protected,
    Internal,
    PrivateProtected,
    Private,
    File,
    Inside,  ///< A local function.
};

/// As C# writes it; empty for those that it has no words for.
std::string_view NameOf(Access access);

/// What the row's modifiers say, or else the language. `around` is the declaration around it, null
/// for none.
Access AccessOf(const Row& row, const Row* around);

/// Whether no other file can use it, but for those with further parts of its type.
constexpr bool IsOfFile(Access access) { return access >= Access::Private; }

}  // namespace plugincs
