// Signals and the progress line, both served by the library's attention polls.
#pragma once

#include <vsys/attention.h>

#include <string>

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

/// Names what this thread begins to do, for about so many polls.
void beginStage(const char* name, long polls);

/// Says that of what this thread does under that name a part, from 0 to 1, is done.
void showStage(const char* name, double part);

/// "filtering, 35 %": what this thread is doing, and how far it is by its polls.
std::string stageText();

/// True once a signal has asked the program to stop.
bool interrupted();

/// Throws when a signal has asked the program to stop; for loops outside the library.
void checkInterrupted();
