// The picture call as it is defined: axes, margins and positions.
#include "reference/freqfilt/picture.h"

#include <algorithm>

namespace reference {

namespace {

// The pel of n that a position stands for under reflection with the period 2 n.
long reflected(long position, long n) {
    while (position < 0) position += 2 * n;
    while (position >= 2 * n) position -= 2 * n;
    return position < n ? position : 2 * n - 1 - position;
}

}  // namespace

PictureAxis::PictureAxis(long image, long plane, long margin, bool mirrored)
    : n(image), N(plane), mirror(mirrored) {
    const bool fits = mirror ? n + 2 * margin <= N : n <= N;
    if (fits) return;
    m = margin;
    c = N - 2 * m;
}

long pictureMargin(long given, long reach, long plane) {
    return given != -1 ? given : std::min(reach, plane / 4);
}

long planeWithoutFilter(long image, bool mirror) {
    long room = 0;
    while (mirror && 8 * room < image) ++room;
    long plane = 1;
    while (plane < image + 2 * room) plane *= 2;
    return plane;
}

PicturePosition positionOf(const PictureAxis& axis, long tile, long i) {
    const long n = axis.n, N = axis.N;
    const long at = tile * axis.c - axis.m + i;
    if (at >= 0 && at < n) return {.a = at};
    if (!axis.mirror) return {.isZero = true};
    if (axis.c != 0) return {.a = reflected(at, n)};
    const double t = (static_cast<double>(i - n) + 0.5) / static_cast<double>(N - n);
    return {.a = reflected(2 * n - 1 - i, n), .b = reflected(N - 1 - i, n), .t = t};
}

}  // namespace reference
