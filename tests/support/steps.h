// Operations upon what came out of an archive, one after the other.
#pragma once

#include <functional>

namespace archive {

/// Runs operations. Exceptions of the library and of its base, std::length_error and std::bad_alloc
/// are good answers.
class Steps {
  public:
    virtual ~Steps() = default;

    /// `elements` is how many elements and gains the operands hold and the results need.
    virtual void run(const char* name, double elements, const std::function<void()>& operation);
};

/// Calls `operation` and swallows the good answers.
void tolerate(const std::function<void()>& operation);

}  // namespace archive
