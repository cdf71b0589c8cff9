// The picture call in the model: its checks, its tiles, filters by themselves and in lists.
#include "campaigns/model/pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <type_traits>

#include "campaigns/model/buffers.h"
#include "campaigns/model/filters.h"
#include "campaigns/model/images.h"
#include "reference/fft/arithmetic.h"
#include "reference/freqfilt/picture.h"
#include "support/thrown.h"

namespace model {
namespace {

using reference::PictureAxis;
using reference::Spectrum;

[[noreturn]] void refuse(const char* message) {
    throw Thrown{std::string("InvalidArgument: ") + message};
}

void requireFilters(const PictureFilters& filters) {
    if (filters.empty()) refuse("There must be at least one filter.");
    for (const PictureFilter& filter : filters) {
        if (!filter.apply) refuse("A filter of the list is missing.");
    }
}

bool isUnknown(const PictureFilter& filter) {
    return !filter.plane;
}

void requireOutput(const PictureOptions& options, bool isDouble) {
    if (options.real && !isDouble) refuse("Real parts need an output of doubles.");
    if (options.rescale && isDouble) refuse("Rescaling needs an output of integers.");
}

bool isCut(long image, long plane, long margin, bool mirror) {
    return image + (mirror ? 2 * margin : 0) > plane;
}

// A margin that is given must leave something of the tiles of an axis that is cut.
bool isUseful(long margin, long image, long plane, bool mirror) {
    return margin == -1 ||
           (margin >= 0 && (!isCut(image, plane, margin, mirror) || 2 * margin < plane));
}

// Without the widest margin that a reach can make there is no cut.
bool needsReach(long image, long plane, long margin, bool mirror) {
    return margin == -1 && isCut(image, plane, plane / 4, mirror);
}

struct Axes {
    PictureAxis x;
    PictureAxis y;
};

// With a class of the caller's own the margin is as wide as one goes.
Sides reachFor(Sides image, Sides plane, const PictureFilters& filters,
               const PictureOptions& options, const Poll& poll) {
    if (!needsReach(image.x, plane.x, options.margin.x, options.mirror) &&
        !needsReach(image.y, plane.y, options.margin.y, options.mirror)) {
        return {1, 1};
    }
    const Sides reach = reachOf(filters, poll);
    return reach == Sides{} ? plane : reach;
}

// Without a filter's plane one that holds the image, and a mirror of it.
Sides planeFor(Sides image, const std::optional<Sides>& known, bool mirror) {
    const auto sideFor = reference::planeWithoutFilter;
    return known.value_or(Sides{sideFor(image.x, mirror), sideFor(image.y, mirror)});
}

Axes axesOf(Sides image, const PictureFilters& filters, const PictureOptions& options,
            const Poll& poll) {
    const std::optional<Sides> known = planeOf(filters);
    const bool mirror = options.mirror;
    const Sides plane = planeFor(image, known, mirror);
    if (!known) return {{image.x, plane.x, 0, mirror}, {image.y, plane.y, 0, mirror}};
    const Sides reach = reachFor(image, plane, filters, options, poll);
    const auto marginOf = reference::pictureMargin;
    return {{image.x, plane.x, marginOf(options.margin.x, reach.x, plane.x), mirror},
            {image.y, plane.y, marginOf(options.margin.y, reach.y, plane.y), mirror}};
}

// A tile by the three calls, in the state that the last of them reads.
template <class T>
Spectrum spatialTile(const reference::Image<T>& tile, const PictureFilters& filters,
                     const Poll& poll) {
    Spectrum spectrum = reference::forward(tile, poll);
    for (const PictureFilter& filter : filters) filter.apply(spectrum);
    return reference::spatial(spectrum, poll);
}

template <class U>
reference::Image<U> magnitudes(const Spectrum& space, const Poll& poll) {
    reference::Output<U> out;
    reference::magnitudeImage(space, out, false, poll);
    return *out;
}

reference::Image<double> realParts(const Spectrum& space, const Poll& poll) {
    reference::Output<double> real;
    reference::Output<double> imaginary;
    reference::realAndImaginaryImages(space, real, imaginary, poll);
    return *real;
}

template <class T, class U>
reference::Image<U> filtered(const reference::Image<T>& image, const PictureFilters& filters,
                             const PictureOptions& options, const Poll& poll) {
    const auto [x, y] = axesOf({image.width, image.height}, filters, options, poll);
    const auto tiles = [&, &x = x, &y = y](auto convert) {
        using Pel = typename decltype(convert(Spectrum{}, poll).pels)::value_type;
        return reference::filteredByTiles<T, Pel>(image, x, y, [&](const auto& tile) {
            return convert(spatialTile(tile, filters, poll), poll);
        });
    };
    if constexpr (std::is_same_v<U, double>) {
        if (options.real) return tiles(realParts);
    } else if (options.rescale) {
        const double elements = static_cast<double>(x.N * y.N);
        return reference::rescaledPicture<U>(tiles(magnitudes<double>),
                                             static_cast<float>(1 / elements));
    }
    return tiles(magnitudes<U>);
}

// Archives make filters of other planes, and a picture may be too large for a plane.
void requirePlane(Sides plane) {
    if (plane.x > 2048 || plane.y > 2048) throw Thrown{support::kTooLarge};
    for (const long side : {plane.x, plane.y}) {
        if (reference::paddedSize(side) != side) throw Thrown{support::kNotPowerOfTwo};
    }
}

void requireMargin(Sides image, const std::optional<Sides>& plane, const PictureOptions& options) {
    const Sides margin = options.margin;
    const bool isAnyUseful = plane ? isUseful(margin.x, image.x, plane->x, options.mirror) &&
                                         isUseful(margin.y, image.y, plane->y, options.mirror)
                                   : margin.x >= -1 && margin.y >= -1;
    if (!isAnyUseful) refuse("The margin leaves nothing of a tile.");
}

template <class T, class U>
void requirePicture(const Image<T>& image, const PictureFilters& filters, const Image<U>& out,
                    const PictureOptions& options) {
    if (!image.isBound()) throw Thrown{support::kUnbound};
    requireFilters(filters);
    const std::optional<Sides> plane = planeOf(filters);
    const Sides size = {image.width, image.height};
    requirePlane(planeFor(size, plane, options.mirror));
    requireOutput(options, std::is_same_v<U, double>);
    requireMargin(size, plane, options);
    if (options.threads < 1) refuse("The number of threads must be positive.");
    if (out.isBound() && (out.width != image.width || out.height != image.height)) {
        throw Thrown{"InvalidSize: The output must have the size of the image."};
    }
}

// The sums of the magnitudes at each distance from line 0, around the axis.
std::vector<double> byDistance(const std::vector<double>& lines) {
    std::vector<double> sums(lines.size() / 2 + 1);
    for (std::size_t i = 0; i < lines.size(); ++i) sums[std::min(i, lines.size() - i)] += lines[i];
    return sums;
}

// The smallest distance with next to nothing beyond it.
long smallestReach(const std::vector<double>& lines, double total) {
    const std::vector<double> sums = byDistance(lines);
    for (std::size_t r = 1; r + 1 < sums.size(); ++r) {
        const auto beyond = sums.begin() + static_cast<std::ptrdiff_t>(r) + 1;
        if (std::accumulate(beyond, sums.end(), 0.0) <= total / 1024) return static_cast<long>(r);
    }
    return std::max(1L, static_cast<long>(sums.size()) - 1);
}

Sides imageReach(const Buffer& image, const Poll& poll) {
    requireTransformable(image);
    const reference::Plane space = reference::spatial(spectrumOf(image), poll).plane;
    std::vector<double> columns(static_cast<std::size_t>(space.width));
    std::vector<double> rows(static_cast<std::size_t>(space.height));
    double total = 0;
    for (std::size_t i = 0; i < space.elements.size(); ++i) {
        const reference::Complex z = space.elements[i];
        const auto magnitude = static_cast<double>(std::sqrt(z.re * z.re + z.im * z.im));
        columns[i % columns.size()] += magnitude;
        rows[i / columns.size()] += magnitude;
        total += magnitude;
    }
    return {smallestReach(columns, total), smallestReach(rows, total)};
}

void applyOwn(Spectrum& buf) {
    for (long y = 0; y < buf.plane.height; ++y) {
        for (long x = 0; x < buf.plane.width; ++x) {
            reference::Complex& z = buf.plane.at(x, y);
            const double gain = static_cast<double>((3 * x + 5 * y) % 7) / 4.0;
            z = {static_cast<float>(z.re * gain), (x + y) % 3 == 0 ? -z.im : z.im};
        }
    }
}

}  // namespace

PictureFilter ownFilter() {
    return {.apply = applyOwn};
}

PictureFilter missingFilter() {
    return {};
}

PictureFilter pictureFilterOf(const ImageFilter& filter) {
    const Buffer& image = filter.image;
    if (!image.hasData) return {.refused = support::kNoData, .apply = [](Spectrum&) {}};
    return {.plane = Sides{image.width, image.height},
            .reach = [&image](const Poll& poll) { return imageReach(image, poll); },
            .apply =
                [&image](Spectrum& buf) {
                    if (image.inverseComputed) throw Thrown{support::kSpent};
                    buf.plane = reference::product(planeOf(image), buf.plane);
                    buf.masked = false;
                }};
}

std::optional<Sides> planeOf(const PictureFilters& filters) {
    requireFilters(filters);
    std::optional<Sides> plane;
    bool isOne = true;
    for (const PictureFilter& filter : filters) {
        if (!filter.refused.empty()) throw Thrown{filter.refused};
        if (isUnknown(filter)) continue;
        isOne = isOne && *filter.plane == plane.value_or(*filter.plane);
        plane = filter.plane;
    }
    if (!isOne) throw Thrown{"InvalidSize: All filters must be built for one plane."};
    return plane;
}

Sides reachOf(const PictureFilters& filters, const Poll& poll) {
    planeOf(filters);
    if (std::any_of(filters.begin(), filters.end(), isUnknown)) return {};
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int32_t>::max();
    Sides sum;
    for (const PictureFilter& filter : filters) {
        const Sides reach = filter.reach(poll);
        sum = {static_cast<long>(std::min(std::int64_t{sum.x} + reach.x, kFarthest)),
               static_cast<long>(std::min(std::int64_t{sum.y} + reach.y, kFarthest))};
    }
    return sum;
}

template <class T, class U>
void filterImage(const Image<T>& image, const PictureFilters& filters, Image<U>& out,
                 const PictureOptions& options, const Poll& poll, const Poll& morePolls) {
    requirePicture(image, filters, out, options);
    reference::Image<U> result;
    try {
        result = filtered<T, U>(contentOf(image), filters, options, poll);
        morePolls();
    } catch (const Thrown&) {
        // Pels of a bound output may have been written; one that is not bound stays so.
        out.anyPels = out.isBound();
        throw;
    }
    if (!out.isBound()) {
        out = newImage<U>(image.width, image.height);
        out.x = image.x;
        out.y = image.y;
        out.xform = image.xform;
    }
    for (long y = 0; y < out.height; ++y) {
        for (long x = 0; x < out.width; ++x) out.at(x, y) = result.at(x, y);
    }
}

#define INSTANTIATE(T, U)                                                        \
    template void filterImage(const Image<T>&, const PictureFilters&, Image<U>&, \
                              const PictureOptions&, const Poll&, const Poll&);
#define INSTANTIATE_FROM(T) INSTANTIATE(T, Byte) INSTANTIATE(T, Short) INSTANTIATE(T, double)
INSTANTIATE_FROM(Byte)
INSTANTIATE_FROM(Short)
INSTANTIATE_FROM(double)
#undef INSTANTIATE_FROM
#undef INSTANTIATE

}  // namespace model
