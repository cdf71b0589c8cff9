// The two-dimensional transforms: a pass over the rows, then one over the columns.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/kernel.h>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace {

// Attention is polled before each line whose index is a multiple of this; the passes go through as
// many rows at a time.
constexpr long kLinesPerPoll = 16;

// Columns go through the passes in steps of whole cache lines of each row.
constexpr long kColumnsPerStep = 64;

struct AlignedDelete {
    void operator()(float* floats) const { ::operator delete[](floats, std::align_val_t(64)); }
};
using Scratch = std::unique_ptr<float[], AlignedDelete>;

Scratch makeScratch(mvPair<long> size) {
    return Scratch(new (std::align_val_t(64)) float[mf_KernelScratchFloats(size.x, size.y)]);
}

// The poll that a blocked transposition between the passes makes: small planes go without. The
// passes here need no transposition, but the number of polls of a call is part of its contract.
void pollTransposition(mvPair<long> size, long smallest) {
    if (size.x >= smallest && size.y >= smallest) mf_PollAttention();
}

// The rows of a band, inclusive limits in shifted coordinates.
class RowBand {
  public:
    RowBand(long height, long low, long high) : half_(height / 2), low_(low), high_(high) {}

    bool contains(long row) const {
        const long shifted = row < half_ ? row + half_ : row - half_;
        return shifted >= low_ && shifted <= high_;
    }

  private:
    long half_, low_, high_;
};

// Calls transform(rows, count) for the rows of a plane that are in the band, a few at a time.
template <class Contains, class Transform>
void passRows(float* plane, mvPair<long> size, Contains contains, Transform transform) {
    for (long first = 0; first < size.y; first += kLinesPerPoll) {
        float* rows[kLinesPerPoll];
        long count = 0;
        for (long y = first; y < std::min(first + kLinesPerPoll, size.y); ++y) {
            if (contains(y)) rows[count++] = plane + 2 * size.x * y;
        }
        if (count == 0) continue;
        if (contains(first)) mf_PollAttention();
        transform(rows, count);
    }
}

// Calls transform(x, count) for the columns 0 to `end` - 1, a few at a time.
template <class Transform>
void passColumns(long end, Transform transform) {
    for (long x = 0; x < end; x += kColumnsPerStep) {
        const long count = std::min(kColumnsPerStep, end - x);
        for (long i = 0; i < count; i += kLinesPerPoll) mf_PollAttention();
        transform(x, count);
    }
}

// True for +0 alone, of which a filter leaves whole rows.
bool isAllZero(const float* floats, long count) {
    const auto bytes = static_cast<std::size_t>(count - 1) * sizeof(float);
    return std::bit_cast<std::uint32_t>(floats[0]) == 0 &&
           std::memcmp(floats, floats + 1, bytes) == 0;
}

// Between the passes a square plane used to be transposed by tiles of 4 x 4, and the contract keeps
// its coarse rule for a band: pairs of tiles whose rows and columns both lie outside stay where
// they are. What such tiles hold enters the second pass with rows and columns exchanged; zeros, of
// course, are no matter.
void exchangeUnmovedTiles(float* data, long n, long rowLow, long rowHigh) {
    if (n < 4 || (rowLow <= 0 && rowHigh >= n)) return;
    const auto isOutside = [&](long base) {
        const long toStored = base < n / 2 ? -n / 2 : n / 2;
        return base + 4 < rowLow + toStored || base > rowHigh + toStored;
    };
    const auto row = [&](long y) { return data + 2 * n * y; };
    bool isZero = true;
    for (long y = 0; y < n && isZero; ++y)
        isZero = !isOutside(y / 4 * 4) || isAllZero(row(y), 2 * n);
    if (isZero) return;
    const auto exchange = [&](long a, long b) {
        std::swap(data[2 * a], data[2 * b]);
        std::swap(data[2 * a + 1], data[2 * b + 1]);
    };
    for (long y = 0; y < n; ++y) {
        if (!isOutside(y / 4 * 4)) continue;
        for (long x = 0; x < y; ++x) {
            if (isOutside(x / 4 * 4)) exchange(y * n + x, x * n + y);
        }
    }
}

// F(-u, -v) = conj F(u, v) gives the columns beyond W/2.
void fillHermitian(float* plane, mvPair<long> size) {
    mf_PollAttention();
    for (long y = 0; y < size.y; ++y) {
        const float* const mirror = plane + (y == 0 ? 0 : size.y - y) * 2 * size.x;
        float* const row = plane + y * 2 * size.x;
        for (long x = 1; x < size.x / 2; ++x) {
            row[2 * (size.x - x)] = mirror[2 * x];
            row[2 * (size.x - x) + 1] = -mirror[2 * x + 1];
        }
    }
}

}  // namespace

void mf_FFT2D(float* data, mvPair<long> size, int direction, int rowLow, int rowHigh,
              const mf_KernelPath& path) {
    const bool inverse = direction < 0;
    const RowBand band(size.y, rowLow, rowHigh);
    const Scratch scratch = makeScratch(size);
    passRows(
        data, size, [&](long y) { return band.contains(y); },
        [&](float* const* rows, long count) {
            path.complexRows(rows, rows, count, size.x, inverse, scratch.get());
        });
    pollTransposition(size, 4);
    if (size.x == size.y) exchangeUnmovedTiles(data, size.x, rowLow, rowHigh);
    passColumns(size.x, [&](long x, long count) {
        path.complexColumns(data, size.x, size.y, x, count, inverse, scratch.get());
    });
    pollTransposition(size, 4);
}

void mf_RealFFT2D(float* data, mvPair<long> size, int, int, int, const mf_KernelPath& path) {
    const long transpositionLimit = size.x == size.y ? 8 : 4;
    const Scratch scratch = makeScratch(size);
    if (size.x > 1) {
        passRows(
            data, size, [](long) { return true; },
            [&](float* const* rows, long count) {
                path.realRows(rows, rows, count, size.x, scratch.get());
            });
    }
    pollTransposition(size, transpositionLimit);
    passColumns(size.x / 2 + 1, [&](long x, long count) {
        path.complexColumns(data, size.x, size.y, x, count, false, scratch.get());
    });
    pollTransposition(size, transpositionLimit);
    fillHermitian(data, size);
}
