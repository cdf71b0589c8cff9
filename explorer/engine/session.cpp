// What the page asks of the library: one picture, one filter, one result.
#include "session.h"

#include <base/archive.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

#include "tools/failure.h"
#include "tools/luma.h"
#include "tools/size_text.h"

namespace {

// The square around DC has its room in every plane.
long radiusWithin(long radius, mvPair<long> plane) {
    const long most = std::max(std::min(plane.x, plane.y) / 2, 1l);
    if (radius <= most) return radius;
    throw BadArgument("DC radius: at most " + std::to_string(most) + " fits a plane of " +
                      sizeText(plane));
}

template <class Filter>
std::unique_ptr<mvFrequencyFilter> ring(const FilterSettings& of, mvPair<long> plane, long radius) {
    return std::make_unique<Filter>(of.sigma.x, of.plateau.x, of.frequency, plane, radius);
}

template <class Filter>
std::unique_ptr<mvFrequencyFilter> lobe(const FilterSettings& of, mvPair<long> plane, long radius) {
    return std::make_unique<Filter>(of.sigma, of.plateau,
                                    mvRadian(of.degrees * std::numbers::pi / 180), of.frequency,
                                    plane, radius);
}

std::unique_ptr<mvFrequencyFilter> built(const FilterSettings& of, mvPair<long> plane,
                                         long radius) {
    switch (of.kind) {
        case FilterKind::bandPass:
            return ring<mvFrequencyFilterBandPass>(of, plane, radius);
        case FilterKind::bandReject:
            return ring<mvFrequencyFilterBandReject>(of, plane, radius);
        case FilterKind::gabor:
            return lobe<mvFrequencyFilterGabor>(of, plane, radius);
        default:
            return lobe<mvFrequencyFilterGaborReject>(of, plane, radius);
    }
}

FilterRecipe convolution(const Kernel& kernel) {
    const mvPair<long> least = kernel.leastPlane();
    return {[kernel](mvPair<long> plane) { return kernel.filter(plane); },
            mfFilterReach(*kernel.filter(least)), least};
}

// A plane of ones: what a filter makes of it is its gains.
mvFrequencyBuffer onesOf(mvPair<long> size) {
    mvPelBuffer<double> ones(size.x, size.y);
    mfPelSet(ones, 1.0);
    return {ones, mvPelBuffer<double>(size.x, size.y)};
}

// The largest of each block of `step` by `step`, so that no narrow lobe falls between two of them.
mvPelBuffer<double> largestOfBlocks(const mvPelBuffer_const<double>& gains, mvPair<long> step) {
    mvPelBuffer<double> blocks(gains.width() / step.x, gains.height() / step.y);
    for (long y = 0; y < gains.height(); ++y) {
        const double* row = gains.pointToRow(y);
        double* to = blocks.pointToRow(y / step.y);
        for (long x = 0; x < gains.width(); ++x) {
            to[x / step.x] = std::max(to[x / step.x], row[x]);
        }
    }
    return blocks;
}

double largest(const mvPelBuffer<double>& image) {
    double most = 0;
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        most = std::max(most, *std::max_element(row, row + image.width()));
    }
    return most;
}

}  // namespace

template <class T>
mvPelBuffer<T> greyPicture(const T* samples, long width, long height, long channels) {
    mvPelBuffer<T> picture(width, height);
    for (long y = 0; y < height; ++y) {
        T* row = picture.pointToRow(y);
        for (long x = 0; x < width; ++x, samples += channels) {
            row[x] = channels < 3 ? *samples : luma(samples);
        }
    }
    return picture;
}

template mvPelBuffer<unsigned char> greyPicture(const unsigned char*, long, long, long);
template mvPelBuffer<unsigned short> greyPicture(const unsigned short*, long, long, long);

FilterRecipe recipeOf(const FilterSettings& settings, const std::optional<Kernel>& kernel) {
    if (settings.kind == FilterKind::convolve) {
        if (!kernel) throw BadArgument("Choose the picture of the weights");
        return convolution(*kernel);
    }
    const auto make = [settings](mvPair<long> plane) {
        return built(settings, plane, radiusWithin(settings.dcRadius, plane));
    };
    return {make, mfFilterReach(*built(settings, {64, 64}, std::min(settings.dcRadius, 0l)))};
}

mvPelBuffer<unsigned char> shownGains(const mvFrequencyFilter& filter, long side) {
    const mvPair<long> plane = mfFilterPlane(filter);
    mvFrequencyBuffer buffer = onesOf(plane);
    filter.apply(buffer);
    const mvPair<long> step(std::max(plane.x / side, 1l), std::max(plane.y / side, 1l));
    const mvPelBuffer<double> gains = largestOfBlocks(buffer.getMagnitudeImage(true), step);
    return mfFrequencyMapImage(gains, mvFrequencyDefs::eMapRange, 0, largest(gains));
}

// An archive takes what it could also load: a copy that may change.
std::string archiveOf(const mvFrequencyFilter& filter) {
    const std::unique_ptr<mvFrequencyFilter> copy(filter.clone());
    std::ostringstream bytes;
    mvArchive archive(bytes);
    mvPersistent* object = copy.get();
    archive || object;
    return bytes.str();
}

mvPelBuffer<unsigned char> halved(const mvPelBuffer_const<unsigned char>& picture) {
    mvPelBuffer<unsigned char> half((picture.width() + 1) / 2, (picture.height() + 1) / 2);
    for (long y = 0; y < half.height(); ++y) {
        const unsigned char* upper = picture.pointToRow(2 * y);
        const unsigned char* lower = picture.pointToRow(std::min(2 * y + 1, picture.height() - 1));
        unsigned char* to = half.pointToRow(y);
        for (long x = 0; x < picture.width() / 2; ++x) {
            to[x] = static_cast<unsigned char>(
                (upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1] + 2) / 4);
        }
        if (picture.width() % 2 == 0) continue;
        const long last = picture.width() - 1;
        to[last / 2] = static_cast<unsigned char>((upper[last] + lower[last] + 1) / 2);
    }
    return half;
}

mvPelBuffer<unsigned char> upperBytes(const mvPelBuffer_const<unsigned short>& picture) {
    mvPelBuffer<unsigned char> bytes(picture.width(), picture.height());
    for (long y = 0; y < picture.height(); ++y) {
        const unsigned short* row = picture.pointToRow(y);
        std::transform(row, row + picture.width(), bytes.pointToRow(y),
                       [](unsigned short pel) { return static_cast<unsigned char>(pel >> 8); });
    }
    return bytes;
}
