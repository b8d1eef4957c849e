#include "host/Streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "host/Failure.h"

int OpenSink(const std::string& path) {
    if (path.empty()) return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int sink = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (sink < 0) throw Failure(kBadUsage, path, errno);
    return sink;
}

void RedirectTraces(bool toStandardError) {
    const char* const target = toStandardError ? "standard error" : "/dev/null";
    const int traces = toStandardError ? STDERR_FILENO : open(target, O_WRONLY | O_CLOEXEC);
    if (dup2(traces, STDOUT_FILENO) < 0) throw Failure(kBadUsage, target, errno);
}

std::string SpoolStandardInput() {
    std::FILE* const spool = std::tmpfile();
    if (spool == nullptr) throw Failure(kBadUsage, "temporary file", errno);
    std::array<char, 65536> bytes{};
    ssize_t size = 0;
    while ((size = read(STDIN_FILENO, bytes.data(), bytes.size())) > 0) {
        WriteAll(fileno(spool), {bytes.data(), static_cast<std::size_t>(size)}, "temporary file");
    }
    if (size < 0) throw Failure(kBadUsage, "standard input", errno);
    dup2(fileno(spool), STDIN_FILENO);
    std::fclose(spool);
    lseek(STDIN_FILENO, 0, SEEK_SET);
    return "/dev/stdin";
}

void WriteAll(int descriptor, std::string_view text, const std::string& name) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) throw WriteFailure(name, errno);
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
}
