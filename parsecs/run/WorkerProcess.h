// The parent's end of a worker process.
#pragma once

#include <sys/types.h>

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "parsecs/run/Reply.h"
#include "parsecs/run/Worker.h"

class WorkerProcess {
  public:
    WorkerProcess() = default;
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;
    /// Ends the process, whatever it does, and waits for it.
    ~WorkerProcess();

    /// Forks; the new process runs `work` with its socket, which does not return. Throws
    /// std::runtime_error.
    void Start(const std::function<void(int)>& work);

    /// In a process that was forked for another worker.
    void CloseSocket() const;

    int socket() const { return socket_; }

    /// The files that it has not answered yet, in order.
    const std::deque<FileNumber>& queue() const { return queue_; }

    bool isRunning() const { return process_ >= 0; }

    /// How many bytes have come of an answer that is not complete.
    std::size_t partSize() const { return text_.size(); }

    /// Has it parse the file when it has done those before.
    void Order(FileNumber file);

    /// Reads what has come, and appends the answers that are complete to `replies`; their files
    /// leave the queue. False when the process has died.
    bool Receive(std::vector<std::pair<FileNumber, Reply>>& replies);

    /// For one that has died: how. Afterwards it may be started anew, with its queue.
    std::string CauseOfDeath();

    /// Takes the file that it died of from the queue.
    FileNumber TakeFirst();

  private:
    void Send(FileNumber file) const;
    std::size_t TakePart(std::string_view bytes);

    pid_t process_ = -1;
    int socket_ = -1;
    std::deque<FileNumber> queue_;
    ReplyHead head_{};          // of the answer that is coming
    std::size_t headSize_ = 0;  // how much of it has come
    std::string text_;
};
