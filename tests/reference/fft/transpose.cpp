// The transposes between the two passes of the kernel, and the Hermitian fill after them.
#include "reference/fft/transpose.h"

#include <cstdint>
#include <utility>

namespace reference {
namespace {

constexpr int kTile = 4;

void swapLowerTriangle(Complex* z, int n) {
    for (int y = 0; y < n; ++y) {
        for (int x = 0; x < y; ++x) std::swap(z[y * n + x], z[x * n + y]);
    }
}

// Exchanges the tile of rows t.. and columns u.. with its mirror image; t == u is a diagonal tile.
void exchangeTiles(Complex* z, int n, int t, int u) {
    for (int y = t; y < t + kTile; ++y) {
        for (int x = u; x < u + kTile; ++x) {
            if (t != u || x < y) std::swap(z[y * n + x], z[x * n + y]);
        }
    }
}

// Writes the transposed tile of rows u.. and columns t.. to rows t.. and columns u...
void copyTile(Complex* z, int n, int t, int u) {
    for (int y = t; y < t + kTile; ++y) {
        for (int x = u; x < u + kTile; ++x) z[y * n + x] = z[x * n + y];
    }
}

// Coarse on purpose: a range that only touches the band from outside counts as inside.
bool isOutside(int base, int n, long rowLow, long rowHigh) {
    const std::int64_t shift = base < n / 2 ? -(n / 2) : n / 2;
    return base + kTile < rowLow + shift || base > rowHigh + shift;
}

}  // namespace

long shiftedRow(long row, long height) {
    return row < height / 2 ? row + height / 2 : row - height / 2;
}

void transpose(const Complex* src, Complex* dst, int w, int h, const Poll& poll) {
    if (w >= kTile && h >= kTile) poll();
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) dst[x * h + y] = src[y * w + x];
    }
}

void transposeSquare(Complex* z, int n, long rowLow, long rowHigh, const Poll& poll) {
    if (n < kTile) return swapLowerTriangle(z, n);
    poll();
    const bool banded = rowLow > 0 || rowHigh < n;
    for (int t = 0; t < n; t += kTile) {
        for (int u = 0; u <= t; u += kTile) {
            const bool outside =
                isOutside(t, n, rowLow, rowHigh) && isOutside(u, n, rowLow, rowHigh);
            if (!banded || !outside) exchangeTiles(z, n, t, u);
        }
    }
}

void transposeSquareHalf(Complex* z, int n, bool afterRows, const Poll& poll) {
    if (n < 2 * kTile) return swapLowerTriangle(z, n);
    poll();
    const int limit = n / 2 + kTile;
    for (int t = 0; t < n; t += kTile) {
        for (int u = 0; u <= t; u += kTile) {
            if (t < limit) {
                exchangeTiles(z, n, t, u);
            } else if (u < limit && afterRows) {
                copyTile(z, n, u, t);
            } else if (u < limit) {
                copyTile(z, n, t, u);
            }
        }
    }
}

void hermitianFill(Plane& plane, const Poll& poll) {
    poll();
    const int W = plane.width;
    const int H = plane.height;
    for (int y = 0; y < H; ++y) {
        for (int j = 1; j < W / 2; ++j) {
            const Complex z = plane.at(j, y == 0 ? 0 : H - y);
            plane.at(W - j, y) = {z.re, -z.im};
        }
    }
}

}  // namespace reference
