// The inverse transform of a plane, of which only results are kept.
#include <filt/fft/internal/kernel/inverse_columns.h>
#include <filt/fft/internal/kernel/plane_results.h>
#include <filt/fft/internal/kernel/result_sink.h>

#include <cstdint>
#include <type_traits>
#include <vector>

namespace mvi {

namespace {

// The inverse of a plane whose rows outside the band are zero.
class RowsToResults {
  public:
    RowsToResults(const float* src, mvPair<long> size, const RowBand& band, const KernelPath& path)
        : src_(src), size_(size), band_(band), path_(path) {
        for (long y = 0; y < size.y; ++y) {
            if (isAllZero(row(y), 2 * size.x)) continue;
            rows_.push_back(static_cast<std::int32_t>(y));
            holdsOtherRows_ = holdsOtherRows_ || !band.contains(y) || isUnmoved(y);
        }
    }

    /// Rows outside the band are not transformed as the others are, and count all the same; so do
    /// those of a tile that stays where it is (see exchangeUnmovedTiles), which on a plane of 4 x 4
    /// may be rows of the band.
    bool holdsOtherRows() const { return holdsOtherRows_; }

    template <class P>
    void write(const PlaneOutput<P>& out) {
        InverseColumns columns(size_, rows_, path_, 0);
        const long begin = out.from.x;
        columns.passRows(begin, begin + out.size.x,
                         [&](const std::int32_t* rows, long count, const PanelBlocks& to, long y) {
                             pollRows(rows[count - 1] + 1);
                             const float* from[kMostLanes];
                             for (long r = 0; r < count; ++r) from[r] = row(rows[r]);
                             path_.complexRowsToPanels(from, count, size_.x, to, y,
                                                       columns.scratch());
                         });
        pollRows(size_.y);
        pollTransposition(size_, 4);
        columns.write(out);
        pollTransposition(size_, 4);
    }

  private:
    bool isUnmoved(long y) const {
        const bool hasTiles = size_.x == size_.y && size_.x >= 4 && !band_.isFull();
        return hasTiles && band_.excludesTile(y / 4 * 4);
    }

    const float* row(long y) const { return src_ + 2 * size_.x * y; }

    // The polls of the rows of the band before row `end`, empty ones among them.
    void pollRows(long end) {
        for (; nextRow_ < end; ++nextRow_) {
            if (nextRow_ % kLinesPerPoll == 0 && band_.contains(nextRow_)) pollAttention();
        }
    }

    const float* src_;
    mvPair<long> size_;
    const RowBand& band_;
    const KernelPath& path_;
    std::vector<std::int32_t> rows_;
    bool holdsOtherRows_ = false;
    long nextRow_ = 0;
};

}  // namespace

template <class P>
void transformToResults(const float* src, mvPair<long> size, const RowBand& band,
                        const PlaneOutput<P>& out, const KernelPath& path) {
    // Doubles show the sign of a NaN, and real parts that of a zero.
    if constexpr (!std::is_same_v<P, double>) {
        RowsToResults rows(src, size, band, path);
        if (!rows.holdsOtherRows()) return rows.write(out);
    }
    ResultSink<P> sink(out, inverseScale(size), path);
    transformComplex(src, nullptr, size, Direction::inverse, band, out.from.x + out.size.x, &sink,
                     path);
}

#define MVFREQ_RESULTS_OF(P)                                                                   \
    template void transformToResults(const float* src, mvPair<long> size, const RowBand& band, \
                                     const PlaneOutput<P>& out, const KernelPath& path);
MVFREQ_RESULTS_OF(unsigned char)
MVFREQ_RESULTS_OF(unsigned short)
MVFREQ_RESULTS_OF(double)
MVFREQ_RESULTS_OF(float)
#undef MVFREQ_RESULTS_OF

}  // namespace mvi
