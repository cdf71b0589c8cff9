// Signals and the progress line, both served by the library's attention polls.
#pragma once

#include <vsys/attention.h>

#include <chrono>

/// While it lives, SIGINT and SIGTERM make the attention polls of this thread fail, and work of
/// more than about a second shows a line on standard error when that is a terminal.
class Attention {
  public:
    Attention();
    ~Attention();
    Attention(const Attention&) = delete;
    Attention& operator=(const Attention&) = delete;

  private:
    using Clock = std::chrono::steady_clock;

    static int poll(void* self);
    void showProgress();

    vsys_attention_state former_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point nextLine_ = start_ + std::chrono::seconds(1);
    bool onTerminal_;
    bool lineShown_ = false;
};

/// True once a signal has asked the program to stop.
bool interrupted();

/// Throws when a signal has asked the program to stop; for loops outside the library.
void checkInterrupted();
