// The one-dimensional split-radix transform, decimation in frequency, with L-shaped butterflies.
#include "reference/fft/transform_1d.h"

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <utility>

namespace reference {
namespace {

static_assert(FLT_EVAL_METHOD == 0, "float arithmetic must round to float after each operation");

int log2Of(int n) {
    int m = 0;
    for (int power = 1; power < n; power *= 2) ++m;
    return m;
}

// The algorithm counts its positions from 1.
struct Positions {
    Complex* first;
    Complex& operator[](int i) const { return first[i - 1]; }
};

void conjugate(Complex* z, int n) {
    for (int i = 0; i < n; ++i) z[i].im = -z[i].im;
}

// The L-shaped butterfly on the j-th elements of the quarters of a block x of S elements, Q = S /
// 4:
//
//     z0, z1 = x(j) + x(j + 2Q), x(j + Q) + x(j + 3Q): go on to the even frequencies X(2k)
//     z2 = ((x(j) - x(j + 2Q)) - i (x(j + Q) - x(j + 3Q))) conj w1: to X(4k + 1)
//     z3 = ((x(j) - x(j + 2Q)) + i (x(j + Q) - x(j + 3Q))) conj w3: to X(4k + 3)
//
// with w1 = e^(2 pi i j / S) and w3 = w1^3: 16 additions and 8 products. The order of the
// operations is part of the result's bits.
void butterfly(Complex& z0, Complex& z1, Complex& z2, Complex& z3, Complex w1, Complex w3) {
    float r1 = z0.re - z2.re;
    z0.re = z0.re + z2.re;
    float r2 = z1.re - z3.re;
    z1.re = z1.re + z3.re;
    const float s1 = z0.im - z2.im;
    z0.im = z0.im + z2.im;
    float s2 = z1.im - z3.im;
    z1.im = z1.im + z3.im;
    const float s3 = r1 - s2;
    r1 = r1 + s2;
    s2 = r2 - s1;
    r2 = r2 + s1;
    z2.re = r1 * w1.re - s2 * w1.im;
    z2.im = -s2 * w1.re - r1 * w1.im;
    z3.re = s3 * w3.re + r2 * w3.im;
    z3.im = r2 * w3.re - s3 * w3.im;
}

Complex rotate(Complex w, float c, float s) {
    return {c * w.re - s * w.im, s * w.re + c * w.im};
}

// One stage of butterflies that span S elements each.
void splitRadixStage(Positions z, int n, int S, const Twiddle& e) {
    const int Q = S / 4;
    Complex w1{1, 0};
    Complex w3{1, 0};
    for (int j = 1; j <= Q; ++j) {
        int is = j;
        int id = 2 * S;
        do {
            for (int i0 = is; i0 < n; i0 += id) {
                butterfly(z[i0], z[i0 + Q], z[i0 + 2 * Q], z[i0 + 3 * Q], w1, w3);
            }
            is = 2 * id - S + j;
            id = 4 * id;
        } while (is < n);
        w1 = rotate(w1, e.ce, e.se);
        w3 = rotate(w3, e.c3e, e.s3e);
    }
}

void radix2Stage(Positions z, int n) {
    int is = 1;
    int id = 4;
    do {
        for (int i0 = is; i0 < n; i0 += id) {
            const Complex a = z[i0];
            const Complex b = z[i0 + 1];
            z[i0] = {a.re + b.re, a.im + b.im};
            z[i0 + 1] = {a.re - b.re, a.im - b.im};
        }
        is = 2 * id - 1;
        id = 4 * id;
    } while (is < n);
}

void swapBitReversed(Positions z, int n, const std::vector<int>& bitReversal) {
    for (int i = n - 1; i >= 1; --i) {
        const int entry = bitReversal[static_cast<std::size_t>(i)];
        if (entry >= 0) std::swap(z[i], z[entry / 2]);
    }
}

}  // namespace

TwiddleTable makeTwiddles() {
    TwiddleTable table;
    double power = 1;
    for (Twiddle& entry : table) {
        const double e = 6.283185307179586 / power;
        entry = {static_cast<float>(std::cos(e)), static_cast<float>(std::sin(e)),
                 static_cast<float>(std::cos(3.0 * e)), static_cast<float>(std::sin(3.0 * e))};
        power *= 2;
    }
    return table;
}

std::vector<int> makeBitReversal(int n) {
    std::vector<int> table(static_cast<std::size_t>(2 * n), 0);
    int j = 1;
    for (int i = 1; i <= n - 1; ++i) {
        if (i < j) {
            table[static_cast<std::size_t>(i)] = 2 * j;
            table[static_cast<std::size_t>(j)] = -1;
        }
        if (i == j) table[static_cast<std::size_t>(i)] = -1;
        int k = n / 2;
        while (k < j) {
            j = j - k;
            k = k / 2;
        }
        j = j + k;
    }
    return table;
}

void transform1D(Complex* z, int n, int direction, const TwiddleTable& twiddles,
                 const std::vector<int>& bitReversal) {
    if (direction < 0) conjugate(z, n);
    const int m = log2Of(n);
    int S = 2 * n;
    for (int stage = 0; stage < m - 1; ++stage) {
        S = S / 2;
        splitRadixStage({z}, n, S, twiddles[static_cast<std::size_t>(m - stage)]);
    }
    radix2Stage({z}, n);
    swapBitReversed({z}, n, bitReversal);
    if (direction < 0) conjugate(z, n);
}

}  // namespace reference
