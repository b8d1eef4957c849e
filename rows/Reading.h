// The reading of a source before the core scans it.
//
// The core recognises structure by text: quotes, comments and directives that C# knows better than
// it would mislead it. So it is handed a text of the same length that it cannot misread, in which
// every byte stands where it stands in the source.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rows/Span.h"

namespace plugincs {

struct Reading {
    /// The text for the core. Comments, directive lines, attribute sections at the start of a
    /// statement, branches that are left out and all white space are blanks; what else would
    /// mislead it has harmless bytes. A comma that ends an enumerator is a semicolon.
    std::string text;

    // All in the order of the source.
    std::vector<Span> verbatim;    ///< Literals, names and commas that are others in `text`.
    std::vector<Span> gaps;        ///< Comments, directive lines and branches that are left out.
    std::vector<Span> comments;    ///< Those among the gaps.
    std::vector<Span> attributes;  ///< Sections at the start of a statement.
    std::vector<std::size_t> cut;  ///< Where groups begin of which a branch is left out.
    std::vector<std::string> operands;  ///< Of conditional directives, each once.
};

/// Reads the source, in time linear in its size. Throws std::bad_alloc.
Reading MakeReading(std::string_view source);

/// Whether an attribute section is for the whole assembly or module, and no declaration's.
bool IsGlobal(std::string_view section);

}  // namespace plugincs
