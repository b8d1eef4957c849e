// Parses write their traces to standard output; a million parses in a row should not.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

/// Sends standard output nowhere as long as it lives.
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
