// What a statement or a block's header declares, read off its text.
//
// Names are bare: without type parameters, without the '@' that makes a keyword a name, and without
// the interface that an explicit member is for.
//
//   namespace A.B, file-scoped too                        A.B
//   class, struct, interface, enum, record, delegate      its name
//   method, local function, constructor                   its name
//   ~T(), T this[...], T operator +, operator T           ~T, this, operator +, operator T
//   field, property, event, enumerator                    its name; of several the first
//
// Everything else declares nothing: calls and other statements, accessors, using lines, and local
// variables, which nobody looks up from elsewhere. Members and local variables are written alike,
// so it takes the surroundings to tell them apart; but what says "public" or "event" is a member
// wherever broken braces have put it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace plugincs {

enum class Declares : std::uint8_t {
    Nothing,
    Namespace,
    Class,
    Struct,
    Interface,
    Enum,
    Record,
    Delegate,
    Method,
    Constructor,
    Destructor,
    Property,
    Indexer,
    Event,
    Field,
    Operator,
    Conversion,
    Enumerator,
    Local,  ///< A local function.
};

/// As rows show it: empty for Nothing, and the word in lower case.
std::string_view NameOf(Declares what);

inline constexpr std::size_t kDeclaresCount = static_cast<std::size_t>(Declares::Local) + 1;

constexpr bool IsType(Declares what) {
    return what >= Declares::Class && what <= Declares::Delegate;
}
/// What has a body of statements, local functions among it.
constexpr bool IsFunction(Declares what) {
    return what == Declares::Method || what == Declares::Constructor ||
           what == Declares::Destructor || what == Declares::Operator ||
           what == Declares::Conversion || what == Declares::Local;
}
constexpr bool IsValue(Declares what) {
    return what == Declares::Property || what == Declares::Indexer || what == Declares::Event ||
           what == Declares::Field || what == Declares::Enumerator;
}

/// What stands directly around a text.
enum class Around : std::uint8_t {
    File,  ///< The file, or a namespace.
    Type,
    Enum,
    Accessors,  ///< The block of a property, an indexer or an event.
    Code,       ///< Statements.
    Value,      ///< An initialiser, a pattern, the arms of a switch: no statements.
};

struct Surroundings {
    Around around = Around::File;
    std::string_view typeName{};  ///< Of the type around, which its constructors bear.
};

struct Declaration {
    Declares what = Declares::Nothing;
    std::string_view name{};       ///< A piece of the text; empty for Nothing.
    std::string_view modifiers{};  ///< The same: "public static".
    bool more = false;             ///< Further names may follow: "int a, b".
};

/// What the text declares; `opensBlock` tells a block's header from a statement. White space is
/// reduced, and comments and attributes are left out. Allocates nothing, but for literals in
/// literals, and is linear in the text.
Declaration ReadDeclaration(std::string_view text, const Surroundings& surroundings,
                            bool opensBlock);

/// What follows the name that the text declares; all of it where that is nothing.
std::string_view BehindName(std::string_view text, const Declaration& declaration);

}  // namespace plugincs
