#include "parsecs/git/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

extern "C" char** environ;  // NOLINT(readability-redundant-declaration)

namespace plugincs {

namespace {

[[noreturn]] void Fail(int error) { throw std::system_error(error, std::generic_category()); }

void Close(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

// Not for programs that are started later.
struct Pipe {
    int ends[2] = {-1, -1};

    Pipe() {
        if (pipe(ends) != 0) Fail(errno);
        for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        for (int& end : ends) Close(end);
    }

    int Take(std::size_t end) { return std::exchange(ends[end], -1); }
};

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size());
    for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    return pointers;
}

// Ours, but for variables that are given anew.
std::vector<char*> EnvironmentWith(const std::vector<std::string>& more) {
    std::vector<char*> variables = Pointers(more);
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string_view variable = *each;
        const std::string_view name = variable.substr(0, variable.find('=') + 1);
        bool given = false;
        for (const std::string& other : more) given = given || other.starts_with(name);
        if (!given) variables.push_back(*each);
    }
    variables.push_back(nullptr);
    return variables;
}

// What this program ignores or blocks is nothing to another.
struct Attributes {
    posix_spawnattr_t attributes;

    Attributes() {
        sigset_t set;
        posix_spawnattr_init(&attributes);
        sigemptyset(&set);
        posix_spawnattr_setsigmask(&attributes, &set);
        sigaddset(&set, SIGPIPE);
        sigaddset(&set, SIGXFSZ);
        posix_spawnattr_setsigdefault(&attributes, &set);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { posix_spawnattr_destroy(&attributes); }
};

struct Redirections {
    posix_spawn_file_actions_t actions;

    Redirections(int input, int output) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    }
    Redirections(const Redirections&) = delete;
    Redirections& operator=(const Redirections&) = delete;
    ~Redirections() { posix_spawn_file_actions_destroy(&actions); }
};

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment) {
    Pipe input;
    Pipe output;
    const Redirections redirections(input.ends[0], output.ends[1]);
    const Attributes attributes;
    std::vector<char*> words = Pointers(arguments);
    words.push_back(nullptr);
    std::vector<char*> variables = EnvironmentWith(environment);
    const int error = posix_spawnp(&id_, words[0], &redirections.actions, &attributes.attributes,
                                   words.data(), variables.data());
    if (error != 0) Fail(error);
    input_ = input.Take(1);
    output_ = output.Take(0);
}

ChildProcess::~ChildProcess() {
    CloseInput();
    Close(output_);
    if (id_ > 0) Wait();
}

bool ChildProcess::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(input_, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) return false;
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void ChildProcess::CloseInput() { Close(input_); }

std::size_t ChildProcess::Read(char* to, std::size_t room) {
    while (true) {
        const ssize_t got = read(output_, to, room);
        if (got >= 0) return static_cast<std::size_t>(got);
        if (errno != EINTR) Fail(errno);
    }
}

int ChildProcess::Wait() {
    int status = 0;
    while (waitpid(id_, &status, 0) < 0) {
        if (errno != EINTR) return -1;
    }
    id_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace plugincs
