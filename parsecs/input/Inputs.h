// The files that the command line names: found before any of them is read, in a fixed order.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "parsecs/input/FoundFile.h"
#include "parsecs/options/Options.h"

namespace plugincs {

struct Inputs {
    std::vector<FoundFile> files;    ///< Each once, folders in the order of their names' bytes.
    std::vector<std::string> named;  ///< As they were given, those of the list among them.
    std::vector<InputFailure> failures;
    std::unordered_set<std::string> leftOut;  ///< Files, and folders with all that is in them.

    /// Whether the path, a normal one, is left out.
    bool LeaveOut(const std::string& path) const;

    /// Whether the path leads to one of the files, be it by another name.
    bool Holds(const std::string& path) const;

    /// Whether standard output is one of the files.
    bool HoldStandardOutput() const;
};

/// Finds the files of all inputs. A folder stands for the regular files named *.cs at any depth
/// below it, but for what is left out (see Exclusions.h); links to folders are not followed there,
/// so that no walk is endless or finds a file twice. What cannot be looked at is listed among the
/// failures. Throws UsageError when the list of inputs cannot be read.
Inputs FindInputs(const Options& options);

}  // namespace plugincs
