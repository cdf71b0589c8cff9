// Who uses an object: keeps threads that run without the interpreter lock from each other.
#pragma once

#include <pybind11/pybind11.h>

#include <initializer_list>
#include <vector>

/// How an object is in use. It changes only with the interpreter lock held.
struct Usage {
    int readers = 0;
    bool changing = false;

    /// For short calls, which keep the lock. Throws std::runtime_error (RuntimeError) while another
    /// thread's call changes the object; requireUnused also while one reads it.
    void requireUnchanging() const;
    void requireUnused() const;
};

/// The uses of one long call, noted from construction to destruction. Throws what the checks of
/// Usage throw and then notes nothing.
class Uses {
  public:
    /// `changed` is changed, `read` only read; one object may stand for several arguments.
    Uses(std::initializer_list<Usage*> changed, const std::vector<Usage*>& read);
    ~Uses();
    Uses(const Uses&) = delete;
    Uses& operator=(const Uses&) = delete;

  private:
    std::vector<Usage*> changed_;
    std::vector<Usage*> read_;
};
