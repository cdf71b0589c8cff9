// Signals and the progress line.
#include "attention.h"

#include <base/exception.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace {

volatile std::sig_atomic_t signalReceived = 0;

extern "C" void noteSignal(int signal) {
    signalReceived = signal;
}

// Without SA_RESTART, so that waiting for a pipe ends as well.
void catchSignal(int signal) {
    struct sigaction action {};
    action.sa_handler = noteSignal;
    sigaction(signal, &action, nullptr);
}

}  // namespace

Attention::Attention() : onTerminal_(isatty(STDERR_FILENO) == 1) {
    catchSignal(SIGINT);
    catchSignal(SIGTERM);
    former_ = vsys_set_attention_handler(&Attention::poll, this);
}

Attention::~Attention() {
    vsys_set_attention_handler(former_.handler, former_.context);
    if (lineShown_) std::fputs("\r\033[K", stderr);
}

int Attention::poll(void* self) {
    static_cast<Attention*>(self)->showProgress();
    return signalReceived;
}

void Attention::showProgress() {
    const Clock::time_point now = Clock::now();
    if (!onTerminal_ || now < nextLine_) return;
    const std::chrono::duration<double> elapsed = now - start_;
    std::fprintf(stderr, "\rmvfreq: working, %.1f s, Ctrl-C stops", elapsed.count());
    nextLine_ = now + std::chrono::milliseconds(100);
    lineShown_ = true;
}

bool interrupted() {
    return signalReceived != 0;
}

void checkInterrupted() {
    mfThrowExceptionOnFailure(vsys_attention_check());
}
