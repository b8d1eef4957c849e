// The loaded parser module.
#pragma once

#include <string>
#include <string_view>

#include "plugin/PluginCS.h"

class Module {
  public:
    /// Throws a Failure when the file cannot be loaded or has not the functions.
    explicit Module(const std::string& path);

    /// Beside the program, as in a build folder, or else where the installed module lies.
    static std::string DefaultPath();

    /// The text of the file, valid until the next call. Throws a Failure when none came back.
    std::string_view Text(const std::string& path) const;

    /// Leaves `output` as it is when the module gives the parse up or cannot open it.
    void ParseToFile(const std::string& input, const std::string& output) const;

  private:
    PluginCS_ParseCS parse_;
    PluginCS_parseAllFiles parseToFile_;
    PluginCS_CleanupCS cleanup_;
};
