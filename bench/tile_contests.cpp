// Pictures larger than any plane: tiles beside one plane, and threads beside one.
#include <limits>

#include "contest.h"
#include "groups.h"
#include "inputs.h"
#include "machine.h"
#include "pipeline.h"
#include "tiles.h"

namespace bench {
namespace {

using Pel = unsigned char;

constexpr Size kPicture{4000, 3000};
constexpr Size kPlane{1024, 1024};
constexpr long kMargin = 100;
constexpr double kAllowedDifference = 1;

// What others do tile by tile: each is copied to where a pipeline of one plane wants it, and its
// result into the picture.
class Tiled : public PelPeer<Pel> {
  public:
    explicit Tiled(std::unique_ptr<PelPeer<Pel>> pipeline)
        : PelPeer<Pel>(pipeline->name(), kPicture),
          pipeline_(std::move(pipeline)),
          tiles_(tilesOf(kPicture, kPlane, kMargin)),
          in_(static_cast<std::size_t>(kPicture.count())),
          out_(in_.size()) {}

    Pel* inputRow(long y) override { return in_.data() + y * kPicture.width; }
    const Pel* resultRow(long y) const override { return out_.data() + y * kPicture.width; }

    void run() override {
        for (const Tile& tile : tiles_) {
            pipeline_->prepare();
            fetch(tile);
            pipeline_->run();
            deliver(tile);
        }
    }

  private:
    void fetch(const Tile& tile) {
        for (long y = 0; y < kPlane.height; ++y) {
            std::fill_n(pipeline_->inputRow(y), kPlane.width, Pel{0});
        }
        tile.forEachRow(tile.source, kPicture.width, [&](long picture, long plane, long count) {
            std::copy_n(in_.data() + picture, count,
                        pipeline_->inputRow(plane / kPlane.width) + plane % kPlane.width);
        });
    }
    void deliver(const Tile& tile) {
        tile.forEachRow(tile.target, kPicture.width, [&](long picture, long plane, long count) {
            std::copy_n(pipeline_->resultRow(plane / kPlane.width) + plane % kPlane.width, count,
                        out_.data() + picture);
        });
    }

    std::unique_ptr<PelPeer<Pel>> pipeline_;
    std::vector<Tile> tiles_;
    std::vector<Pel> in_, out_;
};

// One plane of the picture's first pels: what a pel costs where nothing is cut. Its answer is
// compared in a contest of its own.
class OnePlane : public Peer {
  public:
    explicit OnePlane(const Pipeline& work)
        : Peer("mvfreq-one-plane"), pipeline_(mvfreqOneCall<Pel>(work)) {}

    void load(const Values& input) override {
        pipeline_->load({input.begin(), input.begin() + kPlane.count()});
    }
    void run() override { pipeline_->run(); }

  private:
    std::unique_ptr<PelPeer<Pel>> pipeline_;
};

Contest contestOfTiles(const char* group, const Pipeline& tile) {
    constexpr unsigned top = std::numeric_limits<Pel>::max();
    Contest contest{group,    nameOf(tile.kind),
                    kPicture, randomPels(kPicture.count(), top),
                    {},       largestDifference(kAllowedDifference),
                    {}};
    contest.expected = expectedOfTiles(contest.input, kPicture, tile, kMargin, top);
    return contest;
}

void holdTiled(const Pipeline& tile, const Pipeline& picture, const Settings& settings) {
    Contest contest = contestOfTiles("tiles", tile);
    Peers& peers = contest.peers;
    peers.push_back(mvfreqOfTiles("mvfreq-one-call", picture, kMargin, 1));
    peers.push_back(std::make_unique<OnePlane>(tile));
    PelPeers<Pel> others;
    others.push_back(mvfreqThreeCalls<Pel>(tile));
    addPipelinesOfOthers(others, tile, settings);
    for (auto& other : others) peers.push_back(std::make_unique<Tiled>(std::move(other)));
    hold(contest, settings);
}

void holdThreads(const Pipeline& tile, const Pipeline& picture, const Settings& settings) {
    Contest contest = contestOfTiles("threads", tile);
    contest.peers.push_back(mvfreqOfTiles("mvfreq-1-thread", picture, kMargin, 1));
    contest.peers.push_back(mvfreqOfTiles("mvfreq-2-threads", picture, kMargin, 2));
    const OnAllCores all;
    hold(contest, settings);
}

}  // namespace

void holdTiles(const Settings& settings) {
    const bool tiles = isWanted(settings, "tiles"), threads = isWanted(settings, "threads");
    if ((!tiles && !threads) || wantedOf(settings, {kPicture}).empty()) return;
    const Pipeline tile(FilterKind::StandardRing, kPlane);
    const Pipeline picture(FilterKind::StandardRing, kPicture, kPlane);
    if (tiles) holdTiled(tile, picture, settings);
    if (threads) holdThreads(tile, picture, settings);
}

}  // namespace bench
