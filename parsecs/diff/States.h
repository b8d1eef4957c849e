// The two states of a diff: which files there are in them, and which of them are one file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "parsecs/git/Git.h"
#include "parsecs/input/Inputs.h"
#include "parsecs/options/Options.h"

namespace plugincs {

/// A file in one of the states.
struct StateFile {
    bool isThere = false;
    FoundFile found{};    ///< Where it is read, unless git has it.
    std::string blob{};   ///< Its name there; empty for a file of the system.
    std::string known{};  ///< What git calls it; empty without git.

    /// As rows and lines bear it.
    const std::string& Path() const { return known.empty() ? found.path : known; }
    /// As messages do.
    std::string Label() const;
};

/// A file in both states, or in one of them.
struct FilePair {
    StateFile old;
    StateFile now;
    bool moved = false;  ///< As git finds it.
};

struct States {
    std::vector<FilePair> pairs;  ///< In the order in which they are told.
    std::vector<InputFailure> failures;
    /// What the command line named, but for revisions. The names of the files are in the pairs.
    Inputs old;
    Inputs now;
    std::unique_ptr<BlobReader> blobs;  ///< Null without git.
};

/// Throws UsageError for what cannot be compared.
States FindStates(const Options& options);

}  // namespace plugincs
