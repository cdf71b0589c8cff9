// Threads that share the tiles of one call.
#include <filt/freqfilt/internal/tile_threads.h>

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "support/threads.h"
#include "support/thrown.h"

namespace {

// Notes which thread did each tile.
class NotingWork : public mvi::TileWork {
  public:
    explicit NotingWork(long tiles) : by(static_cast<std::size_t>(tiles)) {}

    void run(mvi::TileQueue& queue, std::int64_t tile) override {
        for (; tile != queue.end(); tile = queue.next()) {
            auto& mine = by[static_cast<std::size_t>(tile)];
            EXPECT_EQ(mine, std::thread::id()) << "done twice";
            mine = std::this_thread::get_id();
        }
    }

    std::vector<std::thread::id> by;
};

TEST(TileThreads, DoEachTileOnceAndTheFirstOnTheCallingThread) {
    for (const long tiles : {1L, 2L, 5L, 1000L}) {
        for (const int threads : {1, 2, 3, 8, 100000}) {
            NotingWork work(tiles);
            mvi::shareTiles(tiles, threads, work);
            EXPECT_EQ(work.by.front(), std::this_thread::get_id());
            std::set<std::thread::id> all(work.by.begin(), work.by.end());
            EXPECT_FALSE(all.contains(std::thread::id()));
            EXPECT_LE(all.size(), static_cast<std::size_t>(threads));
        }
    }
}

// Throws on the calling thread, on another one, or on both. Of the threads that do not throw at
// least one is at work by then; they wait until they are told to stop.
class ThrowingWork : public mvi::TileWork {
  public:
    ThrowingWork(bool here, bool elsewhere) : here_(here), elsewhere_(elsewhere) {}

    void run(mvi::TileQueue& queue, std::int64_t tile) override {
        if (tile == queue.end()) return;
        const bool isHere = std::this_thread::get_id() == calling_;
        if (isHere ? here_ : elsewhere_.exchange(false)) {
            while (waiting_ == 0) std::this_thread::yield();
            throw mvFrequencyDefs::BadCoord(isHere ? "here" : "elsewhere");
        }
        if (!isHere) ++waiting_;
        while (!queue.isStopped()) std::this_thread::yield();
        EXPECT_EQ(queue.next(), queue.end());
        // Threads of the call's own are told by their attention handlers.
        EXPECT_EQ(vsys_attention_check() != 0, !isHere);
        if (!isHere) mfThrowExceptionOnFailure(vsys_attention_check());
    }

  private:
    const std::thread::id calling_ = std::this_thread::get_id();
    const bool here_;
    std::atomic<bool> elsewhere_;
    std::atomic<int> waiting_ = 0;
};

TEST(TileThreads, StopAllWhenOneThrows) {
    if (!support::kHasThreads) GTEST_SKIP() << "no threads here";
    for (int round = 0; round < 50; ++round) {
        ThrowingWork here(true, false), elsewhere(false, true);
        EXPECT_EQ(support::thrownBy([&] { mvi::shareTiles(100, 4, here); }), "BadCoord: here");
        EXPECT_EQ(support::thrownBy([&] { mvi::shareTiles(100, 4, elsewhere); }),
                  "BadCoord: elsewhere");
    }
}

TEST(TileThreads, LetTheCallingThreadsErrorGoFirst) {
    if (!support::kHasThreads) GTEST_SKIP() << "no threads here";
    for (int round = 0; round < 50; ++round) {
        ThrowingWork both(true, true);
        EXPECT_EQ(support::thrownBy([&] { mvi::shareTiles(100, 4, both); }), "BadCoord: here");
    }
}

}  // namespace
