// How much the libraries do, in a count that is the same whenever they do it again.
#pragma once

#include <cstdint>

namespace support {

/// Counts from its construction on how often control enters a straight run of the libraries' code,
/// outside of the kernel's innermost loops. One at a time, in one thread. One build counts; in the
/// others nothing is ever done.
class WorkMeter {
  public:
    WorkMeter();
    std::uint64_t work() const;

    /// Whether this build counts.
    static bool counts();

  private:
    std::uint64_t before_;
};

}  // namespace support
