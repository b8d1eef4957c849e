#pragma once

#include <string>
#include <string_view>

/// The simple name of the function that a declaration header declares: the word directly before
/// the parameter list, without return type, modifiers, pointer stars or generic arguments.
///
/// Purely textual: everything up to the first '>' before the parameters goes, which takes a generic
/// return type away and leaves nothing of "void Foo<T>(T x)". May be empty; never fails.
std::string functionName(std::string_view text);
