// Unfinished files: each is removed with its owner, and when a signal ends the program. They are
// for the main thread, which alone hears such signals.
#pragma once

#include <string>

namespace plugincs {

/// From now on signals that end the program remove all temporary files before. Those that are
/// ignored stay so.
void RemoveTemporariesOnSignals();

/// Removes all temporary files and ends the program at once, whatever its threads do.
[[noreturn]] void RemoveTemporariesAndEnd(int exitCode);

/// A file with a name of its own in the folder of the file whose place it is to take.
class TemporaryFile {
  public:
    /// Makes it and opens it for writing. Throws std::system_error.
    explicit TemporaryFile(const std::string& target);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    /// Removes it, unless it has taken its place. Its descriptor is closed.
    ~TemporaryFile();

    int descriptor() const { return descriptor_; }
    const std::string& path() const { return path_; }

    /// Closes it, and gives it the name of the target, whose mode it takes over; a new file has
    /// what the umask leaves. Throws std::system_error: then the target is what it was.
    void TakePlace();

  private:
    void Make();
    void CopyMode() const;

    std::string target_;
    std::string path_;
    int descriptor_ = -1;
    std::size_t slot_ = 0;
};

}  // namespace plugincs
