// The kernel: complex planes both ways with and without bands, and real planes, on every path.
#include <filt/fft/internal/kernel.h>

#include <cstddef>
#include <span>

#include "campaigns/digests/digest.h"
#include "campaigns/digests/sections.h"

namespace digest {

namespace {

// What a path is run on: four cases for each plane.
struct Planes {
    mvPair<long> size;
    std::vector<float> floats;
    int low, high;
};

Planes makePlanes(Numbers& numbers, mvPair<long> size, bool special) {
    Planes planes{size, std::vector<float>(static_cast<std::size_t>(2 * size.x * size.y)), 0, 0};
    for (float& value : planes.floats) {
        value = special ? numbers.special() : static_cast<float>(numbers.symmetric());
    }
    // The real kernel takes the second float of a single column for a zero that is there.
    for (std::size_t i = 1; size.x == 1 && i < planes.floats.size(); i += 2) {
        planes.floats[i] = 0.0F;
    }
    planes.low = static_cast<int>(numbers.between(-2, size.y));
    planes.high = static_cast<int>(numbers.between(planes.low, size.y + 2));
    return planes;
}

template <class Transform>
void addCase(Digest& digest, const Planes& planes, Transform transform) {
    std::vector<float> plane = planes.floats;
    transform(plane.data());
    for (const float value : plane) digest.add(value);
}

void addPlanes(Digest& digest, const Planes& planes, const mvi::KernelPath& path) {
    const mvPair<long> size = planes.size;
    const int rows = static_cast<int>(size.y);
    addCase(digest, planes, [&](float* p) { mf_FFT2D(p, size, +1, 0, rows, path); });
    addCase(digest, planes, [&](float* p) { mf_FFT2D(p, size, -1, 0, rows, path); });
    addCase(digest, planes,
            [&](float* p) { mf_FFT2D(p, size, -1, planes.low, planes.high, path); });
    // The floats behind the packed samples are not read; those of the result are all written.
    addCase(digest, planes, [&](float* p) { mf_RealFFT2D(p, size, +1, 0, rows, path); });
}

Section sectionOf(const mvi::KernelPath& path) {
    constexpr long kLargestArea = 1L << 15;
    constexpr int kRepeats = 4;
    Section section{std::string("kernel ") + path.name, 0, 0};
    Digest digest;
    Numbers numbers(1);
    for (long width = 1; width <= 2048; width *= 2) {
        for (long height = 1; height <= 2048 && width * height <= kLargestArea; height *= 2) {
            for (int repeat = 0; repeat < kRepeats; ++repeat) {
                addPlanes(digest, makePlanes(numbers, {width, height}, repeat % 2 != 0), path);
                section.cases += 4;
            }
        }
    }
    section.digest = digest.value();
    return section;
}

}  // namespace

std::vector<Section> kernelSections() {
    std::vector<Section> sections;
    for (const mvi::KernelPath* path : mvi::KernelPathList()) {
        if (path->isSupported()) sections.push_back(sectionOf(*path));
    }
    return sections;
}

}  // namespace digest
