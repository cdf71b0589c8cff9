// Picture in, picture out: a filter applied to an image of any size.
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/fft/internal/pel_map.h>
#include <filt/freqfilt/filter_image.h>
#include <filt/freqfilt/internal/half_filters.h>
#include <filt/freqfilt/internal/known_filters.h>
#include <filt/freqfilt/internal/picture_plan.h>
#include <filt/freqfilt/internal/planeless_tile.h>
#include <filt/freqfilt/internal/shared_pels.h>
#include <filt/freqfilt/internal/three_calls.h>
#include <filt/freqfilt/internal/tile_threads.h>

#include <limits>
#include <memory>
#include <type_traits>

namespace {

using Options = mvFilterImageOptions;
using mvi::FilterList;

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
    PictureWork(const mvPelBuffer_const<T>& image, FilterList filters, const mvi::TilePlan& plan,
                mvi::PlaneResult result, P* first, std::ptrdiff_t step)
        : image_(image),
          filters_(filters),
          half_(halfOf(filters, result)),
          plan_(plan),
          result_(result),
          first_(first),
          step_(step) {}

    void run(mvi::TileQueue& queue, std::int64_t number) override {
        if (number == queue.end()) return;
        if (half_) {
            runTiles(mvi::PlanelessTile<T>(*half_), queue, number);
        } else {
            runTiles(mvi::ThreeCalls(filters_, plan_.plane()), queue, number);
        }
    }

  private:
    using HalfFilter = std::unique_ptr<const mvi::SpectrumFilter>;

    // Half a plane shows magnitudes of one filter.
    static HalfFilter halfOf(FilterList filters, mvi::PlaneResult result) {
        if (filters.size() != 1 || result == mvi::PlaneResult::realParts) return nullptr;
        return mvi::halfFilterOf(*filters.front(), std::is_same_v<P, double>);
    }

    template <class Way>
    void runTiles(Way way, mvi::TileQueue& queue, std::int64_t number) {
        mvi::TileImage<T> image(image_, plan_);
        for (; number != queue.end(); number = queue.next()) {
            const mvPair<long> tile = plan_.tile(number);
            image.select(tile);
            way.compute(image, output(tile));
        }
    }

    mvi::PlaneOutput<P> output(mvPair<long> tile) const {
        const long x = plan_.x.begin(tile.x), y = plan_.y.begin(tile.y);
        return {result_,
                {plan_.x.margin, plan_.y.margin},
                {plan_.x.count(tile.x), plan_.y.count(tile.y)},
                first_ + y * step_ + x,
                step_};
    }

    const mvPelBuffer_const<T>& image_;
    const FilterList filters_;
    const HalfFilter half_;
    const mvi::TilePlan& plan_;
    mvi::PlaneResult result_;
    P* first_;
    std::ptrdiff_t step_;
};

// Magnitudes and real parts go straight to the output; with several tiles, not over pels that a
// later one reads.
template <class T, class U>
void filterInto(const mvPelBuffer_const<T>& image, FilterList filters, const mvi::TilePlan& plan,
                const Options& options, mvPelBuffer<U>& out) {
    const bool isInTheWay =
        plan.tiles() > 1 && mvi::sharePels(mvi::pelBytes(image), mvi::pelBytes(out));
    const mvPelBuffer_const<T> pels = isInTheWay ? copyOf(image) : image;
    PictureWork<T, U> work(pels, filters, plan,
                           options.result == mvFilterResult::real ? mvi::PlaneResult::realParts
                                                                  : mvi::PlaneResult::magnitudes,
                           out.pointToOffset(), out.rowUpdate());
    mvi::shareTiles(plan.tiles(), options.threads, work);
}

// The range of the whole result comes before the first pel, so that all is read by then.
template <class T, class U>
void filterRescaled(const mvPelBuffer_const<T>& image, FilterList filters,
                    const mvi::TilePlan& plan, const Options& options, mvPelBuffer<U>& out) {
    const long width = image.width(), height = image.height();
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const std::unique_ptr<float[]> squares(new float[count]);
    PictureWork<T, float> work(image, filters, plan, mvi::PlaneResult::squares, squares.get(),
                               width);
    mvi::shareTiles(plan.tiles(), options.threads, work);

    const mvi::KernelPath& path = mvi::bestKernelPath();
    mvi::SquareRange range;
    path.rangeOfSquares(squares.get(), static_cast<std::int64_t>(count), range);
    const float scale = mvi::inverseScale(plan.plane());
    const mvi::PelMap map(range, scale, static_cast<float>(std::numeric_limits<U>::max()));
    for (long y = 0; y < height; ++y) {
        path.pels<U>().fromSquaresMapped(squares.get() + std::ptrdiff_t{width} * y, width, scale,
                                         map.low, map.factor, out.pointToRow(y));
    }
}

template <class T, class U>
void filterImage(const mvPelBuffer_const<T>& image, FilterList filters, const mvi::TilePlan& plan,
                 const Options& options, mvPelBuffer<U>& out) {
    if constexpr (!std::is_same_v<U, double>) {
        if (options.rescale) return filterRescaled(image, filters, plan, options, out);
    }
    filterInto(image, filters, plan, options, out);
}

}  // namespace

template <class T, class U>
void mfFilterImage(const mvPelBuffer_const<T>& image,
                   std::span<const mvFrequencyFilter* const> filters, mvPelBuffer<U>& out,
                   const mvFilterImageOptions& options) {
    const mvi::TilePlan plan =
        mvi::checkedPlan(image, filters, out, std::is_same_v<U, double>, options);
    if (out.isBound()) return filterImage(image, filters, plan, options, out);
    mvPelBuffer<U> result(image.width(), image.height(), 32);
    filterImage(image, filters, plan, options, result);
    result.offset(image.offset());
    result.copyXforms(image);
    out = result;
}

template <class T, class U>
void mfFilterImage(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                   mvPelBuffer<U>& out, const mvFilterImageOptions& options) {
    mfFilterImage(image, {&filter}, out, options);
}

mvPair<long> mfFilterPlane(std::span<const mvFrequencyFilter* const> filters) {
    mvi::requireFilters(filters);
    return mvi::planeOf(filters).value_or(mvPair<long>());
}

mvPair<long> mfFilterPlane(const mvFrequencyFilter& filter) {
    return mfFilterPlane({&filter});
}

mvPair<long> mfFilterReach(std::span<const mvFrequencyFilter* const> filters) {
    mvi::requireFilters(filters);
    mvi::planeOf(filters);
    return mvi::reachOf(filters);
}

mvPair<long> mfFilterReach(const mvFrequencyFilter& filter) {
    return mfFilterReach({&filter});
}

#define MVFREQ_FILTER_IMAGE_OF(T, U)                                                        \
    template void mfFilterImage(const mvPelBuffer_const<T>&, const mvFrequencyFilter&,      \
                                mvPelBuffer<U>&, const mvFilterImageOptions&);              \
    template void mfFilterImage(const mvPelBuffer_const<T>&,                                \
                                std::span<const mvFrequencyFilter* const>, mvPelBuffer<U>&, \
                                const mvFilterImageOptions&);
#define MVFREQ_FILTER_IMAGE_FROM(T)           \
    MVFREQ_FILTER_IMAGE_OF(T, unsigned char)  \
    MVFREQ_FILTER_IMAGE_OF(T, unsigned short) \
    MVFREQ_FILTER_IMAGE_OF(T, double)

MVFREQ_FILTER_IMAGE_FROM(unsigned char)
MVFREQ_FILTER_IMAGE_FROM(unsigned short)
MVFREQ_FILTER_IMAGE_FROM(double)
#undef MVFREQ_FILTER_IMAGE_FROM
#undef MVFREQ_FILTER_IMAGE_OF
