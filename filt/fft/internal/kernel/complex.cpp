// The complex transform of a plane: a pass over the rows of the band, then one over the columns.
#include <filt/fft/internal/kernel/row_store.h>
#include <filt/fft/internal/kernel/source_rows.h>
#include <filt/fft/internal/kernel/transform.h>
#include <filt/fft/internal/kernel/work.h>

namespace mvi {

namespace {

// Whole vectors with lanes that nobody needs are faster than single columns.
long wholeVectors(long columns) {
    return (columns + kMostLanes - 1) / kMostLanes * kMostLanes;
}

class ComplexTransform {
  public:
    ComplexTransform(Work work, const RowBand& band, Direction direction)
        : work_(std::move(work)), band_(band), direction_(direction) {}

    // Of a plane into another one, or into itself.
    void between(const float* src, float* dst, long columns, ColumnSink* sink) {
        takeRows(src);
        const bool exchanges = mustExchange();
        if (exchanges) copyRowsOutside(src, dst);
        const long pitch = 2 * work_.size.x;
        passBandRows([=](long y) { return dst + pitch * y; }, !exchanges);
        if (exchanges) exchangeUnmovedTiles(dst, work_.size.x, band_);
        passColumnsTo(src == dst ? work_.size.x : columns, columns, sink, pitch,
                      [=](long x) { return dst + 2 * x; });
    }

    // Of a plane into a sink: only the rows of the band and a few columns need memory.
    void toSink(const float* src, long columns, ColumnSink& sink) {
        const mvPair<long> size = work_.size;
        takeRows(src);
        if (mustExchange()) {
            const Floats plane = makeFloats(static_cast<std::size_t>(2 * size.x * size.y));
            return between(src, plane.get(), columns, &sink);
        }
        RowStore rows(2 * size.x + kPitchPadding, band_.rowCount());
        const long panelPitch = 2 * std::min(kColumnsPerStep, size.x) + kPitchPadding;
        const Floats panel = makeFloats(static_cast<std::size_t>(panelPitch * size.y));
        passBandRows([&rows, index = 0L](long) mutable { return rows.row(index++); }, true);
        passColumnsTo(columns, columns, &sink, panelPitch, [&](long) { return panel.get(); });
    }

    void fromSource(const RowSource& source, float* dst) {
        passSourceRows(work_, source, dst, [&](float* const* rows, long count) {
            work_.path.complexRows(rows, rows, count, work_.size.x, direction_,
                                   work_.scratch.get());
        });
        passColumnsTo(work_.size.x, 0, nullptr, 2 * work_.size.x,
                      [=](long x) { return dst + 2 * x; });
    }

  private:
    bool isZero(long y) { return isAllZero(work_.row(y), 2 * work_.size.x); }

    // Enters the rows of `src` in the table; all rows outside the band that are zero share one row
    // of zeros.
    void takeRows(const float* src) {
        const mvPair<long> size = work_.size;
        for (long y = 0; y < size.y; ++y) work_.row(y) = src + 2 * size.x * y;
        if (band_.isFull()) return;
        zeroRow_ = makeFloats(static_cast<std::size_t>(2 * size.x));
        std::fill_n(zeroRow_.get(), 2 * size.x, 0.0f);
        for (long y = 0; y < size.y; ++y) {
            if (!band_.contains(y) && isZero(y)) work_.row(y) = zeroRow_.get();
        }
    }

    // Whether tiles that stay where they are (see exchangeUnmovedTiles) hold rows that are not
    // zero.
    bool mustExchange() {
        const mvPair<long> size = work_.size;
        if (band_.isFull() || size.x != size.y || size.x < 4) return false;
        for (long y = 0; y < size.y; ++y) {
            const bool isZeroOutside = work_.row(y) == zeroRow_.get();
            if (!isZeroOutside && band_.excludesTile(y / 4 * 4)) return true;
        }
        return false;
    }

    // Enters all rows outside the band as rows of `dst`, which may be `src`.
    void copyRowsOutside(const float* src, float* dst) {
        const long width = 2 * work_.size.x;
        for (long y = 0; y < work_.size.y; ++y) {
            if (band_.contains(y)) continue;
            if (src != dst) std::copy_n(src + width * y, width, dst + width * y);
            work_.row(y) = dst + width * y;
        }
    }

    // Transforms the rows of the band into to(y), which is entered in the table. Filters leave rows
    // of zeros; their transforms are the same, so with `sharesZeros` the first one serves for all.
    // Where tiles will be exchanged, each row needs its own place.
    template <class To>
    void passBandRows(To to, bool sharesZeros) {
        const float* transformedZero = nullptr;
        passRows(work_.size.y, band_, [&](const long* numbers, long count) {
            const float* sources[kRowsPerStep];
            float* results[kRowsPerStep];
            long taken = 0;
            for (long i = 0; i < count; ++i) {
                const float*& row = work_.row(numbers[i]);
                const bool zero = sharesZeros && isZero(numbers[i]);
                if (zero && transformedZero != nullptr) {
                    row = transformedZero;
                    continue;
                }
                sources[taken] = row;
                row = results[taken++] = to(numbers[i]);
                if (zero) transformedZero = row;
            }
            work_.path.complexRows(sources, results, taken, work_.size.x, direction_,
                                   work_.scratch.get());
        });
    }

    // Transforms the first `computed` columns and hands the first `sunk` of them to the sink. Row 0
    // of column x goes to to(x). Attention is polled for all columns, computed or not.
    template <class To>
    void passColumnsTo(long computed, long sunk, ColumnSink* sink, long pitch, To to) {
        pollTransposition(work_.size, 4);
        passColumns(work_, work_.size.x, [&](long x, long count) {
            if (x >= computed) return;
            float* const first = to(x);
            work_.path.complexColumns(work_.rows.get(), first, pitch, work_.size.y, x,
                                      std::min(count, wholeVectors(computed - x)), direction_,
                                      work_.scratch.get());
            if (sink != nullptr && x < sunk) {
                sink->take({x, std::min(count, sunk - x), first, pitch});
            }
        });
        pollTransposition(work_.size, 4);
    }

    Work work_;
    RowBand band_;
    Direction direction_;
    Floats zeroRow_;
};

}  // namespace

void transformComplex(const RowSource& source, float* dst, mvPair<long> size,
                      const KernelPath& path) {
    ComplexTransform({path, size}, RowBand(size.y), Direction::forward).fromSource(source, dst);
}

void transformComplex(Work work, const float* src, float* dst) {
    const mvPair<long> size = work.size;
    ComplexTransform transform(std::move(work), RowBand(size.y), Direction::forward);
    transform.between(src, dst, size.x, nullptr);
}

void transformComplex(const float* src, float* dst, mvPair<long> size, Direction direction,
                      const RowBand& band, long columns, ColumnSink* sink, const KernelPath& path) {
    ComplexTransform transform({path, size}, band, direction);
    if (dst != nullptr) {
        transform.between(src, dst, columns, sink);
    } else {
        transform.toSink(src, columns, *sink);
    }
}

}  // namespace mvi
