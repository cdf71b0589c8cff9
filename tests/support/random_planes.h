// Planes and images of random and of special values.
#pragma once

#include <cstddef>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "reference/fft/image.h"
#include "reference/fft/plane.h"

namespace support {

/// The same values in every run and on every machine: distributions of the standard library differ
/// between implementations, the generator does not.
class Random {
  public:
    explicit Random(unsigned seed) : generator_(seed) {}

    /// 0 .. count - 1.
    unsigned below(unsigned count) { return static_cast<unsigned>(generator_() % count); }

    /// -1 .. 1, of 2^24 + 1 equally spaced values.
    float symmetric() { return static_cast<float>(below((1U << 24) + 1)) / 8388608.0F - 1.0F; }

  private:
    std::mt19937 generator_;
};

inline reference::Plane randomPlane(int width, int height, unsigned seed) {
    Random random(seed);
    reference::Plane plane(width, height);
    for (auto& z : plane.elements) {
        z.re = random.symmetric();
        z.im = random.symmetric();
    }
    return plane;
}

/// Random values, among them zeros of both signs, denormals, tiny and large ones; with `infinite`
/// also infinities and NaNs.
inline reference::Plane specialPlane(int width, int height, unsigned seed, bool infinite) {
    using Limits = std::numeric_limits<float>;
    const std::vector<float> values = {0.0F,
                                       -0.0F,
                                       Limits::denorm_min(),
                                       -Limits::denorm_min(),
                                       Limits::min() / 3,
                                       -Limits::min(),
                                       1e30F,
                                       -1e30F,
                                       Limits::infinity(),
                                       -Limits::infinity(),
                                       Limits::quiet_NaN()};
    const auto finiteCount = static_cast<unsigned>(values.size()) - 3;
    const auto count = infinite ? static_cast<unsigned>(values.size()) : finiteCount;
    Random random(seed);
    const auto next = [&] {
        // Infinities spread over whole rows and columns: a few of them are enough.
        const unsigned k = random.below(infinite ? 40 * count : 2 * count);
        return k < count ? values[k] : random.symmetric();
    };
    reference::Plane plane(width, height);
    for (auto& z : plane.elements) {
        z.re = next();
        z.im = next();
    }
    return plane;
}

inline reference::Plane constantPlane(int width, int height, reference::Complex value) {
    reference::Plane plane(width, height);
    for (auto& z : plane.elements) z = value;
    return plane;
}

inline reference::Plane impulsePlane(int width, int height, long x, long y,
                                     reference::Complex value) {
    reference::Plane plane(width, height);
    plane.at(x, y) = value;
    return plane;
}

/// Random pels over the whole range of integer pels; -1 .. 1 for doubles.
template <class T>
reference::Image<T> randomImage(long width, long height, unsigned seed) {
    Random random(seed);
    reference::Image<T> image(width, height);
    for (T& pel : image.pels) {
        if constexpr (std::numeric_limits<T>::is_integer) {
            pel = static_cast<T>(random.below(std::numeric_limits<T>::max() + 1U));
        } else {
            pel = random.symmetric() + 1e-9 * random.symmetric();
        }
    }
    return image;
}

/// The same image with its first pel at (x, y).
template <class T>
reference::Image<T> at(reference::Image<T> image, long x, long y) {
    image.x = x;
    image.y = y;
    return image;
}

/// All padded sides: 1, 2, 4 .. 2048.
inline std::vector<int> paddedSides() {
    std::vector<int> sides;
    for (int side = 1; side <= 2048; side *= 2) sides.push_back(side);
    return sides;
}

/// All 144 pairs of padded sides with at most `area` elements.
inline std::vector<std::pair<int, int>> paddedSizes(long area) {
    std::vector<std::pair<int, int>> sizes;
    for (const int w : paddedSides()) {
        for (const int h : paddedSides()) {
            if (static_cast<long>(w) * h <= area) sizes.emplace_back(w, h);
        }
    }
    return sizes;
}

}  // namespace support
