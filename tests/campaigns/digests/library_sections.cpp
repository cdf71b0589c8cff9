// The public operations that call nothing of the C runtime but the square root.
#include <base/archive.h>
#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <sstream>

#include "campaigns/digests/digest.h"
#include "campaigns/digests/operands.h"
#include "campaigns/digests/sections.h"

namespace digest {

namespace {

using Byte = unsigned char;
using Word = unsigned short;

void add(Digest& digest, const mvFrequencyBuffer& buffer) {
    add(digest, buffer.getRealImage(false));
    add(digest, buffer.getImaginaryImage(true));
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
