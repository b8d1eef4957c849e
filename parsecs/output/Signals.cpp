#include "parsecs/output/Signals.h"

#include <unistd.h>

#include <array>

namespace plugincs {

namespace {

// The program's own faults, which belong to the thread that made them.
constexpr std::array kFaults{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS};

// What ends a program, from outside. SIGPIPE and SIGXFSZ are ignored: see PrepareStandardFiles.
constexpr std::array kFromOutside{
    SIGINT, SIGTERM, SIGHUP,    SIGQUIT, SIGUSR1, SIGUSR2, SIGALRM, SIGXCPU, SIGVTALRM, SIGPROF,
#ifdef __linux__
    SIGIO,  SIGPWR,  SIGSTKFLT,
#endif
};

template <typename Do>
void ForEachFromOutside(Do act) {
    for (const int signal : kFromOutside) act(signal);
#ifdef SIGRTMIN
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) act(signal);
#endif
}

void SetHandler(int signal, void (*handler)(int)) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_DFL) return;
    action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_NODEFER | SA_RESETHAND);
    sigaction(signal, &action, nullptr);
}

}  // namespace

SignalsWait::SignalsWait() {
    sigset_t ending;
    sigemptyset(&ending);
    ForEachFromOutside([&ending](int signal) { sigaddset(&ending, signal); });
    pthread_sigmask(SIG_BLOCK, &ending, &before_);
}

SignalsWait::~SignalsWait() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

void HandleEndingSignals(void (*handler)(int)) {
    for (const int signal : kFaults) SetHandler(signal, handler);
    ForEachFromOutside([handler](int signal) { SetHandler(signal, handler); });
}

void EndBy(int signal) {
    std::signal(signal, SIG_DFL);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
    raise(signal);
    constexpr int kEndedBySignal = 128;
    _exit(kEndedBySignal + signal);
}

}  // namespace plugincs
