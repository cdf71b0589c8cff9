// The ring: its radial profile and its geometry.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/ring.h>
#include <filt/freqfilt/internal/support.h>
#include <internal/product.h>

#include <algorithm>
#include <cmath>

namespace mvi {

std::int32_t ringSupport(const mvRingParameters& ring) {
    const auto width = static_cast<double>(ring.size.x);
    return oddSide(product(width * ring.sigma, 4.0) + product(width, ring.plateau) +
                   product(width, 0.05));
}

void fillRingProfile(const mvRingParameters& ring, bool complement, mvFilterResponse& profile) {
    const auto width = static_cast<double>(ring.size.x);
    const double sigmaBins = width * ring.sigma;
    const double plateauBins = product(width, ring.plateau);
    const double divisor = -2.0 * (sigmaBins * sigmaBins);
    const double c = divisor == 0.0 ? 0.0 : 1.0 / divisor;
    float* gain = profile.data();
    float* const end = gain + profile.size();
    for (double i = 0.0; gain != end; ++gain, ++i) {
        const double d = std::max(product(i, 0.03125) - plateauBins, 0.0);
        const double falloff = std::exp(d * d * c);
        *gain = static_cast<float>(complement ? 1.0 - falloff : falloff);
    }
}

Ring::Ring(const mvRingParameters& ring, const mvFilterResponse& profile, Inside inside)
    : width_(ring.size.x),
      height_(ring.size.y),
      entries_(static_cast<std::int64_t>(profile.size())),
      inside_(inside),
      radius_(static_cast<float>(static_cast<double>(width_) * ring.frequency)),
      line_(isEmpty() ? 0 : static_cast<std::size_t>(width_)),
      byDistance_(isEmpty() ? 0 : static_cast<std::size_t>(width_ - width_ / 2 + 1)) {
    profile_ = {profile.data(), static_cast<std::int64_t>(profile.floats()),
                static_cast<double>(radius_),
                static_cast<double>(static_cast<float>(profile.height()))};
    const double aspect = static_cast<double>(height_) * (1.0 / static_cast<double>(width_));
    rowScale_ = 1.0 / (aspect * aspect);
    rowLimit_ = truncate<std::int32_t>(product(static_cast<double>(radius_), aspect) +
                                       static_cast<double>(profile.width()));
    const auto support = static_cast<float>(profile.width());
    const float outer = support + radius_;
    const float inner = radius_ - support;
    outer2_ = truncate<std::int32_t>(outer * outer);
    inner2_ = inner >= 0.0f ? truncate<std::int32_t>(inner * inner) : -1;
}

// The part of the squared distance that the row contributes, truncated.
std::int64_t Ring::rowTerm(std::int64_t rowDistance) const {
    return truncate<std::int32_t>(static_cast<double>(rowDistance * rowDistance) * rowScale_);
}

// How far beyond the ring's radius an element of squared distance r2 lies.
double Ring::beyondRadius(std::int64_t r2) const {
    return std::sqrt(static_cast<double>(r2)) - profile_.radius;
}

bool Ring::isInside(std::int64_t r2) const {
    if (inside_ == Inside::bySquares) return r2 > inner2_ && r2 < outer2_;
    const double entry = std::abs(beyondRadius(r2) * profile_.samplesPerBin);
    return !(entry >= static_cast<double>(entries_)) && entries_ > 0;
}

// Outside and nearer to DC than the ring.
bool Ring::isBelow(std::int64_t r2) const {
    return !isInside(r2) && (inside_ == Inside::bySquares ? r2 <= inner2_ : beyondRadius(r2) < 0.0);
}

Ring::Runs Ring::prepareLine(std::int64_t rowDistance) {
    const std::int64_t term = rowTerm(rowDistance);
    const std::int64_t half = width_ / 2, farthest = width_ - half;
    const auto r2 = [&](std::int64_t x) { return x * x + term; };

    // The column distances begin .. end - 1 are inside.
    std::int64_t begin = 0;
    while (begin <= farthest && isBelow(r2(begin))) ++begin;
    std::int64_t end = begin;
    while (end <= farthest && isInside(r2(end))) ++end;

    const Runs runs{std::min(begin, half), std::min(end, half), std::min(width_, width_ - end + 1),
                    std::min(width_, width_ - begin + 1)};
    bestKernelPath().radialGains(profile_, term, static_cast<long>(begin), static_cast<long>(end),
                                 byDistance_.data());
    for (std::int64_t x = begin; x < end; ++x) {
        const float value = byDistance_[static_cast<std::size_t>(x)];
        if (x < half) line_[static_cast<std::size_t>(x)] = value;
        if (x > 0) line_[static_cast<std::size_t>(width_ - x)] = value;
    }
    return runs;
}

namespace {

// The gains of the columns from 0 on of a row, `outside` where the ring has none.
void fillRow(Ring& ring, std::int64_t distance, float outside, std::vector<float>& gains) {
    const std::int64_t half = ring.width() / 2, columns = static_cast<std::int64_t>(gains.size());
    std::fill(gains.begin(), gains.end(), outside);
    if (ring.isBeyond(distance)) return;
    const Ring::Runs runs = ring.prepareLine(distance);
    std::copy(ring.gains() + runs.firstBegin, ring.gains() + runs.firstEnd,
              gains.data() + runs.firstBegin);
    if (columns > half && runs.secondBegin <= half && half < runs.secondEnd) {
        gains.back() = ring.gains()[half];
    }
}

// How many columns from 0 on the ring reaches: no row has more than that of DC.
long columnsReached(Ring& ring) {
    const Ring::Runs runs = ring.prepareLine(0);
    const std::int64_t half = ring.width() / 2;
    return static_cast<long>(runs.secondBegin <= half ? half + 1 : runs.firstEnd);
}

}  // namespace

SpectrumGains spectrumGains(Ring& ring, bool keepsOutside, std::int64_t dcRadius) {
    const mvPair<long> size(static_cast<long>(ring.width()), static_cast<long>(ring.height()));
    const float outside = keepsOutside ? 1.0f : kClearedGain;
    const long columns = keepsOutside ? size.x / 2 + 1 : columnsReached(ring);
    SpectrumGains result(size, columns);
    std::vector<float> row(static_cast<std::size_t>(columns));
    for (long v = 0; v <= size.y / 2; ++v) {
        if (!keepsOutside && ring.isBeyond(v)) break;
        fillRow(ring, v, outside, row);
        if (v < dcRadius) {
            std::fill_n(row.begin(), std::min<std::int64_t>(dcRadius, columns), outside);
        }
        result.enter(v, (size.y - v) % size.y, row);
    }
    result.finish();
    return result;
}

}  // namespace mvi
