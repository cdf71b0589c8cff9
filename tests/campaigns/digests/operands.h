// Images, buffers and archived filters to make cases of.
#pragma once

#include <filt/fft.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "campaigns/digests/digest.h"
#include "campaigns/digests/sections.h"
#include "support/filter_records.h"

namespace digest {

template <class T>
T makePel(Numbers& numbers) {
    if constexpr (std::numeric_limits<T>::is_integer) {
        return static_cast<T>(numbers.between(0, std::numeric_limits<T>::max()));
    } else {
        return 300.0 * numbers.symmetric();
    }
}

template <class T>
mvPelBuffer<T> makeImage(Numbers& numbers, long width, long height, bool offset) {
    mvPelBuffer<T> image(width, height);
    for (long y = 0; y < height; ++y) {
        for (long x = 0; x < width; ++x) image.pointToRow(y)[x] = makePel<T>(numbers);
    }
    if (offset) image.offset(numbers.pair(-9, 9));
    return image;
}

template <class T>
void add(Digest& digest, const mvPelBuffer<T>& image) {
    digest.add(static_cast<std::uint64_t>(image.offset().x), 8);
    digest.add(static_cast<std::uint64_t>(image.offset().y), 8);
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) digest.add(image.pel(x, y));
    }
}

inline mvFrequencyBuffer makeBuffer(Numbers& numbers, long width, long height) {
    mvFrequencyBuffer buffer(width, height);
    for (long y = 0; y < height; ++y) {
        for (long x = 0; x < width; ++x) {
            const double re = static_cast<double>(numbers.special());
            const double im = static_cast<double>(numbers.special());
            buffer.put(x, y, {re, im}, false);
        }
    }
    return buffer;
}

inline std::vector<float> makeGains(Numbers& numbers, long count) {
    std::vector<float> gains(static_cast<std::size_t>(count));
    for (float& gain : gains) gain = static_cast<float>(numbers.symmetric());
    return gains;
}

inline archive::RingRecord makeRing(Numbers& numbers, mvPair<std::int32_t> size) {
    archive::RingRecord ring;
    ring.width = size.x;
    ring.height = size.y;
    ring.frequency = 0.5 * static_cast<double>(numbers.between(0, 64)) / 64;
    ring.supportWidth = static_cast<std::int32_t>(2 * numbers.between(0, 6) + 1);
    ring.radius = static_cast<std::int32_t>(numbers.between(0, 2));
    ring.response = makeGains(numbers, 32L * ring.supportWidth);
    return ring;
}

/// At the angle 0 the lobe is placed without a rounding of cosine or sine.
inline archive::LobeRecord makeLobe(Numbers& numbers, mvPair<std::int32_t> size) {
    archive::LobeRecord lobe;
    lobe.angle = 0.0;
    lobe.width = size.x;
    lobe.height = size.y;
    lobe.frequency = 0.5 * static_cast<double>(numbers.between(0, 64)) / 64;
    lobe.supportWidth = static_cast<std::int32_t>(2 * numbers.between(0, 6) + 1);
    lobe.supportHeight = static_cast<std::int32_t>(2 * numbers.between(0, 6) + 1);
    lobe.radius = static_cast<std::int32_t>(numbers.between(0, 2));
    lobe.response = makeGains(numbers, 1L * lobe.supportWidth * lobe.supportHeight);
    return lobe;
}

/// Calls addCase(digest, numbers) often enough to make that many cases.
template <class AddCase>
Section sectionOf(std::string name, long cases, AddCase addCase) {
    Digest digest;
    Numbers numbers(static_cast<std::uint64_t>(cases));
    for (long i = 0; i < cases; ++i) addCase(digest, numbers);
    return {std::move(name), cases, digest.value()};
}

}  // namespace digest
