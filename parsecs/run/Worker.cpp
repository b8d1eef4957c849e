#include "parsecs/run/Worker.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "parsecs/input/Source.h"
#include "parsecs/output/Temporary.h"
#include "parsecs/run/Reply.h"

namespace {

// Ctrl-C goes to all processes: the parent decides. What it cannot tell any more, the system does.
void EndWithParent() {
    ForgetTemporaries();
    std::signal(SIGINT, SIG_IGN);
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
}

void SendTraces(bool show) {
    const int to = show ? STDERR_FILENO : open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (to < 0 || dup2(to, STDOUT_FILENO) < 0) _exit(1);
}

// Appends what is made of the file, or why there is nothing, to `text`.
void Answer(const Form& form, const FoundFile& file, ReplyHead& head, std::string& text) {
    const std::size_t begin = text.size();
    try {
        head.outcome = form.Make(ReadFound(file), text);
        return;
    } catch (const ReadFailure& failure) {
        head.kind = Reply::Kind::Unreadable;
        text.replace(begin, std::string::npos, failure.what());
    } catch (const std::bad_alloc&) {
        head.kind = Reply::Kind::NoMemory;
        text.replace(begin, std::string::npos, "out of memory");
    }
}

void Send(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = write(socket, bytes.data(), bytes.size());
        if (sent < 0 && errno == EINTR) continue;
        if (sent < 0) _exit(0);  // nobody wants to know any more
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

// The head and the text go out together.
void SendAnswer(int socket, const Form& form, const FoundFile& file, bool showTraces) {
    ReplyHead head{};
    std::string bytes(sizeof head, '\0');
    Answer(form, file, head, bytes);
    // The parent may end this process when it has the answer.
    if (showTraces) std::fflush(stdout);
    head.size = bytes.size() - sizeof head;
    std::memcpy(bytes.data(), &head, sizeof head);
    Send(socket, bytes);
}

// Several at once, as many as were sent.
class Orders {
  public:
    explicit Orders(int socket) : socket_(socket) {}

    FileNumber Next() {
        if (at_ == end_) Receive();
        return numbers_[at_++];
    }

  private:
    void Receive() {
        auto* const to = reinterpret_cast<char*>(numbers_.data());
        std::size_t size = 0;
        while (size == 0 || size % sizeof(FileNumber) != 0) {
            const ssize_t got = read(socket_, to + size, sizeof numbers_ - size);
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) _exit(0);
            size += static_cast<std::size_t>(got);
        }
        at_ = 0;
        end_ = size / sizeof(FileNumber);
    }

    int socket_;
    std::array<FileNumber, 64> numbers_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
};

}  // namespace

void RunWorker(int socket, const Form& form, const std::vector<FoundFile>& files, bool showTraces) {
    EndWithParent();
    SendTraces(showTraces);
    Orders orders(socket);
    while (true) SendAnswer(socket, form, files[orders.Next()], showTraces);
}
