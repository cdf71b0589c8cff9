// The two-dimensional transforms: a pass over the rows, then one over the columns.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/kernel.h>
#include <filt/fft/internal/row_band.h>
#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace {

// Attention is polled before each line whose index is a multiple of this; the passes go through as
// many rows at a time.
constexpr long kLinesPerPoll = 16;

// Columns go through the passes in steps of whole cache lines of each row.
constexpr long kColumnsPerStep = 64;

// Rows of a plane of our own stand apart by a cache line more than a power of two, since addresses
// that far apart compete for the same places in the caches.
constexpr long kPitchPadding = 16;

struct AlignedDelete {
    void operator()(float* floats) const { ::operator delete[](floats, std::align_val_t(64)); }
};
using Floats = std::unique_ptr<float[], AlignedDelete>;

Floats makeFloats(std::size_t count) {
    return Floats(new (std::align_val_t(64)) float[count]);
}

// Sizes and memory of one transform.
struct Work {
    Work(const mvi::KernelPath& kernelPath, mvPair<long> planeSize)
        : path(kernelPath),
          size(planeSize),
          scratch(makeFloats(mvi::kernelScratchFloats(size.x, size.y))),
          rows(new const float*[static_cast<std::size_t>(size.y + mvi::kRowsAhead)]) {}

    // Where the column pass finds row y.
    const float*& row(long y) { return rows[static_cast<std::size_t>(y)]; }

    const mvi::KernelPath& path;
    mvPair<long> size;
    Floats scratch;
    std::unique_ptr<const float*[]> rows;
};

// The poll that a blocked transposition between the passes makes: small planes go without. The
// passes here need no transposition, but the number of polls of a call is part of its contract.
void pollTransposition(mvPair<long> size, long smallest) {
    if (size.x >= smallest && size.y >= smallest) mvi::pollAttention();
}

// Calls transform(rows, count) with the numbers of a few rows of the band at a time.
template <class Transform>
void passRows(long height, const mvi::RowBand& band, Transform transform) {
    for (long first = 0; first < height; first += kLinesPerPoll) {
        long rows[kLinesPerPoll];
        long count = 0;
        for (long y = first; y < std::min(first + kLinesPerPoll, height); ++y) {
            if (band.contains(y)) rows[count++] = y;
        }
        if (count == 0) continue;
        if (band.contains(first)) mvi::pollAttention();
        transform(rows, count);
    }
}

// Calls transform(x, count) for the columns 0 to `end` - 1, a few at a time.
template <class Transform>
void passColumns(Work& work, long end, Transform transform) {
    for (long i = 0; i < mvi::kRowsAhead; ++i)
        work.row(work.size.y + i) = work.row(work.size.y - 1);
    for (long x = 0; x < end; x += kColumnsPerStep) {
        const long count = std::min(kColumnsPerStep, end - x);
        for (long i = 0; i < count; i += kLinesPerPoll) mvi::pollAttention();
        transform(x, count);
    }
}

// Writes row y of a source and tells the column pass where it is; the rows behind those of the
// source are alike, and the first of them serves for all. Returns whether there is a row to
// transform.
bool writeRow(Work& work, const mvi::RowSource& source, float* plane, long y) {
    const long filled = source.rows(), pitch = 2 * work.size.x;
    float* const row = plane + pitch * std::min(y, filled);
    work.row(y) = row;
    if (y < filled) source.write(y, row);
    if (y == filled) std::fill_n(row, pitch, 0.0f);
    return y <= filled;
}

// The row pass of a source; transform(rows, count) transforms rows in place.
template <class Transform>
void passSourceRows(Work& work, const mvi::RowSource& source, float* plane, Transform transform) {
    passRows(work.size.y, mvi::RowBand(work.size.y), [&](const long* numbers, long count) {
        float* rows[kLinesPerPoll];
        long rowCount = 0;
        for (long i = 0; i < count; ++i) {
            const bool isNew = writeRow(work, source, plane, numbers[i]);
            if (isNew) rows[rowCount++] = plane + 2 * work.size.x * numbers[i];
        }
        if (rowCount > 0) transform(rows, rowCount);
    });
}

// The row pass of a real source. Single samples are their own transforms.
void passRealRows(Work& work, const mvi::RowSource& source, float* plane) {
    if (work.size.x == 1) {
        for (long y = 0; y < work.size.y; ++y) writeRow(work, source, plane, y);
        return;
    }
    passSourceRows(work, source, plane, [&](float* const* rows, long count) {
        work.path.realRows(rows, rows, count, work.size.x, work.scratch.get());
    });
}

// F(-u, -v) = conj F(u, v) gives the columns beyond W/2 from those that were just finished.
void fillMirrored(const Work& work, float* plane, long x, long count) {
    const mvPair<long> size = work.size;
    const long first = std::max(x, 1L), end = std::min(x + count, size.x / 2);
    if (first >= end) return;
    for (long y = 0; y < size.y; ++y) {
        float* const mirror = plane + 2 * size.x * (y == 0 ? 0 : size.y - y);
        work.path.mirrored(plane + 2 * (size.x * y + first), end - first,
                           mirror + 2 * (size.x - first + 1));
    }
}

// Lets the column pass find a row of zeros in the place of every row outside the band that is one.
// Returns whether the contract wants rows exchanged that are not.
bool findZeroRows(Work& work, const mvi::RowBand& band, const float* zeroRow) {
    const mvPair<long> size = work.size;
    const bool isSquare = size.x == size.y && size.x >= 4;
    bool mustExchange = false;
    for (long y = 0; y < size.y; ++y) {
        const bool isZero = !band.contains(y) && mvi::isAllZero(work.row(y), 2 * size.x);
        if (isZero) work.row(y) = zeroRow;
        if (!isZero && isSquare && band.excludesTile(y / 4 * 4)) mustExchange = true;
    }
    return mustExchange;
}

// Lets the column pass find all rows outside the band in `dst`, which may be `src`.
void copyRowsOutside(Work& work, const mvi::RowBand& band, const float* src, float* dst) {
    const long width = 2 * work.size.x;
    for (long y = 0; y < work.size.y; ++y) {
        if (band.contains(y)) continue;
        if (src != dst) std::copy_n(src + width * y, width, dst + width * y);
        work.row(y) = dst + width * y;
    }
}

// Lanes that are not wanted cost less than columns that fill no panel.
long wholePanels(long columns) {
    return (columns + kLinesPerPoll - 1) / kLinesPerPoll * kLinesPerPoll;
}

// A complex transform with a band, of a plane into another or into itself, or of what `columns`
// and `sink` ask for alone.
class ComplexTransform {
  public:
    ComplexTransform(const mvi::KernelPath& path, mvPair<long> size, const mvi::RowBand& band,
                     bool inverse)
        : work_(path, size), band_(band), inverse_(inverse) {}

    // `dst` may be `src`.
    void between(const float* src, float* dst, long columns, mvi::ColumnSink* sink) {
        const bool mustExchange = findRows(src);
        if (mustExchange) copyRowsOutside(work_, band_, src, dst);
        const long pitch = 2 * work_.size.x;
        passBandRows([=](long y) { return dst + pitch * y; });
        if (mustExchange) mvi::exchangeUnmovedTiles(dst, work_.size.x, band_);
        passColumnsTo(src == dst ? work_.size.x : columns, columns, sink, pitch,
                      [=](long x) { return dst + 2 * x; });
    }

    void toSink(const float* src, long columns, mvi::ColumnSink& sink) {
        const mvPair<long> size = work_.size;
        if (findRows(src)) {
            const Floats plane = makeFloats(static_cast<std::size_t>(2 * size.x * size.y));
            return between(src, plane.get(), columns, &sink);
        }
        const long rowPitch = 2 * size.x + kPitchPadding;
        const long panelPitch = 2 * std::min(kColumnsPerStep, size.x) + kPitchPadding;
        const Floats rows = makeFloats(static_cast<std::size_t>(rowPitch * band_.rowCount()));
        const Floats panel = makeFloats(static_cast<std::size_t>(panelPitch * size.y));
        passBandRows([rowPitch, next = rows.get()](long) mutable {
            return std::exchange(next, next + rowPitch);
        });
        passColumnsTo(columns, columns, &sink, panelPitch, [&](long) { return panel.get(); });
    }

    void fromSource(const mvi::RowSource& source, float* dst) {
        passSourceRows(work_, source, dst, [&](float* const* rows, long count) {
            work_.path.complexRows(rows, rows, count, work_.size.x, inverse_, work_.scratch.get());
        });
        passColumnsTo(work_.size.x, 0, nullptr, 2 * work_.size.x,
                      [=](long x) { return dst + 2 * x; });
    }

  private:
    // Says where the rows are; true when some must be exchanged between the passes.
    bool findRows(const float* src) {
        for (long y = 0; y < work_.size.y; ++y) work_.row(y) = src + 2 * work_.size.x * y;
        if (band_.isFull()) return false;
        zeroRow_ = makeFloats(static_cast<std::size_t>(2 * work_.size.x));
        std::fill_n(zeroRow_.get(), 2 * work_.size.x, 0.0f);
        return findZeroRows(work_, band_, zeroRow_.get());
    }

    // The row pass from where the rows are to to(y), where the column pass will find them.
    template <class To>
    void passBandRows(To to) {
        passRows(work_.size.y, band_, [&](const long* numbers, long count) {
            const float* sources[kLinesPerPoll];
            float* results[kLinesPerPoll];
            for (long i = 0; i < count; ++i) {
                const float*& row = work_.row(numbers[i]);
                sources[i] = row;
                row = results[i] = to(numbers[i]);
            }
            work_.path.complexRows(sources, results, count, work_.size.x, inverse_,
                                   work_.scratch.get());
        });
    }

    // Transforms the first `computed` columns, to(x) being where the row 0 of column x goes, and
    // hands the first `sunk` of them on. The attention is polled for all columns.
    template <class To>
    void passColumnsTo(long computed, long sunk, mvi::ColumnSink* sink, long pitch, To to) {
        pollTransposition(work_.size, 4);
        passColumns(work_, work_.size.x, [&](long x, long count) {
            if (x >= computed) return;
            float* const first = to(x);
            work_.path.complexColumns(work_.rows.get(), first, pitch, work_.size.y, x,
                                      std::min(count, wholePanels(computed - x)), inverse_,
                                      work_.scratch.get());
            if (sink != nullptr && x < sunk) {
                sink->take({x, std::min(count, sunk - x), first, pitch});
            }
        });
        pollTransposition(work_.size, 4);
    }

    Work work_;
    mvi::RowBand band_;
    bool inverse_;
    Floats zeroRow_;
};

// Rows that are in the plane already.
class RowsOfThePlane : public mvi::RowSource {
  public:
    explicit RowsOfThePlane(long rows) : rows_(rows) {}
    long rows() const override { return rows_; }
    void write(long, float*) const override {}

  private:
    long rows_;
};

}  // namespace

void mf_FFT2D(float* data, mvPair<long> size, int direction, int rowLow, int rowHigh,
              const mvi::KernelPath& path) {
    mf_FFT2D(data, data, size, direction, rowLow, rowHigh, size.x, nullptr, path);
}

void mf_FFT2D(const mvi::RowSource& source, float* data, mvPair<long> size,
              const mvi::KernelPath& path) {
    ComplexTransform(path, size, mvi::RowBand(size.y), false).fromSource(source, data);
}

void mf_FFT2D(const float* src, float* dst, mvPair<long> size, int direction, int rowLow,
              int rowHigh, long columns, mvi::ColumnSink* sink, const mvi::KernelPath& path) {
    ComplexTransform transform(path, size, {size.y, rowLow, rowHigh}, direction < 0);
    if (dst != nullptr) {
        transform.between(src, dst, columns, sink);
    } else {
        transform.toSink(src, columns, *sink);
    }
}

void mf_RealFFT2D(float* data, mvPair<long> size, int, int, int, const mvi::KernelPath& path) {
    mf_RealFFT2D(RowsOfThePlane(size.y), data, size, path);
}

void mf_RealFFT2D(const mvi::RowSource& source, float* data, mvPair<long> size,
                  const mvi::KernelPath& path) {
    Work work(path, size);
    passRealRows(work, source, data);
    const long transpositionLimit = size.x == size.y ? 8 : 4;
    pollTransposition(size, transpositionLimit);
    passColumns(work, size.x / 2 + 1, [&](long x, long count) {
        path.complexColumns(work.rows.get(), data + 2 * x, 2 * size.x, size.y, x, count, false,
                            work.scratch.get());
        fillMirrored(work, data, x, count);
    });
    pollTransposition(size, transpositionLimit);
    // The filling of the mirrored half has a poll of its own.
    mvi::pollAttention();
}
