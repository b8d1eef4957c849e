#include "parsecs/output/Signals.h"

#include <array>

namespace {

constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void SetHandler(int signal, void (*handler)(int)) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN) return;
    action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_NODEFER | SA_RESETHAND);
    sigaction(signal, &action, nullptr);
}

}  // namespace

SignalsWait::SignalsWait() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : kEndingSignals) sigaddset(&ending, signal);
    pthread_sigmask(SIG_BLOCK, &ending, &before_);
}

SignalsWait::~SignalsWait() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

void HandleEndingSignals(void (*handler)(int)) {
    for (const int signal : kEndingSignals) SetHandler(signal, handler);
}
