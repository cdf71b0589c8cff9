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
void holdPipeline(const char* group, const Pipeline& work, const Settings& settings) {
    constexpr unsigned kTop = std::numeric_limits<T>::max();
    Contest contest{group,      nameOf(work.kind),
                    work.image, randomPels(work.image.count(), kTop),
                    {},         largestDifference(kAllowedDifference),
                    {}};
    contest.expected = expectedPels(contest.input, work, static_cast<float>(kTop));
    contest.peers.push_back(mvfreqPipeline<T>(work));
    for (const auto& build : fftwBuilds(settings)) addFftwPipelines<T>(contest.peers, work, build);
#ifdef MVFREQ_BENCH_OPENCV
    contest.peers.push_back(opencvPipeline<T>(work));
#endif
    hold(contest, settings);
}

}  // namespace

void holdPipelines(const Settings& settings) {
    const bool bytes = isWanted(settings, "pipeline8"), words = isWanted(settings, "pipeline16");
    if (!bytes && !words) return;
    const std::vector<Size> sizes = {{640, 480}, {1024, 1024}, {1200, 900}, {2048, 2048}};
    for (const Size size : wantedOf(settings, sizes)) {
        for (const auto kind : {FilterKind::BandPass, FilterKind::Gabor, FilterKind::Image}) {
            const Pipeline work(kind, size);
            if (bytes) holdPipeline<unsigned char>("pipeline8", work, settings);
            if (words) holdPipeline<unsigned short>("pipeline16", work, settings);
        }
    }
}

}  // namespace bench
