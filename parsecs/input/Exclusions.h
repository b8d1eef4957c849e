// What a walk through folders leaves out: by the user's own patterns, by the .gitignore files on
// the way, nearest first, and by what everybody leaves out. The first that has something to say of
// a file decides.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/input/FoundFile.h"
#include "parsecs/input/IgnoreRules.h"
#include "parsecs/options/Options.h"

namespace plugincs {

class Exclusions {
  public:
    explicit Exclusions(const Options& options);

    /// What is known in a folder of the walk. Lives as long as this.
    struct Folder;

    /// Begins a walk. Of the folders around it, those of the same repository have a say.
    const Folder* Enter(const std::string& input);
    /// Goes on to a folder within.
    const Folder* Enter(const std::string& path, const Folder* around);

    /// Whether what lies in the folder is left out.
    bool LeaveOut(const std::string& path, bool isFolder, const Folder* in) const;

    /// Whether an input is, by the user's own patterns alone.
    bool LeaveOutInput(const std::string& path, bool isFolder) const;

    /// Files of patterns that could not be read.
    const std::vector<InputFailure>& failures() const { return failures_; }

  private:
    /// Patterns, and what of a walk's paths they are about.
    struct Layer {
        IgnoreRules rules;
        std::string before;  // what stands before the rest of a path
        std::size_t cut;     // where that rest begins
        const Layer* next;   // the one that is asked after it

        IgnoreRules::Verdict On(std::string_view path, bool isFolder) const;
    };

    const Layer* AddFile(const std::string& folder, std::string before, std::size_t cut,
                         const Layer* next);

    bool followsFiles_;
    IgnoreRules own_;
    std::deque<Folder> folders_;
    std::deque<Layer> layers_;
    std::vector<InputFailure> failures_;
};

struct Exclusions::Folder {
    const Layer* own;
    const Layer* files;
};

}  // namespace plugincs
