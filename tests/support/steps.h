// Operations upon what came out of an archive, one after the other.
#pragma once

namespace archive {

/// A call that is made while the expression lives in which it stands: no memory is taken for it.
class Operation {
  public:
    template <class Call>
    Operation(const Call& call)
        : call_(&call), make_([](const void* made) { (*static_cast<const Call*>(made))(); }) {}
    void operator()() const { make_(call_); }

  private:
    const void* call_;
    void (*make_)(const void*);
};

/// Runs operations. Exceptions of the library and of its base, std::length_error and std::bad_alloc
/// are good answers.
class Steps {
  public:
    virtual ~Steps() = default;

    /// Whether the next operation is to be run; else its operands need not be made.
    virtual bool takesNext() { return true; }

    /// `elements` is how many elements and gains the operands hold and the results need.
    virtual void run(const char* name, double elements, const Operation& operation);

    /// Whether operations are to be run with less memory than they need, too.
    virtual bool isShortOfMemory() { return false; }

    /// Runs the operation so. True when it has failed because of that.
    virtual bool failsWithoutMemory(const Operation& operation);
};

/// Calls `operation` and swallows the good answers.
void tolerate(const Operation& operation);

}  // namespace archive
