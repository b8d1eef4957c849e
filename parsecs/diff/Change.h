// What a diff tells of one declaration.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/diff/DeclaredFile.h"

namespace plugincs {

enum class ChangeKind : std::uint8_t { Added, Removed, Signature, Body, Moved, Renamed };

/// As rows show it: the word in lower case.
std::string_view NameOf(ChangeKind kind);

/// A declaration in one of the states.
struct ChangedPlace {
    std::string scope;
    std::string name;
    std::string file;
    std::int32_t line = 0;  ///< 0 in an empty file, as the next.
    std::int32_t endLine = 0;
};

struct Change {
    ChangeKind kind;
    std::string_view declares;  ///< "file" for what stands in no declaration.
    std::optional<ChangedPlace> old;
    std::optional<ChangedPlace> now;
    /// Where it is told: in the order of the files, and of the declarations in them.
    std::pair<std::size_t, std::size_t> order{};
};

/// `old` or `now` is null where there is none.
Change MakeChange(ChangeKind kind, const Declared* old, const Declared* now);

/// In the order in which they are told.
void Sort(std::vector<Change>& changes);

}  // namespace plugincs
