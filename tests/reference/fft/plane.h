// A complex single-precision plane, row by row, and the poll that the reference code makes.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace reference {

/// Called where an attention poll belongs; it may throw.
using Poll = std::function<void()>;

inline void noPoll() {}

struct Complex {
    float re = 0;
    float im = 0;
};

/// `width` columns by `height` rows; element (x, y) stands at y * width + x, DC is (0, 0).
struct Plane {
    int width = 0;
    int height = 0;
    std::vector<Complex> elements;

    Plane() = default;
    Plane(int w, int h)
        : width(w),
          height(h),
          elements(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

    std::size_t index(long x, long y) const { return static_cast<std::size_t>(y * width + x); }
    Complex& at(long x, long y) { return elements[index(x, y)]; }
    const Complex& at(long x, long y) const { return elements[index(x, y)]; }
    Complex* row(long y) { return elements.data() + index(0, y); }

    /// The plane as interleaved floats: 2 * width * height of them.
    float* floats() { return &elements.data()->re; }
    const float* floats() const { return &elements.data()->re; }
    std::size_t floatCount() const { return 2 * elements.size(); }
};

}  // namespace reference
