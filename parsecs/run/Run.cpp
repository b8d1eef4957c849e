// The road of a file: it is wanted and ordered, read and made into a piece in some thread, taken
// when those before it are, and reported.
#include "parsecs/run/Run.h"

#include <algorithm>
#include <deque>
#include <exception>

#include "parsecs/messages/Messages.h"
#include "parsecs/output/Temporary.h"
#include "parsecs/run/Progress.h"
#include "parsecs/run/Report.h"
#include "parsecs/run/Workers.h"

namespace plugincs {

namespace {

// What is under way at most: enough for threads to go on while one of them is at a large file.
constexpr std::size_t kMostFiles = 256;
constexpr std::uint64_t kMostBytes = 4U << 20U;  // of sources

class Runner {
  public:
    Runner(const Options& options, const Inputs& inputs, Form& form)
        : files_(inputs.files),
          form_(form),
          traces_(options.traces ? stderr : nullptr),
          progress_(options, files_),
          workers_(ThreadsFor(options, files_.size()) - 1) {
        for (const auto& [path, reason] : inputs.failures) report_.NoteUnreadable(path, reason);
    }

    // All files, unless no output can be written: then it throws.
    void ParseAll() {
        while (true) {
            OrderSome();
            if (ordered_.empty()) return;
            Take(*ordered_.front().file, workers_.Await(ordered_.front().reply));
            bytes_ -= ordered_.front().file->bytes;
            ordered_.pop_front();
        }
    }

    Report& report() { return report_; }

    /// Whether no thread is at work any more, once the run broke off.
    bool Stop() { return workers_.Stop(); }

  private:
    struct Ordered {
        const FoundFile* file;
        std::future<Reply> reply;
    };

    // One file is always under way, however large.
    bool HasRoom() const {
        return ordered_.empty() || (ordered_.size() < kMostFiles && bytes_ < kMostBytes);
    }

    void OrderSome() {
        for (; next_ < files_.size() && HasRoom(); ++next_) {
            const FoundFile& file = files_[next_];
            if (form_.Wants(file)) {
                bytes_ += file.bytes;
                Workers::Task task([this, &file] { return ReplyTo(file, form_, traces_); });
                ordered_.push_back({&file, workers_.Order(std::move(task))});
            } else {
                report_.NoteUnchanged();
                progress_.Pass(file);
            }
        }
    }

    void Take(const FoundFile& file, const Reply& reply) {
        try {
            if (reply.made.piece) form_.Take(file, *reply.made.piece);
            report_.Note(file.path, reply);
        } catch (const OutputFailure& failure) {
            report_.NoteUnwritten(failure.what());
        }
        progress_.Pass(file);
    }

    const std::vector<FoundFile>& files_;
    Form& form_;
    const Traces traces_;
    Progress progress_;
    Report report_;
    std::size_t next_ = 0;
    std::deque<Ordered> ordered_;  // and not taken
    std::uint64_t bytes_ = 0;      // of these
    Workers workers_;
};

bool IsLone(const Options& options, const Inputs& inputs) {
    return options.folder.empty() && inputs.files.size() + inputs.failures.size() == 1;
}

}  // namespace

int Run(const Options& options, const Inputs& inputs, Form& form) {
    Runner runner(options, inputs, form);
    Report& report = runner.report();
    bool brokeOff = false;
    try {
        runner.ParseAll();
        form.Finish(report.IsWorthFinishing());
        for (const auto& [path, reason] : form.Failures()) report.NoteUnreadable(path, reason);
        ClearPassing();
    } catch (const std::exception& failure) {
        form.Finish(false);
        report.NoteUnwritten(ReasonOf(failure));
        brokeOff = true;
    }
    if (!IsLone(options, inputs)) report.Summarise();
    // Nobody waits for a thread whose file may never end.
    if (brokeOff && !runner.Stop()) RemoveTemporariesAndEnd(report.ExitCode());
    return report.ExitCode();
}

}  // namespace plugincs
