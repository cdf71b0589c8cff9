// The two-dimensional kernel as plain scalar code.
#include "reference/fft/kernel.h"

#include <cmath>
#include <vector>

#include "reference/fft/transform_1d.h"
#include "reference/fft/transpose.h"

namespace reference {
namespace {

// What both passes of one call share.
struct Call {
    TwiddleTable twiddles = makeTwiddles();
    const Poll& poll;

    void pollEvery16th(int index) const {
        if (index % 16 == 0) poll();
    }
};

// The second pass: `count` transforms of `length` consecutive elements each.
void transformAll(const Call& call, Complex* z, int count, int length, int direction) {
    const auto bitReversal = makeBitReversal(length);
    for (int r = 0; r < count; ++r) {
        call.pollEvery16th(r);
        transform1D(z + r * length, length, direction, call.twiddles, bitReversal);
    }
}

// The first pass of the complex transform.
void transformRowsInBand(const Call& call, Plane& plane, int direction, long rowLow, long rowHigh) {
    const auto bitReversal = makeBitReversal(plane.width);
    for (int r = 0; r < plane.height; ++r) {
        const long c = shiftedRow(r, plane.height);
        if (c < rowLow || c > rowHigh) continue;
        call.pollEvery16th(r);
        transform1D(plane.row(r), plane.width, direction, call.twiddles, bitReversal);
    }
}

// Turns the transform of n packed complex points into the first n + 1 frequencies of 2 n reals.
void separateReals(Complex* z, int n) {
    const float c1 = 0.5F;
    const float c2 = -0.5F;
    const float theta = static_cast<float>(3.141592653589793 / n);
    const float t = std::sin(0.5F * theta);
    const float wpr = -2 * t * t;
    const float wpi = -std::sin(theta);
    float wr = 1 + wpr;
    float wi = wpi;
    for (int i = 1; i <= n / 2 - 1; ++i) {
        Complex& a = z[i];
        Complex& b = z[n - i];
        const float h1r = c1 * (a.re + b.re);
        const float h1i = c1 * (a.im - b.im);
        const float h2r = -c2 * (a.im + b.im);
        const float h2i = c2 * (a.re - b.re);
        a.re = h1r + wr * h2r - wi * h2i;
        a.im = h1i + wr * h2i + wi * h2r;
        b.re = h1r - wr * h2r + wi * h2i;
        b.im = -h1i + wr * h2i + wi * h2r;
        const float former = wr;
        wr = wr + (wr * wpr - wi * wpi);
        wi = wi + (wi * wpr + former * wpi);
    }
    // A single point has no middle element: its place is that of DC.
    if (n > 1) z[n / 2].im = -z[n / 2].im;
    const float p = z[0].re + z[0].im;
    const float q = z[0].re - z[0].im;
    z[0] = {p, 0};
    z[n] = {q, 0};
}

// The first pass of the real transform.
void transformRealRows(const Call& call, Plane& plane) {
    const int n = plane.width / 2;
    if (n == 0) return;
    const auto bitReversal = makeBitReversal(n);
    for (int r = 0; r < plane.height; ++r) {
        call.pollEvery16th(r);
        transform1D(plane.row(r), n, 1, call.twiddles, bitReversal);
        separateReals(plane.row(r), n);
    }
}

bool isOblong(const Plane& plane) {
    return plane.width != plane.height && plane.width > 1 && plane.height > 1;
}

bool isSquare(const Plane& plane) {
    return plane.width == plane.height && plane.width >= 2;
}

}  // namespace

void fft2D(Plane& plane, int direction, long rowLow, long rowHigh, const Poll& poll) {
    const Call call{.poll = poll};
    const int width = plane.width;
    const int height = plane.height;
    Complex* const z = plane.elements.data();

    transformRowsInBand(call, plane, direction, rowLow, rowHigh);
    if (isOblong(plane)) {
        std::vector<Complex> scratch(plane.elements.size());
        transpose(z, scratch.data(), width, height, poll);
        transformAll(call, scratch.data(), width, height, direction);
        transpose(scratch.data(), z, height, width, poll);
    } else if (isSquare(plane)) {
        transposeSquare(z, width, rowLow, rowHigh, poll);
        transformAll(call, z, width, height, direction);
        transposeSquare(z, width, 0, height, poll);
    } else {
        transformAll(call, z, width, height, direction);
    }
}

void realFFT2D(Plane& plane, const Poll& poll) {
    const Call call{.poll = poll};
    const int width = plane.width;
    const int height = plane.height;
    const int columns = width / 2 + 1;
    Complex* const z = plane.elements.data();

    transformRealRows(call, plane);
    if (isOblong(plane)) {
        std::vector<Complex> scratch(plane.elements.size());
        transpose(z, scratch.data(), width, height, poll);
        transformAll(call, scratch.data(), columns, height, 1);
        transpose(scratch.data(), z, height, width, poll);
    } else if (isSquare(plane)) {
        transposeSquareHalf(z, width, true, poll);
        transformAll(call, z, columns, height, 1);
        transposeSquareHalf(z, width, false, poll);
    } else {
        transformAll(call, z, columns, height, 1);
    }
    hermitianFill(plane, poll);
}

}  // namespace reference
