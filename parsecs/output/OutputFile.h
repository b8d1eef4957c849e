// Where the bytes of an output go.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "parsecs/output/Temporary.h"

namespace plugincs {

/// A file appears whole or not at all, under its own name or that of the file that it links to;
/// standard output, devices and pipes take the bytes as they come. All members throw
/// std::runtime_error with a message that names the output.
class OutputFile {
  public:
    /// Opens it; an empty path is standard output.
    explicit OutputFile(const std::string& path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// A reader that has left standard output ends the program as it ends others: by SIGPIPE.
    void Write(std::string_view bytes);

    /// Lets a file appear. Without it, nothing does.
    void Finish();

  private:
    [[noreturn]] void Fail(int error) const;
    void Open(const std::string& path);
    void OpenFile(const std::string& target);

    std::string name_;
    std::optional<TemporaryFile> temporary_;
    int descriptor_ = -1;
};

/// What the links of a path lead to, which need not exist. Throws std::system_error.
std::string TargetOf(const std::string& path);

/// Sees to it that descriptors 0 to 2 are open, if only to fail when they are used: a file that got
/// one of their numbers would be taken for them. Writing where nobody reads, or beyond a limit,
/// fails and no longer ends the program.
void PrepareStandardFiles();

}  // namespace plugincs
