// Silences the traces that parses write to standard output.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

/// RAII: redirects standard output to the null device.
class QuietStdout {
  public:
    QuietStdout() {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~QuietStdout() {
        std::fflush(stdout);
        dup2(kept_, STDOUT_FILENO);
        close(kept_);
    }
    QuietStdout(const QuietStdout&) = delete;
    QuietStdout& operator=(const QuietStdout&) = delete;

  private:
    int kept_ = dup(STDOUT_FILENO);
};
