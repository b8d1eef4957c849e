// What a run says on standard error: each file that was not parsed to its end, and the counts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "parsecs/run/Reply.h"

namespace plugincs {

class Report {
  public:
    void NoteUnreadable(const std::string& path, const std::string& reason);
    void NoteUnwritten(std::string_view reason);
    void NoteUnchanged() { ++unchanged_; }

    /// A reply, and whether what it made was taken.
    void Note(const std::string& path, const Reply& reply);

    /// Writes the counts.
    void Summarise() const;

    /// Whether something is there to finish: nothing is when all that there was failed.
    bool IsWorthFinishing() const { return Failures() == 0 || done_ + unchanged_ > 0; }
    int ExitCode() const;

  private:
    void NoteStop(const std::string& path, std::int32_t line);
    void NoteCuts(const std::string& path, const FileOutcome& outcome);
    void NoteGivenUp(const std::string& path, const std::string& reason);
    std::size_t Failures() const { return unreadable_ + givenUp_ + unwritten_; }

    std::size_t done_ = 0;
    std::size_t unchanged_ = 0;
    std::size_t stoppedEarly_ = 0;  // of those that are done
    std::size_t cut_ = 0;           // of those that are done
    std::size_t unreadable_ = 0;
    std::size_t givenUp_ = 0;
    std::size_t unwritten_ = 0;
};

}  // namespace plugincs
