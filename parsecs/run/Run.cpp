#include "parsecs/run/Run.h"

#include <deque>

#include "parsecs/run/Messages.h"
#include "parsecs/run/Progress.h"
#include "parsecs/run/Report.h"
#include "parsecs/run/Workers.h"

namespace {

class Runner {
  public:
    Runner(const Options& options, const Inputs& inputs, Form& form)
        : files_(inputs.files),
          form_(form),
          workers_(options.jobs == 0 ? UsableCores() : options.jobs, form, files_, options.traces),
          progress_(options, files_) {
        for (const auto& [path, reason] : inputs.failures) report_.NoteUnreadable(path, reason);
    }

    // All files, unless no output can be written.
    void ParseAll() {
        while (true) {
            OrderSome();
            if (ordered_.empty()) return;
            if (!workers_.IsDone(ordered_.front())) {
                workers_.Wait(ordered_.front());
            } else {
                Take(ordered_.front());
                ordered_.pop_front();
            }
        }
    }

    Report& report() { return report_; }

  private:
    void OrderSome() {
        for (; next_ < files_.size() && workers_.HasRoom(); ++next_) {
            if (form_.Wants(files_[next_])) {
                workers_.Order(next_);
                ordered_.push_back(next_);
            } else {
                report_.NoteUnchanged();
                progress_.Pass(files_[next_]);
            }
        }
    }

    void Take(FileNumber number) {
        const Reply reply = workers_.Take(number);
        try {
            const bool made =
                reply.kind == Reply::Kind::Made && reply.outcome.kind != FileOutcome::Kind::GivenUp;
            if (made) form_.Take(files_[number], reply.text);
            report_.Note(files_[number].path, reply);
        } catch (const OutputFailure& failure) {
            report_.NoteUnwritten(failure.what());
        }
        progress_.Pass(files_[number]);
    }

    const std::vector<FoundFile>& files_;
    Form& form_;
    Workers workers_;
    Progress progress_;
    Report report_;
    FileNumber next_ = 0;
    std::deque<FileNumber> ordered_;  // and not taken
};

bool IsLone(const Options& options, const Inputs& inputs) {
    return options.folder.empty() && inputs.files.size() + inputs.failures.size() == 1;
}

}  // namespace

int Run(const Options& options, const Inputs& inputs, Form& form) {
    Runner runner(options, inputs, form);
    Report& report = runner.report();
    try {
        runner.ParseAll();
        form.Finish(report.IsWorthFinishing());
        ClearPassing();
    } catch (const std::exception& error) {
        form.Finish(false);
        report.NoteUnwritten(error.what());
    }
    if (!IsLone(options, inputs)) report.Summarise();
    return report.ExitCode();
}
