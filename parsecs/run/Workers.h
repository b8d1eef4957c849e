// The threads of a run.
#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include "parsecs/options/Options.h"
#include "parsecs/run/Reply.h"

namespace plugincs {

/// How many threads can work at the same time, from 1.
unsigned UsableCores();

/// How many the options allow for so many tasks. With messages there is one: those of several would
/// come in any order.
unsigned ThreadsFor(const Options& options, std::size_t tasks);

/// Threads that work on what is in their queue, first in, first begun. All members are for one
/// thread, which owns this object, and may work too.
class Workers {
  public:
    using Task = std::packaged_task<Reply()>;

    /// Where the system has fewer threads than `helpers`, fewer work.
    explicit Workers(unsigned helpers);
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    /// Drops what is in the queue, and waits for what has been begun.
    ~Workers();

    std::future<Reply> Order(Task task);

    /// Has the calling thread do the first task of the queue; false when that is empty.
    bool Help();

    /// The reply, once it is there; until then the calling thread helps.
    Reply Await(std::future<Reply>& reply);

    /// Has no more tasks begun. Returns whether none is being done: the destructor waits for those.
    bool Stop();

  private:
    using Lock = std::unique_lock<std::mutex>;

    void Work();
    void DoFirst(Lock& lock);

    std::mutex mutex_;  // of all below but the threads
    std::condition_variable changed_;
    std::deque<Task> queue_;
    unsigned busy_ = 0;
    bool stopped_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace plugincs
