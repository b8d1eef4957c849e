#include "parsecs/run/Progress.h"

#include <algorithm>
#include <cstdio>

#include "parsecs/messages/Messages.h"
#include "parsecs/output/Terminal.h"

namespace plugincs {

namespace {

constexpr std::chrono::milliseconds kPause(200);

}  // namespace

std::string ProgressLine(const Passed& passed, const Passed& all, double seconds) {
    const double bytes = std::max(1.0, static_cast<double>(passed.bytes));
    const double left = std::max(0.0, static_cast<double>(all.bytes) - bytes) * seconds / bytes;
    char line[128];
    std::snprintf(line, sizeof line, "%zu of %zu files, %.1f MB/s, %.0f s left", passed.files,
                  all.files, bytes / seconds / 1e6, left);
    return line;
}

Progress::Progress(const Options& options, const std::vector<FoundFile>& files)
    : shown_(HasErrorTerminal() && !GoesToTerminal(options)),
      all_{files.size(), 0},
      next_(begin_ + kPause) {
    for (const FoundFile& file : files) all_.bytes += file.bytes;
}

void Progress::Pass(const FoundFile& file) {
    ++passed_.files;
    passed_.bytes += file.bytes;
    if (!shown_) return;
    const Clock::time_point now = Clock::now();
    if (now < next_) return;
    next_ = now + kPause;
    ShowPassing(ProgressLine(passed_, all_, std::chrono::duration<double>(now - begin_).count()));
}

}  // namespace plugincs
