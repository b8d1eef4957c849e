// A file that takes its place only when it is complete. Until then it stands beside that place
// under a name ending in ".part", and what the place held before is left alone.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

class OutputFile {
  public:
    /// Makes the folders it needs. Throws a Failure when the file cannot be written.
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Where to write, or to let the module write.
    const std::string& Part() const { return part_; }
    void Put(std::string_view text);

    /// The module reports neither a parse that it gave up nor a full disk: throws the Failure that
    /// the state of the part tells of. `input` is for the message.
    void ExpectRecords(const std::string& input) const;

    void Commit();

  private:
    std::string path_;
    std::string part_;
};
