// Another program, run beside this one.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plugincs {

/// Started without a shell: arguments are taken as they are. Its standard error is ours. When this
/// object goes, it waits for the program to end, which its closed pipes bring about.
class ChildProcess {
  public:
    /// Looks the program up where PATH says. `environment` is added to ours. Throws
    /// std::system_error when it cannot be started.
    ChildProcess(const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// To its standard input; false when it does not listen any more.
    bool Write(std::string_view bytes);
    void CloseInput();

    /// From its standard output: how many bytes came, none at its end. Throws std::system_error.
    std::size_t Read(char* to, std::size_t room);

    /// Waits for its end; its exit code, or -1 when a signal ended it.
    int Wait();

  private:
    pid_t id_ = -1;
    int input_ = -1;
    int output_ = -1;
};

}  // namespace plugincs
