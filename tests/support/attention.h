// A scoped attention handler that counts the polls of this thread and can fail at one of them.
#pragma once

#include <vsys/attention.h>

namespace support {

/// What a handler in throwing mode throws.
struct Interrupted {};

/// Counts polls while it lives; the former handler comes back afterwards.
class AttentionCounter {
  public:
    static constexpr int kFailure = 77;
    enum class How { kStatus, kThrow };

    /// With `failAt` above 0 that poll, counted from 1, fails: with the status kFailure, or by an
    /// Interrupted that the handler throws itself. All others are good.
    explicit AttentionCounter(long failAt = 0, How how = How::kStatus)
        : failAt_(failAt), how_(how), former_(vsys_set_attention_handler(&handle, this)) {}
    ~AttentionCounter() { vsys_set_attention_handler(former_.handler, former_.context); }
    AttentionCounter(const AttentionCounter&) = delete;
    AttentionCounter& operator=(const AttentionCounter&) = delete;

    long polls() const { return polls_; }

  private:
    static int handle(void* context) {
        auto& self = *static_cast<AttentionCounter*>(context);
        if (++self.polls_ != self.failAt_) return 0;
        if (self.how_ == How::kThrow) throw Interrupted{};
        return kFailure;
    }

    long polls_ = 0;
    long failAt_;
    How how_;
    vsys_attention_state former_;
};

/// The number of polls that a call makes.
template <class Call>
long pollsOf(Call call) {
    const AttentionCounter counter;
    call();
    return counter.polls();
}

}  // namespace support
