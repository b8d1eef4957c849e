// How far a run is, for who waits for it at a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "parsecs/form/Form.h"
#include "parsecs/options/Options.h"

namespace plugincs {

struct Passed {
    std::size_t files;
    std::uint64_t bytes;
};

/// How far a run is after so many seconds, on one line.
std::string ProgressLine(const Passed& passed, const Passed& all, double seconds);

class Progress {
  public:
    /// Shows nothing unless standard error is a terminal, and the output is not.
    Progress(const Options& options, const std::vector<FoundFile>& files);

    /// Counts the file, and now and then says how many there were.
    void Pass(const FoundFile& file);

  private:
    using Clock = std::chrono::steady_clock;

    bool shown_;
    Passed all_;
    Passed passed_{0, 0};
    Clock::time_point begin_ = Clock::now();
    Clock::time_point next_;
};

}  // namespace plugincs
