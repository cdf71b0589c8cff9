// Signals and the progress line, both served by the library's attention polls.
#include "attention.h"

#include <base/exception.h>

#include <atomic>
#include <csignal>

#include "progress_line.h"

namespace {

std::atomic<int> signalReceived = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler writes it");

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

Attention::Attention(ProgressLine* line) : line_(line) {
    catchSignal(SIGINT);
    catchSignal(SIGTERM);
    former_ = vsys_set_attention_handler(&Attention::poll, this);
}

Attention::~Attention() {
    vsys_set_attention_handler(former_.handler, former_.context);
}

int Attention::poll(void* self) {
    if (ProgressLine* line = static_cast<Attention*>(self)->line_) line->show();
    return signalReceived;
}

bool interrupted() {
    return signalReceived != 0;
}

void checkInterrupted() {
    mfThrowExceptionOnFailure(vsys_attention_check());
}
