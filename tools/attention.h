// Signals and the progress line, both served by the library's attention polls.
#pragma once

#include <vsys/attention.h>

class ProgressLine;

/// While it lives, SIGINT and SIGTERM make the attention polls of this thread fail, and every poll
/// gives the progress line, if there is one, its turn.
class Attention {
  public:
    explicit Attention(ProgressLine* line = nullptr);
    ~Attention();
    Attention(const Attention&) = delete;
    Attention& operator=(const Attention&) = delete;

  private:
    static int poll(void* self);

    ProgressLine* line_;
    vsys_attention_state former_;
};

/// True once a signal has asked the program to stop.
bool interrupted();

/// Throws when a signal has asked the program to stop; for loops outside the library.
void checkInterrupted();
