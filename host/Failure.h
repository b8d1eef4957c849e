// What went wrong, as its line on standard error says it, and the exit code that it leads to.
#pragma once

#include <cstring>
#include <stdexcept>
#include <string>

/// The worst one is the program's exit code.
enum ExitCode { kDone = 0, kNoText = 1, kBadUsage = 2 };

struct Failure : std::runtime_error {
    Failure(ExitCode exitCode, const std::string& path, const std::string& reason)
        : std::runtime_error(path + ": " + reason), code(exitCode) {}

    /// With the reason that a system call left in errno.
    Failure(ExitCode exitCode, const std::string& path, int error)
        : Failure(exitCode, path, std::string(std::strerror(error))) {}

    ExitCode code;
};

/// Something took not all bytes that were for it.
struct WriteFailure : Failure {
    WriteFailure(const std::string& path, int error) : Failure(kNoText, path, error) {}
};
