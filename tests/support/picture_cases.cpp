// Pictures, filters and options for the picture call, and what it must give.
#include "support/picture_cases.h"

#include <algorithm>

#include "support/random_planes.h"
#include "support/three_calls.h"

namespace cases {

namespace {

constexpr double kPi = std::numbers::pi;

long ceiled(double reach) {
    return std::max(1L, static_cast<long>(std::ceil(reach)));
}

template <class F>
PictureFilter ring(mvPair<long> plane, unsigned variant) {
    support::Random random(variant);
    const double sigma = 0.01 + 0.01 * random.below(9);
    const double frequency = 0.05 * random.below(9);
    const long reach = ceiled(2 / (kPi * sigma));
    return {std::make_unique<F>(sigma, 0.02 * random.below(3), frequency, plane, 0),
            plane,
            {reach, reach}};
}

template <class F>
PictureFilter lobe(mvPair<long> plane, unsigned variant) {
    support::Random random(variant);
    const double s = 0.01 + 0.01 * random.below(9), t = 0.02 + 0.015 * random.below(9);
    const double a = 0.7 * random.below(9);
    const mvPair<double> plateau(0.02 * random.below(2), 0.01);
    const double c = std::cos(a), d = std::sin(a);
    const auto reach = [&](double u, double v) {
        return ceiled(2 / kPi * std::sqrt(u / s * (u / s) + v / t * (v / t)));
    };
    return {std::make_unique<F>(mvPair<double>(s, t), plateau, mvRadian(a), 0.05 * random.below(9),
                                plane, 0),
            plane,
            {reach(c, d), reach(d, c)}};
}

// A kernel of a few pels, or one all over the plane.
PictureFilter imageFilter(mvPair<long> plane, unsigned variant) {
    support::Random random(variant);
    mvPelBuffer<double> kernel(plane.x, plane.y);
    const long wide = random.below(3) == 0 ? 64 : 1 + static_cast<long>(random.below(4));
    for (long y = 0; y < std::min(wide, plane.y); ++y) {
        for (long x = 0; x < std::min(wide, plane.x); ++x) {
            kernel.pointToRow(y)[x] = static_cast<double>(random.symmetric());
        }
    }
    mvFrequencyBuffer image;
    mfForwardFFT<double>(kernel, image);
    return {std::make_unique<mvFrequencyFilterImage>(image), plane, imageReach(image)};
}

long smallestReach(const std::vector<double>& lines, double total) {
    const auto n = static_cast<long>(lines.size());
    for (long r = 1;; ++r) {
        double beyond = 0;
        for (long i = 0; i < n; ++i) {
            if (std::min(i, n - i) > r) beyond += lines[static_cast<std::size_t>(i)];
        }
        if (beyond <= total / 1024) return r;
    }
}

}  // namespace

mvPair<long> imageReach(const mvFrequencyBuffer& image) {
    mvFrequencyBuffer whole(image.width(), image.height());
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) whole.put(x, y, image.get(x, y, false), false);
    }
    mvPelBuffer<double> h;
    mfInverseFFT<double>(whole, h, false, true);
    std::vector<double> columns(static_cast<std::size_t>(h.width()));
    std::vector<double> rows(static_cast<std::size_t>(h.height()));
    double total = 0;
    for (long y = 0; y < h.height(); ++y) {
        for (long x = 0; x < h.width(); ++x) {
            columns[static_cast<std::size_t>(x)] += h.pel(x, y);
            rows[static_cast<std::size_t>(y)] += h.pel(x, y);
            total += h.pel(x, y);
        }
    }
    return {smallestReach(columns, total), smallestReach(rows, total)};
}

PictureFilter makePictureFilter(Kind kind, mvPair<long> plane, unsigned variant) {
    switch (kind) {
        case Kind::kBandPass:
            return ring<mvFrequencyFilterBandPass>(plane, variant);
        case Kind::kBandReject:
            return ring<mvFrequencyFilterBandReject>(plane, variant);
        case Kind::kGabor:
            return lobe<mvFrequencyFilterGabor>(plane, variant);
        case Kind::kGaborReject:
            return lobe<mvFrequencyFilterGaborReject>(plane, variant);
        case Kind::kImage:
            return imageFilter(plane, variant);
        default:
            return {std::make_unique<OwnFilter>(), {}, {}};
    }
}

namespace {

template <class T, class U>
reference::Image<U> magnitudesOf(const reference::Image<T>& tile, const mvFrequencyFilter& filter) {
    return support::imageOf(support::byThreeCalls<U>(support::pelBufferOf(tile), filter));
}

template <class T>
reference::Image<double> realPartsOf(const reference::Image<T>& tile,
                                     const mvFrequencyFilter& filter) {
    mvFrequencyBuffer spectrum = support::filteredSpectrum(support::pelBufferOf(tile), filter);
    mvPelBuffer<double> real, imaginary;
    mfInverseFFT(spectrum, real, imaginary, true);
    return support::imageOf(real);
}

reference::PictureAxis axisOf(long image, long plane, long margin, long reach, bool mirror) {
    if (plane == 0) return {image, reference::planeWithoutFilter(image, mirror), 0, mirror};
    return {image, plane, reference::pictureMargin(margin, reach, plane), mirror};
}

}  // namespace

template <class T, class U>
reference::Image<U> expectedPicture(const reference::Image<T>& image, const PictureFilter& filter,
                                    const mvFilterImageOptions& options) {
    const bool mirror = options.border == mvBorder::mirror;
    const reference::PictureAxis x =
        axisOf(image.width, filter.plane.x, options.margin.x, filter.reach.x, mirror);
    const reference::PictureAxis y =
        axisOf(image.height, filter.plane.y, options.margin.y, filter.reach.y, mirror);
    const mvFrequencyFilter& f = *filter.filter;
    if constexpr (std::is_same_v<U, double>) {
        if (options.result == mvFilterResult::real) {
            return reference::filteredByTiles<T, double>(
                image, x, y, [&](const auto& tile) { return realPartsOf<T>(tile, f); });
        }
    } else if (options.rescale) {
        const auto magnitudes = reference::filteredByTiles<T, double>(
            image, x, y, [&](const auto& tile) { return magnitudesOf<T, double>(tile, f); });
        const auto elements = static_cast<double>(x.N * y.N);
        return reference::rescaledPicture<U>(magnitudes, static_cast<float>(1 / elements));
    }
    return reference::filteredByTiles<T, U>(
        image, x, y, [&](const auto& tile) { return magnitudesOf<T, U>(tile, f); });
}

#define INSTANTIATE(T, U)                                                                          \
    template reference::Image<U> expectedPicture(const reference::Image<T>&, const PictureFilter&, \
                                                 const mvFilterImageOptions&);
#define INSTANTIATE_FROM(T)        \
    INSTANTIATE(T, unsigned char)  \
    INSTANTIATE(T, unsigned short) \
    INSTANTIATE(T, double)
INSTANTIATE_FROM(unsigned char)
INSTANTIATE_FROM(unsigned short)
INSTANTIATE_FROM(double)
#undef INSTANTIATE_FROM
#undef INSTANTIATE

}  // namespace cases
