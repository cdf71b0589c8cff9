// Threads that share the tiles of one call.
#include <filt/freqfilt/internal/tile_threads.h>
#include <filt/platform.h>

#include <algorithm>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace mvi {

namespace {

// More than any machine runs at once; each costs the memory of a tile.
constexpr std::int64_t kMostThreads = 256;

// The threads beside the calling one. They end with the object at the latest.
class Helpers {
  public:
    Helpers(TileQueue& queue, TileWork& work) : queue_(queue), work_(work) {}
    Helpers(const Helpers&) = delete;
    Helpers& operator=(const Helpers&) = delete;
    ~Helpers() {
        queue_.stop();
        join();
    }

    // Fewer than `count` when the system gives no more.
    void start(std::int64_t count) {
        threads_.resize(static_cast<std::size_t>(count));
        try {
            for (std::thread& thread : threads_) thread = std::thread([this] { help(); });
        } catch (const std::system_error&) {
        }
    }

    // Waits for all and throws what one of them has thrown.
    void finish() {
        join();
        if (error_) std::rethrow_exception(error_);
    }

  private:
    // A thread of ours has no handler of the application: its polls ask whether the work goes on.
    void help() {
        vsys_set_attention_handler(
            [](void* queue) { return static_cast<TileQueue*>(queue)->isStopped() ? 1 : 0; },
            &queue_);
        try {
            work_.run(queue_, queue_.next());
        } catch (...) {
            keep(std::current_exception());
        }
    }

    // The first error counts: the others come of it.
    void keep(std::exception_ptr error) {
        const std::lock_guard lock(mutex_);
        if (!queue_.isStopped()) error_ = std::move(error);
        queue_.stop();
    }

    void join() {
        for (std::thread& thread : threads_) {
            if (thread.joinable()) thread.join();
        }
    }

    TileQueue& queue_;
    TileWork& work_;
    std::vector<std::thread> threads_;
    std::mutex mutex_;
    std::exception_ptr error_;
};

}  // namespace

void shareTiles(std::int64_t tiles, int threads, TileWork& work) {
    TileQueue queue(1, tiles);
    const std::int64_t most = std::min({tiles, std::int64_t{threads}, kMostThreads});
    if (most < 2) return work.run(queue, 0);
    Helpers helpers(queue, work);
    helpers.start(most - 1);
    work.run(queue, 0);
    helpers.finish();
}

}  // namespace mvi
