// Turns the raw bytes of a source file into the text that the scanner reads: printable ASCII and
// line feeds, without comments, directive lines and the code of inactive conditional sections.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Groups the cleaning operations; it has no data, and a default-constructed object serves. Nothing
/// here fails or keeps state, and all of it throws nothing but std::bad_alloc.
class Cleaner {
  public:
    /// The whole pipeline. Collects the operands of conditional directives into `defines`. Writes
    /// "the final data is " and the text between the two passes to standard output.
    std::string CleanText(std::string text, const std::vector<std::string>& definedSymbols,
                          std::vector<std::string>& defines) const;

    /// As `replaceAll`.
    void ReplaceAll(std::string& text, std::string_view from, std::string_view to) const;

    /// The comment pass: drops comments, attribute sections at the start of a statement, and
    /// stretches from a run of five 'T' to the next semicolon; turns bytes that are not printable
    /// into blanks. Literals and the line feeds of comments stay.
    std::string UncommentAndUnquoteText(std::string text) const;

    /// The preprocessor pass: empties every directive line and every line of an inactive section,
    /// and unindents most others. One line feed out for each line feed in. A condition is true when
    /// its operand, the rest of its line, is an entry of `definedSymbols`. Appends each operand to
    /// `defines`, which is another list, unless it stands there already. Directive lines of more
    /// than 50 bytes write a trace line to standard output for each further byte.
    std::string PreProcessorSimulation(std::string text,
                                       const std::vector<std::string>& definedSymbols,
                                       std::vector<std::string>& defines) const;

    /// Splits a directive line into its keyword with the '#' and its operand. Appends none of them
    /// where a letter comes before any '#': no directive. `parts` comes empty.
    void CleanerPartsList(std::string_view line, std::vector<std::string>& parts) const;

    /// Whether the branch that the directive line opens is active. `previousState` is the state of
    /// the branch before it: 1 active, 0 not; with -1 the answer is no.
    bool GetPreProcessorDirectiveActiveState(std::string_view line, int previousState,
                                             const std::vector<std::string>& definedSymbols) const;
};
