// What the program was asked to do.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

/// The command line cannot be followed; the message says what to use instead.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Options {
    enum class Form { Records, Strict, Rows, Outline, Index, Map };
    enum class Colour { Auto, Always, Never };
    /// Texts about the program itself, which are printed instead of parsing anything.
    enum class About { Nothing, Help, Version, ManPage, Completion };

    Form form = Form::Records;
    std::string formOption;           ///< As it was given; empty for the default.
    std::string formFile;             ///< The one file of a form that makes one of all inputs.
    std::vector<std::string> inputs;  ///< Files, folders, "-" for standard input.
    std::string list;                 ///< A file that names inputs; empty: none.
    bool listEndsInNul = false;       ///< Its names end in NUL, not in a line feed.
    std::string output;               ///< Empty: standard output.
    std::string folder;               ///< Of one output for each input; empty: none.
    unsigned jobs = 0;                ///< 0: as many as there are cores to use.
    Colour colour = Colour::Auto;
    bool traces = false;  ///< What the parser says of itself goes to standard error.
    About about = About::Nothing;
    std::string shell;  ///< That the completion is for.
};
