#include "parsecs/run/Report.h"

#include "parsecs/messages/Messages.h"
#include "parsecs/options/ExitCode.h"

namespace plugincs {

void Report::NoteUnreadable(const std::string& path, const std::string& reason) {
    ++unreadable_;
    Say(path + ": " + reason);
}

void Report::NoteGivenUp(const std::string& path, const std::string& reason) {
    ++givenUp_;
    Say(path + ": given up: " + reason);
}

void Report::NoteUnwritten(std::string_view reason) {
    ++unwritten_;
    Say(reason);
}

void Report::Note(const std::string& path, const Reply& reply) {
    const FileOutcome& outcome = reply.made.outcome;
    if (reply.kind == Reply::Kind::Unreadable) return NoteUnreadable(path, reply.reason);
    if (reply.kind == Reply::Kind::Failed) return NoteGivenUp(path, reply.reason);
    if (outcome.kind == FileOutcome::Kind::GivenUp) {
        return NoteGivenUp(path, "it closes more sections than it opens");
    }
    if (outcome.kind == FileOutcome::Kind::Unchanged) return NoteUnchanged();
    ++done_;
    if (outcome.kind == FileOutcome::Kind::StoppedEarly) NoteStop(path, outcome.line);
    if (outcome.cuts > 0) NoteCuts(path, outcome);
}

void Report::NoteStop(const std::string& path, std::int32_t line) {
    ++stoppedEarly_;
    // The rows of a file may go on where its records stop: then no line of the source is to blame.
    const std::string place = line == 0 ? path : path + ":" + std::to_string(line);
    Say(place + ": stopped early, as braces do not match");
}

void Report::NoteCuts(const std::string& path, const FileOutcome& outcome) {
    ++cut_;
    const std::string others =
        outcome.cuts == 1 ? "" : ", and of " + std::to_string(outcome.cuts - 1) + " more";
    Say(path + ":" + std::to_string(outcome.cutLine) + ": kept one branch of this #if" + others +
        ", as braces in them do not match");
}

void Report::Summarise() const {
    std::string counts = std::to_string(done_) + (done_ == 1 ? " file parsed" : " files parsed");
    const auto add = [&counts](std::size_t count, const char* what) {
        if (count > 0) counts.append(", ").append(std::to_string(count)).append(what);
    };
    add(stoppedEarly_, " of them stopped early");
    add(cut_, " of them without some branches of #if");
    add(unchanged_, " unchanged");
    add(unreadable_, " could not be read");
    add(givenUp_, " given up");
    add(unwritten_, " could not be written");
    Say(counts);
}

int Report::ExitCode() const {
    if (unwritten_ > 0) return kNotWritten;
    return Failures() > 0 ? kSomeFailed : kDone;
}

}  // namespace plugincs
