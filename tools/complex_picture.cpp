// A filtered picture with its signs.
#include "complex_picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Multiplies by -i, so that imaginary parts become real ones. Turning a complex number by a quarter
// swaps its parts and a sign; not a bit of them changes on the way.
mvFrequencyFilterImage quarterTurn(mvPair<long> size) {
    mvFrequencyBuffer gains(size.x, size.y);
    for (long y = 0; y < size.y; ++y) {
        for (long x = 0; x < size.x; ++x) gains.put(x, y, {0.0, -1.0}, false);
    }
    return mvFrequencyFilterImage(gains);
}

// The turn adds nothing to the margin.
mvPair<long> marginOf(mvFilterList filters, mvPair<long> given) {
    if (given.x != -1) return given;
    const mvPair<long> reach = mfFilterReach(filters), plane = mfFilterPlane(filters);
    return {std::min(reach.x, plane.x / 4), std::min(reach.y, plane.y / 4)};
}

// An image of the size of another one; make(x, y) gives its pels.
template <class U, class Make>
mvPelBuffer<U> pelsLike(const mv_PelBuffer& image, Make make) {
    mvPelBuffer<U> pels(image.width(), image.height());
    for (long y = 0; y < pels.height(); ++y) {
        U* row = pels.pointToRow(y);
        for (long x = 0; x < pels.width(); ++x) row[x] = static_cast<U>(make(x, y));
    }
    return pels;
}

}  // namespace

template <class T>
mvPelBuffer<double> realPart(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                             mvFilterImageOptions options) {
    mvPelBuffer<double> part;
    options.result = mvFilterResult::real;
    mfFilterImage(picture, filters, part, options);
    return part;
}

template <class T>
mvPelBuffer<double> imaginaryPart(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                                  mvFilterImageOptions options) {
    options.margin = marginOf(filters, options.margin);
    const mvFrequencyFilterImage turn = quarterTurn(mfFilterPlane(filters));
    std::vector<const mvFrequencyFilter*> turned(filters.begin(), filters.end());
    turned.push_back(&turn);
    return realPart(picture, mvFilterList(turned), options);
}

#define PARTS_OF(T)                                                                       \
    template mvPelBuffer<double> realPart(const mvPelBuffer_const<T>&, mvFilterList,      \
                                          mvFilterImageOptions);                          \
    template mvPelBuffer<double> imaginaryPart(const mvPelBuffer_const<T>&, mvFilterList, \
                                               mvFilterImageOptions);
PARTS_OF(unsigned char)
PARTS_OF(unsigned short)
#undef PARTS_OF

// In single precision, as the library takes its angles.
mvPelBuffer<unsigned char> anglePels(const mvPelBuffer_const<double>& real,
                                     const mvPelBuffer_const<double>& imaginary) {
    const mvPelBuffer<double> angle = pelsLike<double>(real, [&](long x, long y) {
        return std::atan2(static_cast<float>(imaginary.pel(x, y)),
                          static_cast<float>(real.pel(x, y)));
    });
    return mfFrequencyMapImage(angle, mvFrequencyDefs::eMapAngle, 0, 0);
}

mvPelBuffer<unsigned char> quadrantPels(const mvPelBuffer_const<double>& real,
                                        const mvPelBuffer_const<double>& imaginary) {
    return pelsLike<unsigned char>(real, [&](long x, long y) {
        return 85 * (real.pel(x, y) < 0) + 170 * (imaginary.pel(x, y) < 0);
    });
}
