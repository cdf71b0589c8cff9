// Long calls without the interpreter lock, which Ctrl-C and a cancel function can stop.
#pragma once

#include <vsys/attention.h>

#include <pybind11/pybind11.h>

#include <chrono>

/// While it lives, the attention polls of this thread run Python's signal handlers and ask the
/// cancel function of the current context. Made and destroyed with the interpreter lock held.
class Attention {
  public:
    Attention();
    ~Attention();
    Attention(const Attention&) = delete;
    Attention& operator=(const Attention&) = delete;

  private:
    using Clock = std::chrono::steady_clock;

    static int poll(void* attention);
    int check();
    int askCancel() const;

    pybind11::object cancel_;
    vsys_attention_state application_;
    vsys_attention_state former_;
    Clock::time_point checked_;
};

/// Runs `operation` without the interpreter lock, under attention.
template <class Operation>
decltype(auto) unlocked(Operation operation) {
    const Attention attention;
    const pybind11::gil_scoped_release release;
    return operation();
}

/// Adds the context variable that holds the cancel function.
void bindAttention(pybind11::module_& module);
