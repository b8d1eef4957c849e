// All worker processes of a run.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "parsecs/run/WorkerProcess.h"

/// How many processes can work at the same time, from 1.
unsigned UsableCores();

/// Processes start when there is work for them. One that dies costs the file that it was at; its
/// successor goes on behind that file.
class Workers {
  public:
    /// `form` and `files` must outlive it.
    Workers(unsigned jobs, const Form& form, const std::vector<FoundFile>& files, bool showTraces);

    /// Whether another file may be ordered: no queue is long, and not too much has been made that
    /// waits for the files before it.
    bool HasRoom() const;

    /// Files come in the order of their numbers. Throws std::runtime_error without a process.
    void Order(FileNumber file);

    /// Waits for news of any worker. `first` is the first file that is awaited: its worker is
    /// listened to even when much has been made already, so that the run always goes on.
    void Wait(FileNumber first);

    bool IsDone(FileNumber file) const { return done_.contains(file); }
    Reply Take(FileNumber file);

  private:
    bool HoldsMuch() const;
    WorkerProcess& LeastBusy() const;
    void Start(WorkerProcess& worker) const;
    void Listen(WorkerProcess& worker);
    void Replace(WorkerProcess& worker);
    void Keep(FileNumber file, Reply reply);

    const Form& form_;
    const std::vector<FoundFile>& files_;
    bool showTraces_;
    std::vector<std::unique_ptr<WorkerProcess>> workers_;
    std::unordered_map<FileNumber, Reply> done_;
    std::size_t held_ = 0;  // about so many bytes in `done_`
};
