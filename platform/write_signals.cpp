#include "platform/write_signals.h"

#include <pthread.h>

#include <atomic>
#include <csignal>
#include <mutex>

namespace varo {

namespace {

constexpr int kEndingSignals[] = {SIGTERM, SIGHUP, SIGINT};

std::atomic<int> savesUnderway{0};
std::atomic<int> heldSignal{0};
struct sigaction actionBefore[NSIG];  // as each ending signal was handled before ours

bool IsPlain(const struct sigaction& action, void (*handler)(int)) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == handler;
}

// Async-signal-safe: what the program did with `signal` before it prepared for writing.
void ActAsBefore(int signal) {
    const struct sigaction& before = actionBefore[signal];
    if (IsPlain(before, SIG_DFL)) {
        ::sigaction(signal, &before, nullptr);
        sigset_t only;
        ::sigemptyset(&only);
        ::sigaddset(&only, signal);
        ::pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
        ::raise(signal);
        return;
    }
    if ((before.sa_flags & SA_SIGINFO) != 0)
        before.sa_sigaction(signal, nullptr, nullptr);
    else
        before.sa_handler(signal);
}

extern "C" void OnEndingSignal(int signal) {
    if (savesUnderway.load() > 0) {
        heldSignal.store(signal);
        return;
    }
    ActAsBefore(signal);
}

void InstallEndingSignalHandlers() {
    for (const int signal : kEndingSignals) {
        ::sigaction(signal, nullptr, &actionBefore[signal]);
        // An ignored signal (nohup) stays ignored.
        if (IsPlain(actionBefore[signal], SIG_IGN)) continue;
        struct sigaction ours {};
        ours.sa_handler = OnEndingSignal;
        ours.sa_flags = SA_RESTART;
        ::sigemptyset(&ours.sa_mask);
        ::sigaction(signal, &ours, nullptr);
    }
}

}  // namespace

void PrepareFileWrites() {
    static std::once_flag prepared;
    std::call_once(prepared, [] {
        std::signal(SIGXFSZ, SIG_IGN);
        InstallEndingSignalHandlers();
    });
}

HeldEndingSignals::HeldEndingSignals() {
    PrepareFileWrites();
    ++savesUnderway;
}

HeldEndingSignals::~HeldEndingSignals() {
    if (--savesUnderway > 0) return;
    if (const int signal = heldSignal.exchange(0)) ActAsBefore(signal);
}

}  // namespace varo
