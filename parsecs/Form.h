// What a form of output is to the program: how one file becomes bytes, and where they go.
//
// Files are parsed by worker processes, each with its own copy of the parser's state; the parent
// gathers what they made, in the order of the inputs.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

/// A source as it was read.
struct ReadSource {
    std::string path;           ///< As its rows and records bear it.
    std::string text;           ///< All its bytes.
    std::int64_t modified = 0;  ///< Nanoseconds since the epoch.
};

/// How the parse of a file went.
struct FileOutcome {
    enum class Kind : std::uint8_t {
        Whole,
        StoppedEarly,  ///< At braces that do not match, in `line`.
        GivenUp,       ///< At a closing directive without its beginning: there is nothing of it.
        Unchanged,     ///< The form has what it would make: the file was not parsed.
    };
    Kind kind = Kind::Whole;
    std::int32_t line = 0;  ///< Where it stopped, from 1; 0 when it did not.
};

/// A file as the walk found it, before it is read.
struct FoundFile {
    std::string path;  ///< "-" is standard input.
    std::uint64_t bytes = 0;
    std::int64_t modified = 0;  ///< Nanoseconds since the epoch.
};

/// An output of one file alone cannot be written: the other files may fare better.
struct OutputFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Form {
  public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    /// In the parent, for each input, in order: whether it has to be parsed.
    virtual bool Wants(const FoundFile& /*file*/) { return true; }

    /// In a worker: appends to `made` what the parent shall have of the file. May throw
    /// std::bad_alloc: the file is given up.
    virtual FileOutcome Make(ReadSource source, std::string& made) const = 0;

    /// In the parent, in the order of the inputs: takes what Make made of a file that was not given
    /// up. Throws OutputFailure when this file's output cannot be written, any other
    /// std::runtime_error when none can, with a message for people that names the output.
    virtual void Take(const FoundFile& file, std::string_view made) = 0;

    /// In the parent, when all files have been taken. `complete` is false when the run broke off,
    /// or when there were files and all of them failed: nothing may be left behind then. A run that
    /// a signal ends does not come here: see output/Temporary.h. Throws as Take does.
    virtual void Finish(bool complete) = 0;
};
