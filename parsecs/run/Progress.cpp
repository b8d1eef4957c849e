#include "parsecs/run/Progress.h"

#include <algorithm>
#include <cstdio>

#include "parsecs/messages/Messages.h"
#include "parsecs/output/Terminal.h"

namespace plugincs {

namespace {

constexpr std::chrono::milliseconds kPause(200);

}  // namespace

Progress::Progress(const Options& options, const std::vector<FoundFile>& files)
    : shown_(HasErrorTerminal() && !GoesToTerminal(options)),
      files_(files.size()),
      next_(begin_ + kPause) {
    for (const FoundFile& file : files) bytes_ += file.bytes;
}

void Progress::Pass(const FoundFile& file) {
    ++passedFiles_;
    passedBytes_ += file.bytes;
    if (!shown_) return;
    const Clock::time_point now = Clock::now();
    if (now < next_) return;
    next_ = now + kPause;
    ShowPassing(Line(std::chrono::duration<double>(now - begin_).count()));
}

std::string Progress::Line(double seconds) const {
    const double passed = std::max(1.0, static_cast<double>(passedBytes_));
    const double left = std::max(0.0, static_cast<double>(bytes_) - passed) * seconds / passed;
    char line[128];
    std::snprintf(line, sizeof line, "%zu of %zu files, %.1f MB/s, %.0f s left", passedFiles_,
                  files_, passed / seconds / 1e6, left);
    return line;
}

}  // namespace plugincs
