// Threads that share the tiles of one call.
#pragma once

#include <atomic>
#include <cstdint>

namespace mvi {

/// Hands out the numbers of tiles, each once, until all are gone or the work is stopped.
class TileQueue {
  public:
    /// The numbers `first` .. `end` - 1.
    TileQueue(std::int64_t first, std::int64_t end) : next_(first), end_(end) {}

    /// What `next` gives when there is nothing left to do.
    std::int64_t end() const { return end_; }

    std::int64_t next() {
        if (isStopped()) return end_;
        const std::int64_t number = next_.fetch_add(1, std::memory_order_relaxed);
        return number < end_ ? number : end_;
    }

    void stop() { stopped_.store(true, std::memory_order_relaxed); }
    bool isStopped() const { return stopped_.load(std::memory_order_relaxed); }

  private:
    std::atomic<std::int64_t> next_;
    const std::int64_t end_;
    std::atomic<bool> stopped_ = false;
};

/// What each thread does.
class TileWork {
  public:
    /// Does `tile`, and then what the queue gives; nothing when `tile` is the queue's end.
    virtual void run(TileQueue& queue, std::int64_t tile) = 0;

  protected:
    ~TileWork() = default;
};

/// Runs the work for the tiles 0 .. `tiles` - 1 on up to `threads` threads, the calling one
/// included: it does at least tile 0. Returns when all threads have ended.
///
/// An exception on any thread stops the others at their next tile or attention poll. When there are
/// several, that of the calling thread leaves the call.
void shareTiles(std::int64_t tiles, int threads, TileWork& work);

}  // namespace mvi
