// The public operations that call nothing of the C runtime but the square root.
#include <base/archive.h>
#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <limits>
#include <sstream>

#include "campaigns/digests/digest.h"
#include "campaigns/digests/sections.h"
#include "support/filter_records.h"

namespace digest {

namespace {

using Byte = unsigned char;
using Word = unsigned short;

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

mvFrequencyBuffer makeBuffer(Numbers& numbers, long width, long height) {
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

template <class T>
void add(Digest& digest, const mvPelBuffer<T>& image) {
    digest.add(static_cast<std::uint64_t>(image.offset().x), 8);
    digest.add(static_cast<std::uint64_t>(image.offset().y), 8);
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) digest.add(image.pel(x, y));
    }
}

void add(Digest& digest, const mvFrequencyBuffer& buffer) {
    add(digest, buffer.getRealImage(false));
    add(digest, buffer.getImaginaryImage(true));
}

// Calls addCase(digest, numbers) often enough to make that many cases.
template <class AddCase>
Section sectionOf(const char* name, long cases, AddCase addCase) {
    Digest digest;
    Numbers numbers(static_cast<std::uint64_t>(cases));
    for (long i = 0; i < cases; ++i) addCase(digest, numbers);
    return {name, cases, digest.value()};
}

template <class T>
void addTransforms(Digest& digest, Numbers& numbers) {
    const long width = numbers.between(1, 40), height = numbers.between(1, 40);
    const bool offset = numbers.coin(), rescale = numbers.coin();
    const auto image = makeImage<T>(numbers, width, height, offset);
    mvFrequencyBuffer spectrum, plane;
    if (numbers.coin()) {
        auto other = makeImage<T>(numbers, width, height, false);
        other.offset(image.offset());
        mfForwardFFT<T>(image, other, spectrum);
    } else {
        mfForwardFFT<T>(image, spectrum);
    }
    add(digest, spectrum);
    mfInverseFFT(spectrum, plane, false);
    add(digest, plane);
    mvPelBuffer<T> pels;
    mvPelBuffer<Byte> quadrants;
    mvPelBuffer<double> real, imaginary;
    mfInverseFFT(spectrum, real, imaginary, false);
    mfInverseFFTQuadrant<T>(spectrum, pels, quadrants, rescale, true);
    add(digest, pels);
    add(digest, quadrants);
    add(digest, real);
    add(digest, imaginary);
}

void addArithmetic(Digest& digest, Numbers& numbers) {
    const long width = 2L << numbers.between(0, 4), height = 2L << numbers.between(0, 4);
    const mvFrequencyBuffer a = makeBuffer(numbers, width, height);
    const mvFrequencyBuffer b = makeBuffer(numbers, width, height);
    mvFrequencyBuffer result;
    for (const auto operation :
         {static_cast<void (*)(const mvFrequencyBuffer&, const mvFrequencyBuffer&,
                               mvFrequencyBuffer&)>(mfFrequencyAdd),
          mfFrequencySubtract, mfFrequencyMultiply}) {
        operation(a, b, result);
        add(digest, result);
    }
    mfFrequencyConjugate(result);
    add(digest, result);
    add(digest, result.getMagnitudeImage(numbers.coin()));
    add(digest, mvFrequencyBuffer(result, width, 2));
}

void addMaps(Digest& digest, Numbers& numbers) {
    const mvPair<long> size = numbers.pair(1, 20);
    auto image = makeImage<double>(numbers, size.x, size.y, false);
    *image.pointToOffset() = static_cast<double>(numbers.special());
    const double low = 200.0 * numbers.symmetric(), high = 200.0 * numbers.symmetric();
    for (const auto mapping : {mvFrequencyDefs::eMapClip, mvFrequencyDefs::eMapAutoScale,
                               mvFrequencyDefs::eMapRange, mvFrequencyDefs::eMapAngle}) {
        add(digest, mfFrequencyMapImage(image, mapping, low, high));
    }
}

std::vector<float> makeGains(Numbers& numbers, long count) {
    std::vector<float> gains(static_cast<std::size_t>(count));
    for (float& gain : gains) gain = static_cast<float>(numbers.symmetric());
    return gains;
}

archive::RingRecord makeRing(Numbers& numbers, mvPair<std::int32_t> size) {
    archive::RingRecord ring;
    ring.width = size.x;
    ring.height = size.y;
    ring.frequency = 0.5 * static_cast<double>(numbers.between(0, 64)) / 64;
    ring.supportWidth = static_cast<std::int32_t>(2 * numbers.between(0, 6) + 1);
    ring.radius = static_cast<std::int32_t>(numbers.between(0, 2));
    ring.response = makeGains(numbers, 32L * ring.supportWidth);
    return ring;
}

// At the angle 0 the lobe is placed without a rounding of cosine or sine.
archive::LobeRecord makeLobe(Numbers& numbers, mvPair<std::int32_t> size) {
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

// Both forms of apply, the record stored again, and the inverse through the band of rows.
template <class Filter>
void addFilter(Digest& digest, const archive::Record& record, mvFrequencyBuffer src) {
    Filter filter;
    support::Loading(record.bytes()).archive() || filter;
    mvFrequencyBuffer dst;
    filter.apply(src, dst);
    filter.apply(src);
    add(digest, dst);
    add(digest, src);
    digest.add(archive::stored(filter));
    mvPelBuffer<Byte> pels;
    mfInverseFFT<Byte>(src, pels, true, true);
    add(digest, pels);
}

void addFilters(Digest& digest, Numbers& numbers) {
    const mvPair<long> logSize = numbers.pair(2, 5);
    const mvPair<std::int32_t> size(1 << logSize.x, 1 << logSize.y);
    const mvFrequencyBuffer src = makeBuffer(numbers, size.x, size.y);
    const archive::Record ring = makeRing(numbers, size).record();
    const archive::Record lobe = makeLobe(numbers, size).record();
    addFilter<mvFrequencyFilterBandPass>(digest, ring, src);
    addFilter<mvFrequencyFilterBandReject>(digest, ring, src);
    addFilter<mvFrequencyFilterGabor>(digest, lobe, src);
    addFilter<mvFrequencyFilterGaborReject>(digest, lobe, src);
    const mvFrequencyFilterImage image(makeBuffer(numbers, size.x, size.y));
    mvFrequencyBuffer dst;
    image.apply(src, dst);
    add(digest, dst);
}

}  // namespace

std::vector<Section> librarySections() {
    return {
        sectionOf("transforms of bytes", 2001, addTransforms<Byte>),
        sectionOf("transforms of words", 2002, addTransforms<Word>),
        sectionOf("transforms of doubles", 2003, addTransforms<double>),
        sectionOf("arithmetic", 1000, addArithmetic),
        sectionOf("maps", 2000, addMaps),
        sectionOf("archived filters", 1500, addFilters),
    };
}

}  // namespace digest
