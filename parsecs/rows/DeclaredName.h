// What a declaration declares, read off the text of a statement or a block's header.
//
// Names are bare: without type parameters, without the '@' that makes a keyword a name, and without
// the interface that an explicit member is for.
//
//   namespace A.B, file-scoped too                        A.B
//   class, struct, interface, enum, record, delegate      its name
//   method, local function, constructor                   its name
//   ~T(), T this[...], T operator +, operator T           ~T, this, operator +, operator T
//   field, property, event                                its name; of several the first
//
// Everything else declares nothing: calls and other statements, accessors, using lines, directives,
// and local variables, which nobody looks up from elsewhere. Members and local variables are
// written alike, so it takes the scope to tell them apart; but what says "public" or "event" is a
// member wherever broken braces have put it.
#pragma once

#include <string_view>

/// Where a text stands.
struct Scope {
    bool inType = false;        ///< Directly in the body of a type.
    std::string_view typeName;  ///< The name of that type, which its constructors bear.
};

struct Declaration {
    enum class Kind : unsigned char { None, Namespace, Type, Function, Value };
    Kind kind = Kind::None;
    std::string_view name;  ///< A piece of the text; empty for None.
};

/// What the text declares. Texts come cleaned: printable, without comments, white space reduced.
/// Looks at no byte more often than twice, and allocates nothing.
Declaration DeclaredBy(std::string_view text, const Scope& scope);

/// Where the texts of the nodes below a node with that text stand.
Scope ScopeBelow(std::string_view text, const Declaration& declaration, const Scope& scope);
