#include "parsecs/run/Workers.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#ifdef __linux__
#include <sched.h>
#endif

#include "parsecs/output/Signals.h"

namespace plugincs {

unsigned UsableCores() {
#ifdef __linux__
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) == 0) {
        return static_cast<unsigned>(CPU_COUNT(&cores));
    }
#endif

    return std::max(1U, std::thread::hardware_concurrency());
}

unsigned ThreadsFor(const Options& options, std::size_t tasks) {
    if (options.traces) return 1;
    const std::size_t wanted = options.jobs == 0 ? UsableCores() : options.jobs;
    return static_cast<unsigned>(std::min(wanted, std::max<std::size_t>(1, tasks)));
}

Workers::Workers(unsigned helpers) {
    const SignalsWait wait;  // in the new threads for ever: the main one hears them
    threads_.reserve(helpers);
    try {
        while (threads_.size() < helpers) threads_.emplace_back([this] { Work(); });
    } catch (const std::exception&) {
        // The system has no more threads, or no memory for one.
    }
}

Workers::~Workers() {
    Stop();
    for (std::thread& thread : threads_) thread.join();
}

std::future<Reply> Workers::Order(Task task) {
    std::future<Reply> reply = task.get_future();
    const Lock lock(mutex_);
    queue_.push_back(std::move(task));
    changed_.notify_one();
    return reply;
}

bool Workers::Help() {
    Lock lock(mutex_);
    if (queue_.empty()) return false;
    DoFirst(lock);
    return true;
}

Reply Workers::Await(std::future<Reply>& reply) {
    constexpr std::chrono::seconds kNow(0);
    while (reply.wait_for(kNow) != std::future_status::ready && Help()) {
    }
    return reply.get();
}

bool Workers::Stop() {
    const Lock lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
    return busy_ == 0;
}

void Workers::Work() {
    Lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return stopped_ || !queue_.empty(); });
        if (stopped_) return;
        DoFirst(lock);
    }
}

void Workers::DoFirst(Lock& lock) {
    Task task = std::move(queue_.front());
    queue_.pop_front();
    ++busy_;
    lock.unlock();
    task();
    lock.lock();
    --busy_;
}

}  // namespace plugincs
