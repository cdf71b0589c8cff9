// What filters do to half a plane, for pictures that are filtered without a whole one.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/kernel/spectrum_factors.h>
#include <filt/fft/internal/kernel/spectrum_gains.h>
#include <filt/fft/internal/kernel/spectrum_row_gains.h>
#include <filt/freqfilt/band_pass.h>
#include <filt/freqfilt/band_reject.h>
#include <filt/freqfilt/gabor.h>
#include <filt/freqfilt/gabor_reject.h>
#include <filt/freqfilt/internal/filter_access.h>
#include <filt/freqfilt/internal/half_filters.h>
#include <filt/freqfilt/internal/patch.h>
#include <filt/freqfilt/internal/ring.h>

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace mvi {

namespace {

using HalfFilter = std::unique_ptr<const SpectrumFilter>;

bool fits(mvPair<long> plane) {
    return plane.x >= 16 && plane.y >= 2;
}

template <class P>
bool fits(const P& parameters, const mvFilterResponse& response) {
    const mvPair<long> size = parameters.size;
    const auto isNumber = [](float gain) { return gain == gain; };
    return fits(size) && parameters.dcRadius <= std::min(size.x, size.y) / 2 &&
           std::all_of(response.data(), response.data() + response.floats(), isNumber);
}

SpectrumGains gains(const mvRingParameters& parameters, const mvFilterResponse& profile,
                    bool keepsOutside) {
    Ring ring(parameters, profile, Ring::Inside::bySquares);
    return spectrumGains(ring, keepsOutside, parameters.dcRadius);
}

SpectrumRowGains gains(const mvLobeParameters& parameters, const mvFilterResponse& patch,
                       bool keepsOutside) {
    return spectrumGains(PatchPlacement(parameters, patch), patch, keepsOutside,
                         parameters.dcRadius);
}

template <class P>
HalfFilter halfOf(const mvResponseFilter<P>& filter, bool keepsOutside) {
    const auto& parameters = FilterAccess::parameters(filter);
    const mvFilterResponse& response = FilterAccess::response(filter);
    if (!fits(parameters, response)) return nullptr;
    auto half = gains(parameters, response, keepsOutside);
    if (half.isEmpty()) return nullptr;
    return std::make_unique<decltype(half)>(std::move(half));
}

HalfFilter halfOf(const mvFrequencyFilterImage& filter) {
    const mvFrequencyBuffer& image = FilterAccess::image(filter);
    const mvPair<long> size(BufferAccess::width(image), BufferAccess::height(image));
    if (!fits(size) || BufferAccess::inverseComputed(image)) return nullptr;
    return std::make_unique<SpectrumFactors>(BufferAccess::data(image), size);
}

// The filter, if its class is `Filter`, not one derived from it.
template <class Filter>
const Filter* exactly(const mvFrequencyFilter& filter) {
    return typeid(filter) == typeid(Filter) ? dynamic_cast<const Filter*>(&filter) : nullptr;
}

}  // namespace

HalfFilter halfFilterOf(const mvFrequencyFilter& filter, bool forDoubles) {
    if (const auto* pass = exactly<mvFrequencyFilterBandPass>(filter)) return halfOf(*pass, false);
    if (const auto* pass = exactly<mvFrequencyFilterGabor>(filter)) return halfOf(*pass, false);
    if (const auto* ring = exactly<mvFrequencyFilterBandReject>(filter)) return halfOf(*ring, true);
    const auto* const lobe = exactly<mvFrequencyFilterGaborReject>(filter);
    if (lobe != nullptr) return halfOf(*lobe, true);
    const auto* const image = exactly<mvFrequencyFilterImage>(filter);
    return image != nullptr && !forDoubles ? halfOf(*image) : nullptr;
}

}  // namespace mvi
