// Whole pipelines beside the peers'.
#include <limits>

#include "contest.h"
#include "groups.h"
#include "inputs.h"
#include "pipeline.h"

namespace bench {
namespace {

// A magnitude close to half a pel may be rounded either way.
constexpr double kAllowedDifference = 1;

template <class T>
void holdPipeline(const char* group, FilterKind kind, Size size, const Settings& settings) {
    constexpr unsigned top = std::numeric_limits<T>::max();
    const Pipeline work(kind, size);
    Contest contest{group, nameOf(kind),
                    size,  randomPels(size.count(), top),
                    {},    largestDifference(kAllowedDifference),
                    {}};
    contest.expected = expectedPels(contest.input, work, static_cast<float>(top));
    PelPeers<T> peers;
    peers.push_back(mvfreqOneCall<T>(work));
    peers.push_back(mvfreqThreeCalls<T>(work));
    addPipelinesOfOthers(peers, work, settings);
    for (const auto& build : fftwBuilds(settings)) {
        addFftwPipelines<T>(peers, work, build, {Rigor::Estimate, Place::Beside});
    }
    for (auto& peer : peers) contest.peers.push_back(std::move(peer));
    hold(contest, settings);
}

template <class T>
void holdPipelines(const char* group, const std::vector<FilterKind>& kinds,
                   const std::vector<Size>& sizes, const Settings& settings) {
    if (!isWanted(settings, group)) return;
    for (const FilterKind kind : kinds) {
        if (!isWantedWork(settings, nameOf(kind))) continue;
        for (const Size size : wantedOf(settings, sizes)) {
            holdPipeline<T>(group, kind, size, settings);
        }
    }
}

}  // namespace

template <class T>
void addPipelinesOfOthers(PelPeers<T>& peers, const Pipeline& work, const Settings& settings) {
    for (const auto& build : fftwBuilds(settings)) {
        addFftwPipelines<T>(peers, work, build, {Rigor::Measure, Place::Beside});
        addFftwPipelines<T>(peers, work, build, {Rigor::Patient, Place::Beside});
        addFftwPipelines<T>(peers, work, build, {Rigor::Patient, Place::Over});
        addFftwPruned<T>(peers, work, build);
    }
#ifdef MVFREQ_BENCH_OPENCV
    peers.push_back(opencvPipeline<T>(work));
#endif
}

template void addPipelinesOfOthers(PelPeers<unsigned char>&, const Pipeline&, const Settings&);
template void addPipelinesOfOthers(PelPeers<unsigned short>&, const Pipeline&, const Settings&);

void holdPipelines(const Settings& settings) {
    using Kind = FilterKind;
    const std::vector<Kind> rings = {Kind::NarrowRing, Kind::StandardRing, Kind::WideRing};
    const std::vector<Size> sizes = {
        {512, 512}, {640, 480}, {1024, 1024}, {1200, 900}, {2048, 2048}};
    std::vector<Size> withSmall = sizes;
    withSmall.insert(withSmall.begin(), {256, 256});
    holdPipelines<unsigned char>("pipeline8", rings, withSmall, settings);
    holdPipelines<unsigned char>("pipeline8", {Kind::Gabor, Kind::Image}, sizes, settings);
    holdPipelines<unsigned char>(
        "everywhere", {Kind::RingEverywhere, Kind::RingReject, Kind::GaborReject}, sizes, settings);
    holdPipelines<unsigned short>("pipeline16", {Kind::WideRing, Kind::Gabor, Kind::Image}, sizes,
                                  settings);
}

}  // namespace bench
