// The kernel beside the peers, and its paths beside each other.
#include <algorithm>

#include "contest.h"
#include "groups.h"
#include "inputs.h"
#include "transforms.h"

namespace bench {
namespace {

// Factors that grow by a recurrence in single precision cost this library accuracy at long lines.
constexpr double kAllowedError = 1e-4;

const std::vector<Size> kSquares = {{64, 64},   {128, 128},   {256, 256},
                                    {512, 512}, {1024, 1024}, {2048, 2048}};

std::vector<Size> squaresAndOblongs() {
    std::vector<Size> sizes = kSquares;
    sizes.insert(sizes.end(), {{1024, 256}, {256, 1024}, {2048, 64}, {64, 2048}});
    return sizes;
}

Contest complexContest(const char* group, Size size) {
    Contest contest{
        group, "c2c", size, randomValues(2 * size.count()), {}, relativeError(kAllowedError), {}};
    contest.expected = expectedComplex(contest.input, size);
    return contest;
}

Contest realContest(const char* group, Size size) {
    Contest contest{
        group, "real", size, randomValues(size.count()), {}, relativeError(kAllowedError), {}};
    contest.expected = expectedReal(contest.input, size);
    return contest;
}

// The copy of a plane shows what one pass over it costs at least.
void addCopyOfPlane(Contest& contest) {
    contest.peers.push_back(copy(8 * contest.size.count()));
}

// All that plans of these rigors offer in these places.
void addPlanned(Peers& peers, Size size, const std::shared_ptr<const Fftw>& build,
                const std::vector<Place>& places, decltype(addFftwComplex)* add) {
    for (const Rigor rigor : {Rigor::Measure, Rigor::Patient}) {
        for (const Place place : places) add(peers, size, build, {rigor, place});
    }
}

void holdComplex(Size size, const Settings& settings) {
    Contest contest = complexContest("c2c", size);
    Peers& peers = contest.peers;
    peers.push_back(mvfreqComplex(size, mvi::bestKernelPath()));
    for (const auto& build : fftwBuilds(settings)) {
        addPlanned(peers, size, build, {Place::Over, Place::Beside}, addFftwComplex);
        addFftwComplexTwoStep(peers, size, build);
        addFftwComplex(peers, size, build, {Rigor::Estimate, Place::Over});
    }
    peers.push_back(kissfftComplex(size));
#ifdef MVFREQ_BENCH_OPENCV
    peers.push_back(opencvComplex(size));
#endif
#ifdef MVFREQ_BENCH_FFMPEG
    peers.push_back(ffmpegComplex(size));
#endif
    addCopyOfPlane(contest);
    hold(contest, settings);
}

void holdComplexCopy(Size size, const Settings& settings) {
    Contest contest = complexContest("copy", size);
    Peers& peers = contest.peers;
    peers.push_back(mvfreqComplexCopy(size));
    for (const auto& build : fftwBuilds(settings)) {
        addPlanned(peers, size, build, {Place::BesideKept}, addFftwComplex);
        addFftwComplex(peers, size, build, {Rigor::Estimate, Place::BesideKept});
    }
    peers.push_back(kissfftComplex(size));
#ifdef MVFREQ_BENCH_OPENCV
    peers.push_back(opencvComplexCopy(size));
#endif
#ifdef MVFREQ_BENCH_FFMPEG
    peers.push_back(ffmpegComplexCopy(size));
#endif
    hold(contest, settings);
}

void holdReal(Size size, const Settings& settings) {
    Contest contest = realContest("real", size);
    Peers& peers = contest.peers;
    peers.push_back(mvfreqReal(size, mvi::bestKernelPath()));
    for (const auto& build : fftwBuilds(settings)) {
        addPlanned(peers, size, build, {Place::Over, Place::Beside}, addFftwReal);
        addFftwRealTwoStep(peers, size, build);
        addFftwReal(peers, size, build, {Rigor::Estimate, Place::Beside});
    }
#ifdef MVFREQ_BENCH_OPENCV
    peers.push_back(opencvReal(size));
#endif
#ifdef MVFREQ_BENCH_FFMPEG
    peers.push_back(ffmpegReal(size));
#endif
    addCopyOfPlane(contest);
    hold(contest, settings);
}

void holdPaths(Size size, const Settings& settings) {
    Contest complex = complexContest("path", size);
    Contest real = realContest("path", size);
    for (const mvi::KernelPath* path : mvi::KernelPathList()) {
        if (!path->isSupported()) continue;
        complex.peers.push_back(mvfreqComplex(size, *path));
        real.peers.push_back(mvfreqReal(size, *path));
    }
    auto builds = fftwBuilds(settings);
    if (const auto limited = fftwLimitedToSse2(settings)) builds.push_back(limited);
    for (const auto& build : builds) {
        addFftwComplex(complex.peers, size, build, {Rigor::Measure, Place::Over});
        addFftwReal(real.peers, size, build, {Rigor::Measure, Place::Beside});
    }
    hold(complex, settings);
    hold(real, settings);
}

// An eighth of the rows holds data, as after a filter of one lobe.
void holdBand(Size size, const Settings& settings) {
    const long low = size.height / 2, high = low + size.height / 8 - 1;
    Contest contest{
        "band", "inverse", size, randomValues(2 * size.count()), {}, relativeError(kAllowedError),
        {}};
    std::fill(contest.input.begin() + (high - low + 1) * 2 * size.width, contest.input.end(), 0.0f);
    contest.expected = expectedComplex(contest.input, size, -1);
    contest.peers.push_back(mvfreqInverse("mvfreq an eighth", size, low, high));
    contest.peers.push_back(mvfreqInverse("mvfreq all rows", size, 0, size.height));
    hold(contest, settings);
}

}  // namespace

void holdTransforms(const Settings& settings) {
    const auto each = [&](const char* group, std::vector<Size> sizes, auto holdOne) {
        if (!isWanted(settings, group)) return;
        for (const Size size : wantedOf(settings, std::move(sizes))) holdOne(size, settings);
    };
    each("c2c", squaresAndOblongs(), holdComplex);
    each("copy", squaresAndOblongs(), holdComplexCopy);
    each("real", squaresAndOblongs(), holdReal);
    each("path", kSquares, holdPaths);
    each("band", {{512, 512}, {1024, 1024}, {2048, 2048}}, holdBand);
}

}  // namespace bench
