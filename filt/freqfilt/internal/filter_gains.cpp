// The gains of a filter, for pictures that are filtered without a plane.
#include <filt/freqfilt/band_pass.h>
#include <filt/freqfilt/band_reject.h>
#include <filt/freqfilt/gabor.h>
#include <filt/freqfilt/gabor_reject.h>
#include <filt/freqfilt/internal/filter_access.h>
#include <filt/freqfilt/internal/filter_gains.h>
#include <filt/freqfilt/internal/patch.h>
#include <filt/freqfilt/internal/ring.h>

#include <algorithm>
#include <typeinfo>

namespace mvi {

namespace {

template <class P>
bool fits(const P& parameters, const mvFilterResponse& response) {
    const mvPair<long> size = parameters.size;
    const auto isNumber = [](float gain) { return gain == gain; };
    return size.x >= 16 && size.y >= 2 && parameters.dcRadius <= std::min(size.x, size.y) / 2 &&
           std::all_of(response.data(), response.data() + response.size(), isNumber);
}

SpectrumGains gains(const mvRingParameters& parameters, const mvFilterResponse& profile,
                    bool keepsOutside) {
    Ring ring(parameters, profile, Ring::Inside::bySquares);
    return spectrumGains(ring, keepsOutside, parameters.dcRadius);
}

SpectrumGains gains(const mvLobeParameters& parameters, const mvFilterResponse& patch,
                    bool keepsOutside) {
    return spectrumGains(PatchPlacement(parameters, patch), patch, keepsOutside,
                         parameters.dcRadius);
}

// The gains of a filter whose class is `Filter`, not one derived from it.
template <class Filter>
std::optional<SpectrumGains> gainsOfA(const mvFrequencyFilter& filter, bool keepsOutside) {
    if (typeid(filter) != typeid(Filter)) return std::nullopt;
    const auto& known = dynamic_cast<const Filter&>(filter);
    const auto& parameters = FilterAccess::parameters(known);
    const mvFilterResponse& response = FilterAccess::response(known);
    if (!fits(parameters, response)) return std::nullopt;
    SpectrumGains result = gains(parameters, response, keepsOutside);
    if (result.isEmpty()) return std::nullopt;
    return result;
}

}  // namespace

std::optional<SpectrumGains> gainsOf(const mvFrequencyFilter& filter) {
    if (auto result = gainsOfA<mvFrequencyFilterBandPass>(filter, false)) return result;
    if (auto result = gainsOfA<mvFrequencyFilterBandReject>(filter, true)) return result;
    if (auto result = gainsOfA<mvFrequencyFilterGabor>(filter, false)) return result;
    return gainsOfA<mvFrequencyFilterGaborReject>(filter, true);
}

}  // namespace mvi
