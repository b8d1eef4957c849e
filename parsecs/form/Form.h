// What a form of output is to the program: how one file becomes a piece of it, and where the pieces
// go.
//
// Pieces are made in several threads at once. All else happens in the main thread, in the order of
// the inputs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "parsecs/input/FoundFile.h"
#include "parsecs/input/Source.h"

namespace plugincs {

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
    /// The line of the first conditional group of which only one branch was kept, and how many
    /// there are.
    std::int32_t cutLine = 0;
    std::size_t cuts = 0;
};

/// What a form made of one file. Each form has a kind of its own.
struct Piece {
    Piece() = default;
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;
    virtual ~Piece() = default;
};

struct MadeFile {
    FileOutcome outcome;
    std::unique_ptr<Piece> piece;  ///< Null for a file that was given up.
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

    /// For each input: whether it has to be parsed.
    virtual bool Wants(const FoundFile& /*file*/) { return true; }

    /// In any thread, beside calls of all members here: makes the file's piece. What it throws is
    /// that file's failure alone.
    virtual MadeFile Make(ReadSource source) const = 0;

    /// Takes the piece that Make made of a file that was not given up. Throws OutputFailure when
    /// this file's output cannot be written, any other std::runtime_error when none can, with a
    /// message for people that names the output.
    virtual void Take(const FoundFile& file, Piece& piece) = 0;

    /// When all files have been taken. `complete` is false when the run broke off, or when there
    /// were files and all of them failed: nothing may be left behind then. A run that a signal ends
    /// does not come here: see output/Temporary.h. Throws as Take does.
    virtual void Finish(bool complete) = 0;

    /// After that: what it could not look at itself.
    virtual std::vector<InputFailure> Failures() const { return {}; }
};

}  // namespace plugincs
