// Signals and the progress line, both served by the library's attention polls.
#include "attention.h"

#include <base/exception.h>

#include <algorithm>
#include <atomic>

#include "progress_line.h"
#include "system.h"

namespace {

std::atomic<int> signalReceived = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler writes it");

extern "C" void noteSignal(int signal) {
    signalReceived = signal;
}

struct Stage {
    const char* name = "working";
    long polls = 0;
    long expected = 0;
};

thread_local Stage stage;

}  // namespace

Attention::Attention(ProgressLine* line) : line_(line) {
    catchStops(noteSignal);
    former_ = vsys_set_attention_handler(&Attention::poll, this);
}

Attention::~Attention() {
    vsys_set_attention_handler(former_.handler, former_.context);
}

int Attention::poll(void* self) {
    ++stage.polls;
    if (ProgressLine* line = static_cast<Attention*>(self)->line_) line->show();
    return signalReceived;
}

void beginStage(const char* name, long polls) {
    stage = {name, 0, polls};
}

// In so small parts that polls in between hardly count.
void showStage(const char* name, double part) {
    constexpr long kParts = 10'000'000;
    stage = {name, static_cast<long>(part * kParts), kParts};
}

// What is expected is only about right: nothing is done before it is.
std::string stageText() {
    if (stage.expected == 0) return stage.name;
    const long percent = std::min(100 * stage.polls / stage.expected, 99l);
    return std::string(stage.name) + ", " + std::to_string(percent) + " %";
}

bool interrupted() {
    return signalReceived != 0;
}

void checkInterrupted() {
    mfThrowExceptionOnFailure(vsys_attention_check());
}
