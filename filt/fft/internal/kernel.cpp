// The plain two-dimensional transforms: rows, then columns, one at a time.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/kernel.h>
#include <filt/fft/internal/twiddles.h>

#include <algorithm>
#include <bit>
#include <vector>

namespace {

struct Complex {
    float re, im;
};

// Forward split-radix transform, decimation in frequency, of `n` elements: one L-shaped butterfly
// per four elements makes a half that is transformed at length n/2 and two quarters of length n/4.
// The result stands in bit-reversed order.
void transformToBitReversed(Complex* z, long n) {
    if (n == 2) {
        const Complex a = z[0], b = z[1];
        z[0] = {a.re + b.re, a.im + b.im};
        z[1] = {a.re - b.re, a.im - b.im};
    }
    if (n <= 2) return;
    const mf_StageSeed turn = mf_kStageSeeds[std::countr_zero(static_cast<unsigned long>(n))];
    const long q = n / 4;
    Complex w1{1.0f, 0.0f}, w3{1.0f, 0.0f};
    for (Complex* p = z; p < z + q; ++p) {
        Complex &z0 = p[0], &z1 = p[q], &z2 = p[2 * q], &z3 = p[3 * q];
        const float r1 = z0.re - z2.re, r2 = z1.re - z3.re;
        const float s1 = z0.im - z2.im, s2 = z1.im - z3.im;
        z0 = {z0.re + z2.re, z0.im + z2.im};
        z1 = {z1.re + z3.re, z1.im + z3.im};
        const float r3 = r1 - s2, r4 = r1 + s2;
        const float s3 = r2 - s1, s4 = r2 + s1;
        z2 = {r4 * w1.re - s3 * w1.im, -s3 * w1.re - r4 * w1.im};
        z3 = {r3 * w3.re + s4 * w3.im, s4 * w3.re - r3 * w3.im};
        w1 = {turn.c1 * w1.re - turn.s1 * w1.im, turn.s1 * w1.re + turn.c1 * w1.im};
        w3 = {turn.c3 * w3.re - turn.s3 * w3.im, turn.s3 * w3.re + turn.c3 * w3.im};
    }
    transformToBitReversed(z, n / 2);
    transformToBitReversed(z + n / 2, n / 4);
    transformToBitReversed(z + n / 2 + n / 4, n / 4);
}

void reverseBits(Complex* z, long n) {
    for (long i = 0, j = 0; i < n; ++i) {
        if (i < j) std::swap(z[i], z[j]);
        long bit = n / 2;
        for (; bit > 0 && (j & bit) != 0; bit /= 2) j -= bit;
        j += bit;
    }
}

void transform(Complex* z, long n) {
    transformToBitReversed(z, n);
    reverseBits(z, n);
}

void conjugate(Complex* z, long n) {
    for (long i = 0; i < n; ++i) z[i].im = -z[i].im;
}

// Splits the spectrum of n packed pairs of reals into the n + 1 lowest frequencies of the 2 n
// reals. Elements i and n - i need each other alone.
void separateReal(Complex* z, long n) {
    const mf_SeparationSeed seed =
        mf_kSeparationSeeds[std::countr_zero(static_cast<unsigned long>(n))];
    const float turnRe = -2.0f * seed.halfSine * seed.halfSine, turnIm = -seed.sine;
    Complex w{1.0f + turnRe, turnIm};
    for (long i = 1; i < n / 2; ++i) {
        Complex &a = z[i], &b = z[n - i];
        const float h1r = 0.5f * (a.re + b.re), h1i = 0.5f * (a.im - b.im);
        const float h2r = 0.5f * (a.im + b.im), h2i = -0.5f * (a.re - b.re);
        a = {h1r + w.re * h2r - w.im * h2i, h1i + w.re * h2i + w.im * h2r};
        b = {h1r - w.re * h2r + w.im * h2i, -h1i + w.re * h2i + w.im * h2r};
        w = {w.re + (w.re * turnRe - w.im * turnIm), w.im + (w.im * turnRe + w.re * turnIm)};
    }
    if (n >= 2) z[n / 2].im = -z[n / 2].im;
    const Complex dc = z[0];
    z[0] = {dc.re + dc.im, 0.0f};
    z[n] = {dc.re - dc.im, 0.0f};
}

void pollEvery16th(long index) {
    if (index % 16 == 0) mf_PollAttention();
}

// The poll that a blocked transposition makes: planes below `smallest` go without.
void pollTransposition(mvPair<long> size, long smallest) {
    if (size.x >= smallest && size.y >= smallest) mf_PollAttention();
}

// Columns 0 to count - 1, gathered, transformed and scattered.
template <class Transform>
void transformColumns(Complex* plane, mvPair<long> size, long count, Transform transformColumn) {
    std::vector<Complex> column(static_cast<std::size_t>(size.y));
    for (long x = 0; x < count; ++x) {
        pollEvery16th(x);
        for (long y = 0; y < size.y; ++y)
            column[static_cast<std::size_t>(y)] = plane[y * size.x + x];
        transformColumn(column.data());
        for (long y = 0; y < size.y; ++y)
            plane[y * size.x + x] = column[static_cast<std::size_t>(y)];
    }
}

long shifted(long row, long height) {
    return row < height / 2 ? row + height / 2 : row - height / 2;
}

// A square plane is transposed between the passes by tiles of 4 x 4, and pairs of tiles whose rows
// and columns both lie outside the band are left where they are. What such tiles hold then enters
// the second pass with rows and columns exchanged.
void exchangeUnmovedTiles(Complex* plane, long n, int rowLow, int rowHigh) {
    if (n < 4 || (rowLow <= 0 && rowHigh >= n)) return;
    const auto isOutside = [&](long base) {
        const long toShifted = base < n / 2 ? -n / 2 : n / 2;
        return base + 4 < rowLow + toShifted || base > rowHigh + toShifted;
    };
    for (long y = 0; y < n; ++y) {
        if (!isOutside(y / 4 * 4)) continue;
        for (long x = 0; x < y; ++x) {
            if (isOutside(x / 4 * 4)) std::swap(plane[y * n + x], plane[x * n + y]);
        }
    }
}

// F(-u, -v) = conj F(u, v) gives the columns beyond W/2.
void fillHermitian(Complex* plane, mvPair<long> size) {
    mf_PollAttention();
    for (long y = 0; y < size.y; ++y) {
        const Complex* const mirror = plane + (y == 0 ? 0 : size.y - y) * size.x;
        Complex* const row = plane + y * size.x;
        for (long x = 1; x < size.x / 2; ++x) row[size.x - x] = {mirror[x].re, -mirror[x].im};
    }
}

}  // namespace

void mf_FFT2D(float* data, mvPair<long> size, int direction, int rowLow, int rowHigh) {
    Complex* const plane = reinterpret_cast<Complex*>(data);
    const bool inverse = direction < 0;
    const auto transformLine = [inverse](long n) {
        return [inverse, n](Complex* line) {
            if (inverse) conjugate(line, n);
            transform(line, n);
            if (inverse) conjugate(line, n);
        };
    };
    const auto transformRow = transformLine(size.x);
    for (long y = 0; y < size.y; ++y) {
        const long s = shifted(y, size.y);
        if (s < rowLow || s > rowHigh) continue;
        pollEvery16th(y);
        transformRow(plane + y * size.x);
    }
    pollTransposition(size, 4);
    if (size.x == size.y) exchangeUnmovedTiles(plane, size.x, rowLow, rowHigh);
    transformColumns(plane, size, size.x, transformLine(size.y));
    pollTransposition(size, 4);
}

void mf_RealFFT2D(float* data, mvPair<long> size, int, int, int) {
    Complex* const plane = reinterpret_cast<Complex*>(data);
    const long half = size.x / 2;
    for (long y = 0; half > 0 && y < size.y; ++y) {
        pollEvery16th(y);
        Complex* const row = plane + y * size.x;
        transform(row, half);
        separateReal(row, half);
    }
    pollTransposition(size, size.x == size.y ? 8 : 4);
    transformColumns(plane, size, half + 1, [&](Complex* column) { transform(column, size.y); });
    pollTransposition(size, size.x == size.y ? 8 : 4);
    fillHermitian(plane, size);
}
