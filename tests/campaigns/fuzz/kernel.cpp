// The kernel against the reference, bit by bit, on every path that this processor has.
//
// An input is six bytes that say size, direction, kernel and kind of band, eight bytes for the two
// limits of the band, and floats. A plane larger than the floats continues with random values.
#include "reference/fft/kernel.h"

#include <filt/fft/internal/kernel.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "bytes.h"
#include "input.h"

namespace {

using fuzz::Bytes;
using reference::Plane;

struct Call {
    int direction = 1;
    bool isReal = false;
    int low = 0;
    int high = 0;
};

int someLimit(unsigned char kind, int value, int height) {
    switch (kind % 4) {
        case 0:
            return value;
        case 1:
            return static_cast<int>(static_cast<unsigned>(value) % static_cast<unsigned>(height));
        case 2:
            return 0;
        default:
            return height;
    }
}

// The logarithm of the number of elements. Most planes are small, and still as wide or as high as a
// path has lanes; some hold whole tiles in both directions.
int mostBinaryDigits(std::string_view all) {
    if (fuzz::isOneIn(16384, all)) return 14;
    return fuzz::isOneIn(16, all) ? 8 : 6;
}

Plane readPlane(Bytes& bytes, int most) {
    int columns = bytes.next<unsigned char>() % 12;
    int rows = bytes.next<unsigned char>() % 12;
    while (columns + rows > most) --(columns > rows ? columns : rows);
    return {1 << columns, 1 << rows};
}

Call readCall(Bytes& bytes, int height) {
    Call call;
    call.direction = bytes.next<unsigned char>() % 2 == 0 ? 1 : -1;
    call.isReal = bytes.next<unsigned char>() % 4 == 0;
    const auto lowKind = bytes.next<unsigned char>();
    const auto highKind = bytes.next<unsigned char>();
    call.low = someLimit(lowKind, bytes.next<int>(), height);
    call.high = someLimit(highKind, bytes.next<int>(), height);
    return call;
}

void fill(Plane& plane, Bytes& bytes, std::uint32_t seed) {
    fuzz::Noise noise(seed);
    float* const floats = plane.floats();
    for (std::size_t i = 0; i < plane.floatCount(); ++i) {
        floats[i] = bytes.holds(sizeof(float)) ? bytes.next<float>() : noise.symmetric();
    }
}

void transform(float* data, mvPair<long> size, const Call& call, const mvi::KernelPath& path) {
    if (call.isReal) return mf_RealFFT2D(data, size, call.direction, call.low, call.high, path);
    mf_FFT2D(data, size, call.direction, call.low, call.high, path);
}

void transform(Plane& plane, const Call& call) {
    if (call.isReal) return reference::realFFT2D(plane);
    reference::fft2D(plane, call.direction, call.low, call.high);
}

// A block of just as many floats at a 16-byte boundary, so that AddressSanitizer sees its ends.
// Each size has one, which stays.
float* blockOf(std::size_t floats) {
    constexpr std::align_val_t kAlignment{16};
    static std::array<float*, 16> blocks{};
    float*& block = blocks[static_cast<std::size_t>(std::countr_zero(floats)) % blocks.size()];
    if (!block) block = static_cast<float*>(::operator new(floats * sizeof(float), kAlignment));
    return block;
}

// Where a NaN is expected any NaN will do.
bool isSame(float expected, float actual) {
    if (expected != expected) return actual != actual;
    return std::memcmp(&expected, &actual, sizeof(float)) == 0;
}

bool areSame(const float* expected, const float* actual, std::size_t count) {
    return std::memcmp(expected, actual, count * sizeof(float)) == 0 ||
           std::equal(expected, expected + count, actual, isSame);
}

void tryPath(const Plane& plane, const Plane& expected, const Call& call,
             const mvi::KernelPath& path) {
    float* const block = blockOf(plane.floatCount());
    std::copy_n(plane.floats(), plane.floatCount(), block);
    transform(block, {plane.width, plane.height}, call, path);
    if (areSame(expected.floats(), block, plane.floatCount())) return;
    std::fprintf(stderr, "path %s, %d x %d, direction %d, real %d, band %d .. %d differs\n",
                 path.name, plane.width, plane.height, call.direction, call.isReal, call.low,
                 call.high);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all = fuzz::asText(data, size);
    Bytes bytes(all);
    Plane plane = readPlane(bytes, mostBinaryDigits(all));
    const Call call = readCall(bytes, plane.height);
    fill(plane, bytes, static_cast<std::uint32_t>(size));
    // The real kernel's plane of width 1 holds samples and zeros.
    if (call.isReal && plane.width == 1) {
        for (auto& z : plane.elements) z.im = 0;
    }

    Plane expected = plane;
    transform(expected, call);
    for (const mvi::KernelPath* path : mvi::KernelPathList()) {
        if (path->isSupported()) tryPath(plane, expected, call, *path);
    }
    return 0;
}
