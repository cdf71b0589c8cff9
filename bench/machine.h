// The machine that the figures are taken on.
#pragma once

#include <sched.h>

#include <chrono>
#include <string>

#include "settings.h"

namespace bench {

using Clock = std::chrono::steady_clock;

inline double nanosecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

/// Holds this process to one core.
void pinTo(int core);

/// While it lives, this thread and those that it starts may run on any core.
class OnAllCores {
  public:
    OnAllCores();
    ~OnAllCores();
    OnAllCores(const OnAllCores&) = delete;
    OnAllCores& operator=(const OnAllCores&) = delete;

  private:
    cpu_set_t before_;
};

/// While it lives, this thread comes before all others on its core, where it may.
class RealTime {
  public:
    explicit RealTime(bool wanted);
    ~RealTime();
    RealTime(const RealTime&) = delete;
    RealTime& operator=(const RealTime&) = delete;

  private:
    bool wanted_;
};

/// How often the system took a core from this process while it had work to do.
long interruptions();

std::string processorName();

/// Cycles in a nanosecond, by a chain of dependent integer additions.
double clockRate();

/// Single-precision additions in a nanosecond with the widest vectors, none waiting for another.
double additionRate();

}  // namespace bench
