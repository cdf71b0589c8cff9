// Pictures, filters and options for the picture call, and what it must give.
#pragma once

#include <filt/freqfilt.h>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <ostream>
#include <string>

#include "reference/freqfilt/picture.h"
#include "support/pel_images.h"

namespace cases {

/// A filter class of a caller's own: each frequency has a gain of its own, and some are turned.
class OwnFilter : public mvFrequencyFilter {
  public:
    OwnFilter() = default;
    OwnFilter(const OwnFilter& other)
        : mvPersistent(other), mvRepBase(other), mvFrequencyFilter() {}
    mvFrequencyFilter* clone() const override { return new OwnFilter(*this); }
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override {
        dst = src;
        apply(dst);
    }
    void apply(mvFrequencyBuffer& buf) const override {
        for (long y = 0; y < buf.height(); ++y) {
            for (long x = 0; x < buf.width(); ++x) {
                const mvPair<double> value = buf.get(x, y, false);
                const double gain = static_cast<double>((3 * x + 5 * y) % 7) / 4.0;
                buf.put(x, y, {value.x * gain, (x + y) % 3 == 0 ? -value.y : value.y}, false);
            }
        }
    }
};

enum class Kind { kBandPass, kBandReject, kGabor, kGaborReject, kImage, kOwn };
inline constexpr std::array kKinds = {Kind::kBandPass,    Kind::kBandReject, Kind::kGabor,
                                      Kind::kGaborReject, Kind::kImage,      Kind::kOwn};

inline std::ostream& operator<<(std::ostream& out, Kind kind) {
    constexpr const char* kNames[] = {"BandPass",    "BandReject", "Gabor",
                                      "GaborReject", "Image",      "Own"};
    return out << kNames[static_cast<int>(kind)];
}

/// A filter with what the picture call must know of it, by formulas of the tests' own.
struct PictureFilter {
    std::unique_ptr<mvFrequencyFilter> filter;
    mvPair<long> plane;  // (0, 0) without one
    mvPair<long> reach;
};

/// `variant` makes different ones.
PictureFilter makePictureFilter(Kind kind, mvPair<long> plane, unsigned variant);

/// The reach of an image filter, from the magnitudes of the inverse transform of its image.
mvPair<long> imageReach(const mvFrequencyBuffer& image);

/// What the call must give.
template <class T, class U>
reference::Image<U> expectedPicture(const reference::Image<T>& image, const PictureFilter& filter,
                                    const mvFilterImageOptions& options);

}  // namespace cases
