#include "parsecs/run/WorkerProcess.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

namespace {

[[noreturn]] void Fail(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

}  // namespace

WorkerProcess::~WorkerProcess() {
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    close(socket_);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void WorkerProcess::Start(const std::function<void(int)>& work) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) Fail("no connection to a worker");
    process_ = fork();
    if (process_ == 0) {
        close(ends[0]);
        work(ends[1]);
    }
    close(ends[1]);
    if (process_ < 0) {
        close(ends[0]);
        Fail("no worker process");
    }
    socket_ = ends[0];
    for (const FileNumber file : queue_) Send(file);
}

void WorkerProcess::CloseSocket() const {
    if (socket_ >= 0) close(socket_);
}

void WorkerProcess::Order(FileNumber file) {
    queue_.push_back(file);
    Send(file);
}

// Never more than a few are on their way: the socket holds them all. One that does not arrive would
// put the answers out of step with the queue, so that ends the worker, as the next read shows.
void WorkerProcess::Send(FileNumber file) const {
    while (write(socket_, &file, sizeof file) != sizeof file) {
        if (errno == EINTR) continue;
        kill(process_, SIGKILL);
        return;
    }
}

bool WorkerProcess::Receive(std::vector<std::pair<FileNumber, Reply>>& replies) {
    static char piece[262144];
    const ssize_t got = read(socket_, piece, sizeof piece);
    if (got < 0) return errno == EINTR;
    for (std::string_view rest(piece, static_cast<std::size_t>(got)); !rest.empty();) {
        rest.remove_prefix(TakePart(rest));
        if (headSize_ < sizeof head_ || text_.size() < head_.size) continue;
        Reply reply{head_.kind, head_.outcome, std::exchange(text_, {})};
        replies.emplace_back(TakeFirst(), std::move(reply));
        headSize_ = 0;
    }
    return got > 0;
}

// Takes what belongs to the head, or else to the text, of the answer that is coming.
std::size_t WorkerProcess::TakePart(std::string_view bytes) {
    if (headSize_ == sizeof head_) {
        const std::size_t size = std::min(bytes.size(), head_.size - text_.size());
        text_.append(bytes, 0, size);
        return size;
    }
    const std::size_t size = std::min(bytes.size(), sizeof head_ - headSize_);
    std::memcpy(reinterpret_cast<char*>(&head_) + headSize_, bytes.data(), size);
    headSize_ += size;
    if (headSize_ == sizeof head_) text_.reserve(head_.size);
    return size;
}

std::string WorkerProcess::CauseOfDeath() {
    int status = 0;
    close(std::exchange(socket_, -1));
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    headSize_ = 0;
    text_.clear();
    if (!WIFSIGNALED(status)) return "its worker process ended";
    return std::string("its worker process died: ").append(strsignal(WTERMSIG(status)));
}

FileNumber WorkerProcess::TakeFirst() {
    const FileNumber first = queue_.front();
    queue_.pop_front();
    return first;
}
