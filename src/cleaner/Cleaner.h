// Turns the raw bytes of a source file into the text that the scanner reads: printable ASCII and
// line feeds, without comments, directive lines and the code of inactive conditional sections.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "process/Traces.h"

namespace plugincs {

/// The cleaning operations. A stateless class: use a default-constructed object. Nothing fails or
/// throws, except with std::bad_alloc.
class Cleaner {
  public:
    /// Both passes. Appends the operands of conditional directives to `defines`. Writes "the final
    /// data is " and the comment pass's result to the traces.
    std::string CleanText(std::string text, std::vector<std::string> definedSymbols,
                          std::vector<std::string>& defines, Traces traces = Traces(stdout)) const;

    /// As `replaceAll`.
    void ReplaceAll(std::string& text, std::string_view from, std::string_view to) const;

    /// The comment pass: drops comments, attribute sections at the start of a statement, and
    /// stretches from a run of five 'T' to the next semicolon; turns bytes that are not printable
    /// into blanks. Literals and the line feeds of comments stay.
    std::string UncommentAndUnquoteText(std::string_view text) const;

    /// The preprocessor pass: empties every directive line and every line of an inactive section,
    /// and unindents most others. One line feed out for each line feed in. A condition is true when
    /// its operand, the rest of its line, is an entry of `definedSymbols`. Appends each operand to
    /// `defines`, unless it stands there already. A directive or an indentation of more than 50
    /// bytes writes a trace line for each further byte.
    std::string PreProcessorSimulation(std::string_view text,
                                       std::vector<std::string> definedSymbols,
                                       std::vector<std::string>& defines,
                                       Traces traces = Traces(stdout)) const;

    /// Splits a directive line, and appends its keyword with the '#' and its operand to `parts`, as
    /// far as it has them. Appends nothing where a letter comes before any '#': no directive.
    void CleanerPartsList(std::string_view line, std::vector<std::string>& parts) const;

    /// Whether the branch that the directive line opens is active. `previousState` is the state of
    /// the branch before it: 1 active, 0 not; with -1 the answer is no.
    bool GetPreProcessorDirectiveActiveState(std::string_view line, int previousState,
                                             const std::vector<std::string>& definedSymbols) const;
};

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::Cleaner;
