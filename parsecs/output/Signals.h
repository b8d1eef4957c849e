// Signals that end the program.
#pragma once

#include <csignal>

namespace plugincs {

/// While it lives, no signal from outside that would end the program reaches this thread or those
/// that it starts.
class SignalsWait {
  public:
    SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    ~SignalsWait();

  private:
    sigset_t before_;
};

/// From now on all signals that end the program, its own faults among them, run `handler` first,
/// once. Those that are ignored, or have a handler, stay so.
void HandleEndingSignals(void (*handler)(int signal));

/// Ends the program by the signal, whoever may have blocked it. For handlers, too.
[[noreturn]] void EndBy(int signal);

}  // namespace plugincs
