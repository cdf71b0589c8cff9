// Picture in, picture out: a filter applied to an image of any size.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>
#include <filt/fft/internal/pel_map.h>
#include <filt/fft/internal/spatial_plane.h>
#include <filt/freqfilt/filter_image.h>
#include <filt/freqfilt/internal/half_filters.h>
#include <filt/freqfilt/internal/known_filters.h>
#include <filt/freqfilt/internal/planeless_tile.h>
#include <filt/freqfilt/internal/shared_pels.h>
#include <filt/freqfilt/internal/three_calls.h>
#include <filt/freqfilt/internal/tile_threads.h>

#include <limits>
#include <memory>
#include <type_traits>

namespace {

using Options = mvFilterImageOptions;
using Plane = std::optional<mvPair<long>>;

void requireBound(const mv_PelBuffer& image) {
    if (!image.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
}

// The plane of the tiles, for a filter that knows it and for one that does not.
mvPair<long> planeOfTiles(const Plane& known, const mv_PelBuffer& image, mvBorder border) {
    if (known) return *known;
    return {mvi::planeFor(image.width(), border), mvi::planeFor(image.height(), border)};
}

void requireTransformable(mvPair<long> plane) {
    using InvalidSize = mvFrequencyDefs::InvalidSize;
    constexpr long kLargestSide = mvi::BufferAccess::kLargestSide;
    if (plane.x > kLargestSide || plane.y > kLargestSide) {
        throw InvalidSize("Width and Height must be no larger than 2048.");
    }
    if (!mvi::isPowerOfTwo(plane.x) || !mvi::isPowerOfTwo(plane.y)) {
        throw InvalidSize("Size must be a power of 2.");
    }
}

template <class U>
void requireOutputFor(const Options& options) {
    using InvalidArgument = mvFrequencyDefs::InvalidArgument;
    constexpr bool kDoubles = std::is_same_v<U, double>;
    if (options.result == mvFilterResult::real && !kDoubles) {
        throw InvalidArgument("Real parts need an output of doubles.");
    }
    if (options.rescale && kDoubles) {
        throw InvalidArgument("Rescaling needs an output of integers.");
    }
}

bool leavesNothing(long image, long plane, long margin, mvBorder border) {
    return margin >= plane - margin && mvi::needsTiles(image, plane, margin, border);
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

// Whether the filter's reach is needed to know how an axis is cut. An image filter's reach costs a
// transform.
bool needsReach(long image, long plane, long margin, mvBorder border) {
    return margin == -1 && mvi::needsTiles(image, plane, plane / 4, border);
}

mvPair<long> margins(const mv_PelBuffer& image, const mvFrequencyFilter& filter, mvPair<long> plane,
                     const Options& options) {
    mvPair<long> margin = options.margin;
    const bool needsX = needsReach(image.width(), plane.x, margin.x, options.border);
    const bool needsY = needsReach(image.height(), plane.y, margin.y, options.border);
    if (!needsX && !needsY) return margin;
    const mvPair<long> reach = mvi::reachOf(filter);
    if (needsX) margin.x = std::min(reach.x, plane.x / 4);
    if (needsY) margin.y = std::min(reach.y, plane.y / 4);
    return margin;
}

// The checks that come before anything changes, and the plan.
template <class U>
mvi::TilePlan checkedPlan(const mv_PelBuffer& image, const mvFrequencyFilter& filter,
                          const mvPelBuffer<U>& out, const Options& options) {
    requireBound(image);
    const Plane known = mvi::planeOf(filter);
    const mvPair<long> plane = planeOfTiles(known, image, options.border);
    requireTransformable(plane);
    requireOutputFor<U>(options);
    requireMargin(image, plane, known.has_value(), options);
    requireThreads(options.threads);
    requireOutputSize(image, out);
    const mvPair<long> margin = known ? margins(image, filter, plane, options) : mvPair<long>(0, 0);
    return {mvi::planAxis(image.width(), plane.x, margin.x, options.border),
            mvi::planAxis(image.height(), plane.y, margin.y, options.border), options.border};
}

template <class T>
mvPelBuffer_const<T> copyOf(const mvPelBuffer_const<T>& image) {
    mvPelBuffer<T> copy(image.width(), image.height());
    copy.offset(image.offset());
    mfPelCopy(image, copy);
    return copy;
}

// Filters tiles of an image into results of the type P, which have the image's size.
template <class T, class P>
class PictureWork : public mvi::TileWork {
  public:
    PictureWork(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                const mvi::TilePlan& plan, mvi::TileResult result, P* first, std::ptrdiff_t step)
        : image_(image),
          filter_(filter),
          half_(result == mvi::TileResult::realParts
                    ? nullptr
                    : mvi::halfFilterOf(filter, std::is_same_v<P, double>)),
          plan_(plan),
          result_(result),
          first_(first),
          step_(step) {}

    void run(mvi::TileQueue& queue, long number) override {
        if (number == queue.end()) return;
        if (half_) {
            runTiles(mvi::PlanelessTile<T>(*half_), queue, number);
        } else {
            runTiles(mvi::ThreeCalls(filter_, plan_.plane()), queue, number);
        }
    }

  private:
    template <class Way>
    void runTiles(Way way, mvi::TileQueue& queue, long number) {
        mvi::TileImage<T> image(image_, plan_);
        for (; number != queue.end(); number = queue.next()) {
            const mvPair<long> tile = plan_.tile(number);
            image.select(tile);
            way.compute(image, output(tile));
        }
    }

    mvi::TileOutput<P> output(mvPair<long> tile) const {
        const long x = plan_.x.begin(tile.x), y = plan_.y.begin(tile.y);
        return {result_,
                {plan_.x.margin, plan_.y.margin},
                {plan_.x.count(tile.x), plan_.y.count(tile.y)},
                first_ + y * step_ + x,
                step_};
    }

    const mvPelBuffer_const<T>& image_;
    const mvFrequencyFilter& filter_;
    std::unique_ptr<const mvi::SpectrumFilter> half_;
    const mvi::TilePlan& plan_;
    mvi::TileResult result_;
    P* first_;
    std::ptrdiff_t step_;
};

// Magnitudes and real parts go straight to the output; with several tiles, not over pels that a
// later one reads.
template <class T, class U>
void filterInto(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                const mvi::TilePlan& plan, const Options& options, mvPelBuffer<U>& out) {
    const bool isInTheWay =
        plan.tiles() > 1 && mvi::sharePels(mvi::pelBytes(image), mvi::pelBytes(out));
    const mvPelBuffer_const<T> pels = isInTheWay ? copyOf(image) : image;
    PictureWork<T, U> work(pels, filter, plan,
                           options.result == mvFilterResult::real ? mvi::TileResult::realParts
                                                                  : mvi::TileResult::magnitudes,
                           out.pointToOffset(), out.rowUpdate());
    mvi::shareTiles(plan.tiles(), options.threads, work);
}

// The range of the whole result comes before the first pel, so that all is read by then.
template <class T, class U>
void filterRescaled(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                    const mvi::TilePlan& plan, const Options& options, mvPelBuffer<U>& out) {
    const long width = image.width(), height = image.height();
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const std::unique_ptr<float[]> squares(new float[count]);
    PictureWork<T, float> work(image, filter, plan, mvi::TileResult::squares, squares.get(), width);
    mvi::shareTiles(plan.tiles(), options.threads, work);

    const mvi::KernelPath& path = mvi::bestKernelPath();
    mvi::SquareRange range;
    path.rangeOfSquares(squares.get(), static_cast<long>(count), range);
    const float scale = mvi::inverseScale(plan.plane());
    const mvi::PelMap map(range, scale, static_cast<float>(std::numeric_limits<U>::max()));
    for (long y = 0; y < height; ++y) {
        path.pels<U>().fromSquaresMapped(squares.get() + width * y, width, scale, map.low,
                                         map.factor, out.pointToRow(y));
    }
}

template <class T, class U>
void filterImage(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                 const mvi::TilePlan& plan, const Options& options, mvPelBuffer<U>& out) {
    if constexpr (!std::is_same_v<U, double>) {
        if (options.rescale) return filterRescaled(image, filter, plan, options, out);
    }
    filterInto(image, filter, plan, options, out);
}

}  // namespace

template <class T, class U>
void mfFilterImage(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                   mvPelBuffer<U>& out, const mvFilterImageOptions& options) {
    const mvi::TilePlan plan = checkedPlan(image, filter, out, options);
    if (out.isBound()) return filterImage(image, filter, plan, options, out);
    mvPelBuffer<U> result(image.width(), image.height(), 32);
    filterImage(image, filter, plan, options, result);
    result.offset(image.offset());
    result.copyXforms(image);
    out = result;
}

mvPair<long> mfFilterPlane(const mvFrequencyFilter& filter) {
    return mvi::planeOf(filter).value_or(mvPair<long>());
}

mvPair<long> mfFilterReach(const mvFrequencyFilter& filter) {
    return mvi::reachOf(filter);
}

#define MVFREQ_FILTER_IMAGE_OF(T, U)                                                   \
    template void mfFilterImage(const mvPelBuffer_const<T>&, const mvFrequencyFilter&, \
                                mvPelBuffer<U>&, const mvFilterImageOptions&);
#define MVFREQ_FILTER_IMAGE_FROM(T)           \
    MVFREQ_FILTER_IMAGE_OF(T, unsigned char)  \
    MVFREQ_FILTER_IMAGE_OF(T, unsigned short) \
    MVFREQ_FILTER_IMAGE_OF(T, double)

MVFREQ_FILTER_IMAGE_FROM(unsigned char)
MVFREQ_FILTER_IMAGE_FROM(unsigned short)
MVFREQ_FILTER_IMAGE_FROM(double)
#undef MVFREQ_FILTER_IMAGE_FROM
#undef MVFREQ_FILTER_IMAGE_OF
