// The strongest waves of a picture.
#include "peaks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "internal/spectrum_peaks.h"
#include "rounding.h"

namespace {

using mvi::SpectrumPeak;

constexpr double kPi = std::numbers::pi;

// A notch narrower than this rings across the picture.
constexpr double kLeastSigma = 0.004;

mvPeak describe(const SpectrumPeak& found) {
    mvPeak peak;
    peak.frequency = std::hypot(found.u, found.v);
    peak.degrees = std::atan2(found.v, found.u) * 180 / kPi;
    peak.amplitude = found.amplitude;
    peak.decibels = found.decibels;
    mvFilterStep notch{.kind = mvFilterKind::gaborReject, .bothSides = true};
    notch.frequency = mfRoundedNumber(std::min(peak.frequency, 0.5));
    notch.degrees = mfNearest(10 * peak.degrees) / 10;
    notch.sigma = notch.sigmaAcross = mfRoundedNumber(std::max(found.width, kLeastSigma));
    notch.plateau = notch.plateauAcross = mfRoundedNumber(notch.sigma / 2);
    peak.steps = {notch};
    peak.arguments = mfFilterArguments(peak.steps);
    return peak;
}

// How many times the wave `base` the wave is, or 0.
long orderOf(const SpectrumPeak& wave, const SpectrumPeak& base) {
    const double ratio = std::hypot(wave.u, wave.v) / std::hypot(base.u, base.v);
    const double order = mfNearest(ratio);
    const double distance = std::hypot(wave.u - order * base.u, wave.v - order * base.v);
    const double tolerance = (order + 1) * base.uncertainty;
    const bool isClose = order >= 2 && distance <= tolerance;
    // Very high orders are met by chance, and so are multiples of what is hardly there.
    const bool isLikely = order <= 8 && base.amplitude > wave.amplitude / 8;
    return isClose && isLikely ? static_cast<long>(order) : 0;
}

// A wave with its overtones, by their places among the peaks.
struct Group {
    double strongest;
    std::vector<std::pair<std::size_t, long>> members;  // and their orders
};

double frequencyOf(const SpectrumPeak& peak) {
    return std::hypot(peak.u, peak.v);
}

// From the lowest wave up, each takes the overtones that no lower one has.
std::vector<Group> grouped(const std::vector<SpectrumPeak>& peaks) {
    std::vector<std::size_t> rising(peaks.size());
    for (std::size_t at = 0; at < rising.size(); ++at) rising[at] = at;
    std::stable_sort(rising.begin(), rising.end(), [&](std::size_t a, std::size_t b) {
        return frequencyOf(peaks[a]) < frequencyOf(peaks[b]);
    });
    std::vector<Group> groups;
    for (const std::size_t at : rising) {
        long order = 0;
        const auto owner = std::find_if(groups.begin(), groups.end(), [&](const Group& group) {
            order = orderOf(peaks[at], peaks[group.members.front().first]);
            return order > 0;
        });
        if (owner == groups.end()) {
            groups.push_back({peaks[at].amplitude, {{at, 1}}});
            continue;
        }
        owner->members.emplace_back(at, order);
        owner->strongest = std::max(owner->strongest, peaks[at].amplitude);
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Group& a, const Group& b) { return a.strongest > b.strongest; });
    return groups;
}

}  // namespace

std::vector<mvPeak> mfPeaks(const mvPelBuffer_const<double>& picture, long most) {
    if (!picture.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
    const std::vector<SpectrumPeak> peaks = mvi::spectrumPeaks(picture, most);
    std::vector<mvPeak> described;
    long number = 0;
    for (const Group& group : grouped(peaks)) {
        for (const auto& [at, order] : group.members) {
            described.push_back(describe(peaks[at]));
            described.back().group = number;
            described.back().order = order;
        }
        ++number;
    }
    return described;
}
