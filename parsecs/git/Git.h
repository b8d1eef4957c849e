// What git knows of two states of a repository, asked of git itself.
#pragma once

#include <deque>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/git/ChildProcess.h"

namespace plugincs {

/// git is not there, or cannot do what it was asked for. It has said why itself where the message
/// does not.
struct GitFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A file in one state.
struct GitFile {
    std::string path;  ///< From the top of the work tree; empty where the file is not there.
    std::string blob;  ///< Its name; empty for what the work tree has.
};

struct GitChange {
    GitFile old;
    GitFile now;
};

/// The regular files named *.cs that differ, in the order of their names; what git takes for a
/// renamed file is one. Revisions are what `git diff` takes: two, one against the work tree, or
/// none for HEAD against the work tree. Throws GitFailure.
std::vector<GitChange> ChangedFiles(std::vector<std::string> revisions);

/// Throws GitFailure.
std::string TopOfWorkTree();

/// Reads blobs in the order in which they are asked for.
class BlobReader {
  public:
    BlobReader();

    void Ask(const std::string& blob) { asked_.push_back(blob); }

    /// The first of those that were asked for. Throws ReadFailure for one that is not there,
    /// GitFailure when no other can be read either.
    std::string Take();

  private:
    void SendSome();
    char TakeByte();
    std::string TakeLine();
    std::string TakeBytes(std::size_t size);

    ChildProcess git_;
    std::deque<std::string> asked_;
    std::size_t sent_ = 0;  // of these
    std::string buffer_;
    std::size_t at_ = 0;  // in the buffer
};

}  // namespace plugincs
