// The declarations of a file in one state, each with hashes of its own text: what lies in others
// that are nested in it is theirs.
//
// The first one is the file itself. Its body is what stands in no declaration: using lines,
// attributes of the assembly, top-level statements, and the directives between its types. A
// namespace is none: its name is in the scopes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "parsecs/diff/TextHash.h"
#include "rows/FileRows.h"

namespace plugincs {

struct DeclaredFile;

struct Declared {
    Declares declares = Declares::Nothing;  ///< Nothing: the file.
    bool hasCode = false;  ///< More in its body than braces and the names of accessors.
    std::int32_t line = 0;
    std::int32_t endLine = 0;
    std::size_t size = 1;  ///< How many declarations it is, with those in it, which follow it.
    std::string scope;
    std::string name;
    std::uint64_t scopeHash = 0;
    std::uint64_t nameKey = 0;  ///< Tells it from its siblings by kind and name.
    std::uint64_t key = 0;      ///< By the types of its parameters too.

    std::uint64_t signature = 0;  ///< Without its name.
    std::uint64_t body = 0;
    std::uint64_t whole = 0;     ///< With its name and what is nested in it, in whatever order.
    std::uint64_t nameless = 0;  ///< The same without its name, wherever that stands in its text.

    const DeclaredFile* file = nullptr;
    Declared* parent = nullptr;   ///< Null for the file.
    Declared* partner = nullptr;  ///< In the other state, once it is found.

    bool IsFile() const { return parent == nullptr; }
    bool IsScope() const { return IsFile() || IsType(declares); }
    Declared* begin() { return this + 1; }
    Declared* end() { return this + size; }
};

struct DeclaredFile {
    DeclaredFile() = default;
    DeclaredFile(const DeclaredFile&) = delete;
    DeclaredFile& operator=(const DeclaredFile&) = delete;

    std::string path;
    std::size_t pair = 0;  ///< The number of the file in both states.
    std::vector<Declared> declared;
};

/// The declarations right below that one, each with a call.
template <typename Do>
void ForEachBelow(Declared& around, Do act) {
    for (Declared* each = around.begin(); each != around.end(); each += each->size) act(*each);
}

/// Fills `file.declared`. Linear in the source.
void ListDeclared(const FileRows& rows, HashPoint point, DeclaredFile& file);

}  // namespace plugincs
