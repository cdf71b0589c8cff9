// A line about work that lasts.
#include "progress_line.h"

#include <cstdio>
#include <utility>

#include "printable.h"
#include "system.h"

namespace {

// A line that is broken could not be taken away again.
int roomOfLine() {
    const int columns = columnsOfErrors().value_or(0);
    return columns > 1 ? columns - 1 : 79;
}

}  // namespace

ProgressLine::ProgressLine(std::function<std::string()> state)
    : state_(std::move(state)), onTerminal_(errorsAreTerminal()) {}

ProgressLine::~ProgressLine() {
    hide();
}

void ProgressLine::show() {
    if (!onTerminal_) return;
    const std::lock_guard lock(mutex_);
    const Clock::time_point now = Clock::now();
    if (now < nextLine_) return;
    const std::chrono::duration<double> elapsed = now - start_;
    char text[256];
    std::snprintf(text, sizeof text, "mvfreq: %s, %.1f s, Ctrl-C stops", state_().c_str(),
                  elapsed.count());
    std::fprintf(stderr, "\r\033[K%.*s", roomOfLine(), text);
    nextLine_ = now + std::chrono::milliseconds(100);
    lineShown_ = true;
}

void ProgressLine::say(const std::string& text) {
    const std::lock_guard lock(mutex_);
    clear();
    std::fprintf(stderr, "%s\n", printable(text).c_str());
}

void ProgressLine::hide() {
    const std::lock_guard lock(mutex_);
    clear();
}

void ProgressLine::clear() {
    if (std::exchange(lineShown_, false)) std::fputs("\r\033[K", stderr);
}
