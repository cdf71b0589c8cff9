// Operations whose memory and work are bounded by what they work on.
#pragma once

#include <cstddef>

#include "support/steps.h"

namespace archive {

/// Expects of every operation that it costs no more than its operands are worth.
///
/// Objects that came from few bytes may say that they are large without being so. An operation may
/// hold as much memory at once, refused blocks included, as a load of its archive, less the 64 MiB
/// that such a load may pad; and what its planes, gains and images take. It may do as much work as
/// these are large.
class MeteredSteps : public Steps {
  public:
    /// The objects came from an archive of `bytes` bytes.
    explicit MeteredSteps(std::size_t bytes) : bytes_(bytes) {}

    void run(const char* name, double elements, const Operation& operation) override;

  private:
    std::size_t bytes_;
};

}  // namespace archive
