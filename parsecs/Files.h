// What goes wrong with files, and writing them.
#pragma once

#include <cerrno>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

enum ExitCode { kDone = 0, kNoText = 1, kBadUsage = 2 };

/// Becomes a line on standard error. The worst code is the program's exit code.
struct Failure : std::runtime_error {
    Failure(ExitCode exitCode, const std::string& name,
            const std::string& reason = std::strerror(errno))
        : std::runtime_error(name + ": " + reason), code(exitCode) {}
    ExitCode code;
};

/// Whether the step for this input succeeded; if not, the reason is added to the failures.
bool Attempt(const std::string& input, const std::function<void()>& step,
             std::vector<Failure>& failures);

/// A file that took only a part of the text is left, and the Failure names it.
void WriteFile(const std::string& path, std::string_view text);
