// What the picture call is checked for, and how its image is cut.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/picture_plan.h>

#include <algorithm>

namespace mvi {

namespace {

using Options = mvFilterImageOptions;
using Plane = std::optional<mvPair<long>>;

void requireBound(const mv_PelBuffer& image) {
    if (!image.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
}

// The plane of the tiles, for filters that know it and for those that do not.
mvPair<long> planeOfTiles(const Plane& known, const mv_PelBuffer& image, mvBorder border) {
    if (known) return *known;
    return {planeFor(image.width(), border), planeFor(image.height(), border)};
}

void requireTransformable(mvPair<long> plane) {
    using InvalidSize = mvFrequencyDefs::InvalidSize;
    constexpr long kLargestSide = BufferAccess::kLargestSide;
    if (plane.x > kLargestSide || plane.y > kLargestSide) {
        throw InvalidSize("Width and Height must be no larger than 2048.");
    }
    if (!isPowerOfTwo(plane.x) || !isPowerOfTwo(plane.y)) {
        throw InvalidSize("Size must be a power of 2.");
    }
}

void requireOutputFor(const Options& options, bool givesDoubles) {
    using InvalidArgument = mvFrequencyDefs::InvalidArgument;
    if (options.result == mvFilterResult::real && !givesDoubles) {
        throw InvalidArgument("Real parts need an output of doubles.");
    }
    if (options.rescale && givesDoubles) {
        throw InvalidArgument("Rescaling needs an output of integers.");
    }
}

bool leavesNothing(long image, long plane, long margin, mvBorder border) {
    return margin >= plane - margin && needsTiles(image, plane, margin, border);
}

// Reaches are cut to what leaves half the plane, so that only given margins can be wrong.
void requireMargin(const mv_PelBuffer& image, mvPair<long> plane, bool isKnown,
                   const Options& options) {
    const mvPair<long> margin = options.margin;
    if (margin.x < -1 || margin.y < -1 ||
        (isKnown && (leavesNothing(image.width(), plane.x, margin.x, options.border) ||
                     leavesNothing(image.height(), plane.y, margin.y, options.border)))) {
        throw mvFrequencyDefs::InvalidArgument("The margin leaves nothing of a tile.");
    }
}

void requireThreads(int threads) {
    if (threads < 1) {
        throw mvFrequencyDefs::InvalidArgument("The number of threads must be positive.");
    }
}

void requireOutputSize(const mv_PelBuffer& image, const mv_PelBuffer& out) {
    if (out.isBound() && (out.width() != image.width() || out.height() != image.height())) {
        throw mvFrequencyDefs::InvalidSize("The output must have the size of the image.");
    }
}

// Whether the filters' reach is needed to know how an axis is cut. An image filter's reach costs a
// transform.
bool needsReach(long image, long plane, long margin, mvBorder border) {
    return margin == -1 && needsTiles(image, plane, plane / 4, border);
}

// A reach that is not known is taken to be as far as a margin goes.
long marginFor(long reach, long plane) {
    return reach == 0 ? plane / 4 : std::min(reach, plane / 4);
}

mvPair<long> margins(const mv_PelBuffer& image, FilterList filters, mvPair<long> plane,
                     const Options& options) {
    mvPair<long> margin = options.margin;
    const bool needsX = needsReach(image.width(), plane.x, margin.x, options.border);
    const bool needsY = needsReach(image.height(), plane.y, margin.y, options.border);
    if (!needsX && !needsY) return margin;
    const mvPair<long> reach = reachOf(filters);
    if (needsX) margin.x = marginFor(reach.x, plane.x);
    if (needsY) margin.y = marginFor(reach.y, plane.y);
    return margin;
}

}  // namespace

TilePlan checkedPlan(const mv_PelBuffer& image, FilterList filters, const mv_PelBuffer& out,
                     bool givesDoubles, const mvFilterImageOptions& options) {
    requireBound(image);
    requireFilters(filters);
    const Plane known = planeOf(filters);
    const mvPair<long> plane = planeOfTiles(known, image, options.border);
    requireTransformable(plane);
    requireOutputFor(options, givesDoubles);
    requireMargin(image, plane, known.has_value(), options);
    requireThreads(options.threads);
    requireOutputSize(image, out);
    const mvPair<long> margin =
        known ? margins(image, filters, plane, options) : mvPair<long>(0, 0);
    return {planAxis(image.width(), plane.x, margin.x, options.border),
            planAxis(image.height(), plane.y, margin.y, options.border), options.border};
}

}  // namespace mvi
