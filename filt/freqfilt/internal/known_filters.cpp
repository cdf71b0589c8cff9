// What is known of a filter beyond its interface: its plane and its reach.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/image_filter.h>
#include <filt/freqfilt/internal/filter_access.h>
#include <filt/freqfilt/internal/image_reach.h>
#include <filt/freqfilt/internal/known_filters.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace mvi {

namespace {

// Four standard deviations of the envelope that a Gaussian of this width has in the image.
long envelope(double reach) {
    return std::max<long>(truncate<std::int32_t>(std::ceil(reach)), 1);
}

mvPair<long> reachOf(const mvRingParameters& ring) {
    const long reach = envelope(2.0 / (std::numbers::pi * ring.sigma));
    return {reach, reach};
}

mvPair<long> reachOf(const mvLobeParameters& lobe) {
    const double cosine = std::cos(lobe.angle.toDouble());
    const double sine = std::sin(lobe.angle.toDouble());
    const auto reach = [&](double along, double across) {
        const double a = along / lobe.sigma.x, b = across / lobe.sigma.y;
        return envelope(2.0 / std::numbers::pi * std::sqrt(a * a + b * b));
    };
    return {reach(cosine, sine), reach(sine, cosine)};
}

// Calls visit(...) with what one of the five filters is made of; `otherwise` for other filters.
template <class Result, class Visit>
Result visitKnown(const mvFrequencyFilter& filter, Result otherwise, Visit visit) {
    if (const auto* ring = dynamic_cast<const mvRingFilter*>(&filter)) {
        return visit(FilterAccess::parameters(*ring));
    }
    if (const auto* lobe = dynamic_cast<const mvLobeFilter*>(&filter)) {
        return visit(FilterAccess::parameters(*lobe));
    }
    if (const auto* image = dynamic_cast<const mvFrequencyFilterImage*>(&filter)) {
        return visit(FilterAccess::image(*image));
    }
    return otherwise;
}

struct PlaneOf {
    using Plane = std::optional<mvPair<long>>;
    Plane operator()(const mvRingParameters& ring) const { return ring.size; }
    Plane operator()(const mvLobeParameters& lobe) const { return lobe.size; }
    Plane operator()(const mvFrequencyBuffer& image) const {
        return mvPair<long>(image.width(), image.height());
    }
};

}  // namespace

std::optional<mvPair<long>> planeOf(const mvFrequencyFilter& filter) {
    return visitKnown(filter, PlaneOf::Plane(), PlaneOf());
}

mvPair<long> reachOf(const mvFrequencyFilter& filter) {
    return visitKnown(filter, mvPair<long>(), [](const auto& known) { return reachOf(known); });
}

}  // namespace mvi
