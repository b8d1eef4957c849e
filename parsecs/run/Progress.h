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

class Progress {
  public:
    /// Shows nothing unless standard error is a terminal, and the output is not.
    Progress(const Options& options, const std::vector<FoundFile>& files);

    /// Counts the file, and now and then says how many there were.
    void Pass(const FoundFile& file);

  private:
    using Clock = std::chrono::steady_clock;

    std::string Line(double seconds) const;

    bool shown_;
    std::size_t files_;
    std::uint64_t bytes_ = 0;
    std::size_t passedFiles_ = 0;
    std::uint64_t passedBytes_ = 0;
    Clock::time_point begin_ = Clock::now();
    Clock::time_point next_;
};

}  // namespace plugincs
