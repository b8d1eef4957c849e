// The loaded parser module. It reports nothing: its failures are found out and thrown here.
#pragma once

#include <string>
#include <string_view>

#include <PluginCS.h>

class Module {
  public:
    explicit Module(const std::string& path);

    /// Beside the program, as in a build folder, or else where the installed module lies.
    static std::string DefaultPath();

    /// What to read for the input, which can be opened; a Failure says why not.
    static std::string ReadablePath(const std::string& input);

    /// The text of the file, or of standard input for "-"; valid until the next call.
    std::string_view Text(const std::string& input) const;

    /// Has the module write the text, which takes the output's place when it is complete.
    void ParseToFile(const std::string& input, const std::string& output) const;

  private:
    PluginCS_ParseCS parse_;
    PluginCS_parseAllFiles parseToFile_;
    PluginCS_CleanupCS cleanup_;
};
