// Signals that end the program.
#pragma once

#include <csignal>

/// While it lives, none of those that ask the program to end reaches this thread or those that it
/// starts.
class SignalsWait {
  public:
    SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    ~SignalsWait();

  private:
    sigset_t before_;
};

/// From now on these signals run `handler`, once, which raises the signal again. Those that are
/// ignored stay so.
void HandleEndingSignals(void (*handler)(int signal));
