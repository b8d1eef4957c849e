// What a form of output is to the program: how one file becomes bytes, and where they go.
//
// Files are parsed by worker processes, each with its own copy of the parser's state; the parent
// gathers what they made, in the order of the inputs.
#pragma once

#include <cstdint>
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
    };
    Kind kind = Kind::Whole;
    std::int32_t line = 0;  ///< Where it stopped, from 1; 0 when it did not.
};

/// A file as the walk found it, before it is read.
struct FoundFile {
    std::string path;
    std::uint64_t bytes = 0;
    std::int64_t modified = 0;  ///< Nanoseconds since the epoch.
};

class Form {
  public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    /// In the parent, for each input: whether it has to be parsed.
    virtual bool Wants(const FoundFile& /*file*/) { return true; }

    /// In a worker: appends to `made` what the parent shall have of the file. May throw
    /// std::bad_alloc: the file is given up.
    virtual FileOutcome Make(ReadSource source, std::string& made) const = 0;

    /// In the parent, in the order of the inputs: takes what Make made. Throws
    /// std::runtime_error, with a message for people, when it cannot be written.
    virtual void Take(const FoundFile& file, std::string_view made) = 0;

    /// In the parent, when all files have been taken. `complete` is false when the run was
    /// interrupted: nothing may be left behind then.
    virtual void Finish(bool complete) = 0;
};
