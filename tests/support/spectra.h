// Frequency buffers from the reference's spectra, and their comparison field by field.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/pel_images.h"

namespace support {

/// A buffer in exactly that state, with the transform of `someXform`; without data for a spectrum
/// without a plane.
inline mvFrequencyBuffer bufferOf(const reference::Spectrum& spectrum) {
    if (spectrum.plane.elements.empty()) return {};
    reference::Image<double> part(std::max(spectrum.imageWidth, 1L),
                                  std::max(spectrum.imageHeight, 1L));
    mvPelBuffer<double> pels = pelBufferOf(part);
    pels.offset(spectrum.x, spectrum.y);
    pels.copyXforms(someXformCache());
    mvFrequencyBuffer buffer(pels, pels);
    setPlane(buffer, spectrum.plane);
    BufferProbe::maskFrequencyBuffer(buffer, spectrum.masked, spectrum.maskedMiny,
                                     spectrum.maskedMaxy);
    mvi::BufferAccess::setInverseComputed(buffer, spectrum.inverseComputed);
    return buffer;
}

/// A spectrum with a random plane, whose image is a little smaller than the plane, with an offset
/// and a band.
inline reference::Spectrum someSpectrum(const reference::Plane& plane) {
    return {.plane = plane,
            .imageWidth = plane.width > 2 ? plane.width - 1 : plane.width,
            .imageHeight = plane.height > 2 ? plane.height - 1 : plane.height,
            .x = 5,
            .y = -3,
            .masked = true,
            .maskedMiny = -2,
            .maskedMaxy = 1,
            .inverseComputed = false};
}

/// All fields; the plane by bits, where a NaN matches any other. The band counts, set or not.
inline testing::AssertionResult sameSpectrum(const reference::Spectrum& expected,
                                             const mvFrequencyBuffer& buffer) {
    const reference::Spectrum actual = spectrumOf(buffer);
    const auto differs = [](const char* field, long wanted, long found) {
        return testing::AssertionFailure()
               << field << ": " << wanted << " expected, " << found << " found";
    };
    const auto& e = expected;
    if (e.imageWidth != actual.imageWidth) {
        return differs("image width", e.imageWidth, actual.imageWidth);
    }
    if (e.imageHeight != actual.imageHeight) {
        return differs("image height", e.imageHeight, actual.imageHeight);
    }
    if (e.x != actual.x) return differs("offset x", e.x, actual.x);
    if (e.y != actual.y) return differs("offset y", e.y, actual.y);
    if (e.masked != actual.masked) return differs("masked", e.masked, actual.masked);
    if (e.maskedMiny != actual.maskedMiny) {
        return differs("first row", e.maskedMiny, actual.maskedMiny);
    }
    if (e.maskedMaxy != actual.maskedMaxy) {
        return differs("last row", e.maskedMaxy, actual.maskedMaxy);
    }
    if (e.inverseComputed != actual.inverseComputed) {
        return differs("inverse computed", e.inverseComputed, actual.inverseComputed);
    }
    return samePlane(expected.plane, actual.plane, true);
}

}  // namespace support
