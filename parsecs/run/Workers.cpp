#include "parsecs/run/Workers.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <thread>

#ifdef __linux__
#include <sched.h>
#endif

namespace {

// Enough for a worker to find the next file when it has done one, few enough to leave no long tail
// behind one large file.
constexpr std::size_t kLongestQueue = 4;

constexpr std::size_t kMostHeld = 64U << 20U;

// What a reply costs apart from its text.
constexpr std::size_t kReplyCost = 256;

}  // namespace

unsigned UsableCores() {
#ifdef __linux__
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) == 0) {
        return static_cast<unsigned>(CPU_COUNT(&cores));
    }
#endif
    return std::max(1U, std::thread::hardware_concurrency());
}

Workers::Workers(unsigned jobs, const Form& form, const std::vector<FoundFile>& files,
                 bool showTraces)
    : form_(form), files_(files), showTraces_(showTraces) {
    while (workers_.size() < jobs) workers_.push_back(std::make_unique<WorkerProcess>());
}

WorkerProcess& Workers::LeastBusy() const {
    return **std::min_element(workers_.begin(), workers_.end(), [](const auto& a, const auto& b) {
        return a->queue().size() < b->queue().size();
    });
}

bool Workers::HoldsMuch() const {
    std::size_t held = held_;
    for (const auto& worker : workers_) held += worker->partSize();
    return held >= kMostHeld;
}

bool Workers::HasRoom() const { return !HoldsMuch() && LeastBusy().queue().size() < kLongestQueue; }

void Workers::Order(FileNumber file) {
    WorkerProcess& worker = LeastBusy();
    if (!worker.isRunning()) Start(worker);
    worker.Order(file);
}

void Workers::Start(WorkerProcess& worker) const {
    worker.Start([this](int socket) {
        // A worker that held another's connection would keep it open when the parent is gone.
        for (const auto& other : workers_) other->CloseSocket();
        RunWorker(socket, form_, files_, showTraces_);
    });
}

void Workers::Wait(FileNumber first) {
    std::vector<pollfd> sockets;
    const bool any = !HoldsMuch();
    for (const auto& worker : workers_) {
        const bool heard = any || worker->queue().empty() || worker->queue().front() == first;
        // A negative number is passed over.
        sockets.push_back({heard ? worker->socket() : -1, POLLIN, 0});
    }
    if (poll(sockets.data(), sockets.size(), -1) < 0) {
        if (errno == EINTR) return;
        throw std::runtime_error(std::string("waiting for workers: ") + std::strerror(errno));
    }
    for (std::size_t i = 0; i < sockets.size(); ++i) {
        if (sockets[i].revents != 0) Listen(*workers_[i]);
    }
}

void Workers::Listen(WorkerProcess& worker) {
    std::vector<std::pair<FileNumber, Reply>> replies;
    const bool lives = worker.Receive(replies);
    for (auto& [file, reply] : replies) Keep(file, std::move(reply));
    if (!lives) Replace(worker);
}

void Workers::Replace(WorkerProcess& worker) {
    const std::string cause = worker.CauseOfDeath();
    if (worker.queue().empty()) return;
    Keep(worker.TakeFirst(), {Reply::Kind::Crashed, {}, cause});
    if (!worker.queue().empty()) Start(worker);
}

void Workers::Keep(FileNumber file, Reply reply) {
    held_ += reply.text.size() + kReplyCost;
    done_.emplace(file, std::move(reply));
}

Reply Workers::Take(FileNumber file) {
    Reply reply = std::move(done_.extract(file).mapped());
    held_ -= reply.text.size() + kReplyCost;
    return reply;
}
