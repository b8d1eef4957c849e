// Turns the raw bytes of a source file into the text that the scanner reads: printable ASCII and
// line feeds, without comments, directive lines and the code of inactive conditional sections.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/SourceMap.h"

/// Where the bytes of a cleaned text stood in the source.
struct CleaningMaps {
    SourceMap comments;      // of the comment pass
    SourceMap conditionals;  // of the preprocessor pass, whose text is the other's result

    /// As SourceMap's.
    class Reader {
      public:
        explicit Reader(const CleaningMaps& maps)
            : comments_(maps.comments), conditionals_(maps.conditionals) {}

        std::size_t SourceOf(std::size_t cleaned) {
            return comments_.SourceOf(conditionals_.SourceOf(cleaned));
        }

      private:
        SourceMap::Reader comments_;
        SourceMap::Reader conditionals_;
    };
};

/// Groups the cleaning operations; it has no data, and a default-constructed object serves. Nothing
/// here fails or keeps state, and all of it throws nothing but std::bad_alloc.
class Cleaner {
  public:
    /// The whole pipeline. Collects the operands of conditional directives into `defines`. Writes
    /// "the final data is " and the text between the two passes to standard output. `maps`, unless
    /// it is null, receives where the cleaned bytes stood.
    std::string CleanText(std::string text, std::vector<std::string> definedSymbols,
                          std::vector<std::string>& defines, CleaningMaps* maps = nullptr) const;

    /// As `replaceAll`.
    void ReplaceAll(std::string& text, std::string_view from, std::string_view to) const;

    /// The comment pass: drops comments, attribute sections at the start of a statement, and
    /// stretches from a run of five 'T' to the next semicolon; turns bytes that are not printable
    /// into blanks. Literals and the line feeds of comments stay.
    /// `map`, unless it is null, receives where the kept bytes stood.
    std::string UncommentAndUnquoteText(std::string_view text, SourceMap* map = nullptr) const;

    /// The preprocessor pass: empties every directive line and every line of an inactive section,
    /// and unindents most others. One line feed out for each line feed in. A condition is true when
    /// its operand, the rest of its line, is an entry of `definedSymbols`. Appends each operand to
    /// `defines`, unless it stands there already. Held lines of more than 50 bytes,
    /// directives and indentation alike, write a trace line to standard output for each further
    /// byte. `map` as above.
    std::string PreProcessorSimulation(std::string_view text,
                                       std::vector<std::string> definedSymbols,
                                       std::vector<std::string>& defines,
                                       SourceMap* map = nullptr) const;

    /// Splits a directive line into its keyword with the '#' and its operand. Appends none of them
    /// where a letter comes before any '#': no directive. `parts` comes empty.
    void CleanerPartsList(std::string_view line, std::vector<std::string>& parts) const;

    /// Whether the branch that the directive line opens is active. `previousState` is the state of
    /// the branch before it: 1 active, 0 not; with -1 the answer is no.
    bool GetPreProcessorDirectiveActiveState(std::string_view line, int previousState,
                                             const std::vector<std::string>& definedSymbols) const;
};
