// Pel buffers from plain images and back, with guard pels around every row.
#pragma once

#include <filt/platform.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "reference/fft/image.h"
#include "reference/fft/transforms.h"

namespace support {

/// A pel buffer over memory of its own, with guard pels before, between and behind its rows.
template <class T>
class GuardedPels {
  public:
    static constexpr T kGuard = 113;

    explicit GuardedPels(const reference::Image<T>& image) : image_(image) {
        const long step = image.width + 2 * kMargin;
        pels_ = std::make_shared<std::vector<T>>(index(0, image.height + 1), kGuard);
        buffer_ =
            mvPelBuffer<T>(pels_->data() + index(0, 0), image.width, image.height, step, pels_);
        buffer_.offset(image.x, image.y);
        for (long y = 0; y < image.height; ++y) {
            for (long x = 0; x < image.width; ++x) (*pels_)[index(x, y)] = image.at(x, y);
        }
    }

    mvPelBuffer<T>& buffer() { return buffer_; }

    /// True while nothing was written outside the window.
    bool guardsAreIntact() const {
        std::vector<T> rest = *pels_;
        for (long y = 0; y < image_.height; ++y) {
            for (long x = 0; x < image_.width; ++x) rest[index(x, y)] = kGuard;
        }
        return std::all_of(rest.begin(), rest.end(), [](T pel) { return pel == kGuard; });
    }

  private:
    static constexpr long kMargin = 3;

    std::size_t index(long x, long y) const {
        return static_cast<std::size_t>((y + 1) * (image_.width + 2 * kMargin) + kMargin + x);
    }

    reference::Image<T> image_;
    std::shared_ptr<std::vector<T>> pels_;
    mvPelBuffer<T> buffer_;
};

/// A pel buffer with the image's size, offset and pels; its rows do not touch.
template <class T>
mvPelBuffer<T> pelBufferOf(const reference::Image<T>& image) {
    return GuardedPels<T>(image).buffer();
}

/// An unbound pel buffer for an empty output.
template <class T>
mvPelBuffer<T> pelBufferOf(const reference::Output<T>& output) {
    return output ? pelBufferOf(*output) : mvPelBuffer<T>();
}

template <class T>
reference::Image<T> imageOf(const mvPelBuffer_const<T>& buffer) {
    reference::Image<T> image(buffer.width(), buffer.height());
    image.x = buffer.offset().x;
    image.y = buffer.offset().y;
    for (long y = 0; y < image.height; ++y) {
        const T* row = buffer.pointToOffset() + y * buffer.rowUpdate();
        for (long x = 0; x < image.width; ++x) image.at(x, y) = row[x];
    }
    return image;
}

template <class T>
reference::Image<T> imageOf(const mvPelBuffer<T>& buffer) {
    return imageOf(static_cast<const mvPelBuffer_const<T>&>(buffer));
}

/// Cannot be mistaken for the identity, nor for its own inverse or mirror image.
inline mv2XformLinear someXform() {
    return mv2XformLinear(mvMatrix<2>(2, 0.5, -0.25, 3), mvVector<2>(7, -9));
}

inline mv2XformCache someXformCache() {
    mv2XformCache cache;
    cache.xform(someXform());
    return cache;
}

}  // namespace support
