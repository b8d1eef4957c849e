// What the program was asked to do.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace plugincs {

/// The command line cannot be followed; the message says what to use instead.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct FormKind;

/// Stands for standard input or output where a file can be named.
inline constexpr std::string_view kStandardStream = "-";

struct Options {
    enum class Colour { Auto, Always, Never };
    /// Texts about the program itself, which are printed instead of parsing anything.
    enum class About { Nothing, Help, Version, Schema, ManPage, Completion };

    const FormKind* form = nullptr;
    std::string formFile;               ///< The value of the form's option, if it takes one.
    std::vector<std::string> inputs;    ///< Files, folders, "-" for standard input.
    std::string list;                   ///< A file that names inputs; empty: none.
    bool listEndsInNul = false;         ///< Its names end in NUL, not in a line feed.
    std::vector<std::string> excluded;  ///< Patterns of what is left out.
    bool ignoreFiles = true;            ///< .gitignore files tell what is left out, too.
    std::string output;                 ///< Once it is settled empty for standard output.
    std::string folder;                 ///< Of one output for each input; empty: none.
    std::string link;                   ///< Of a map to the sources, a template; empty: none.
    unsigned jobs = 0;                  ///< 0: as many as there are cores to use.
    Colour colour = Colour::Auto;
    bool declarations = false;  ///< Outlines show nothing else.
    std::size_t mostBytes = 0;  ///< Of an outline, which shows declarations then; 0: any number.
    bool diff = false;          ///< Compares two states, which the inputs name.
    bool git = false;           ///< These are revisions.
    bool traces = false;        ///< What the parser says of itself goes to standard error.
    About about = About::Nothing;
    std::string shell;  ///< That the completion is for.
};

}  // namespace plugincs
