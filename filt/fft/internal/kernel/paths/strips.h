// The results of columns, as many columns at a time as there are lanes.
#pragma once

#include <filt/fft/internal/kernel/paths/line_transform.h>

#include <cstddef>

namespace mvi {

/// Turns finished elements into results of a strip. One class for all types of results: they share
/// the program that makes the elements.
template <class V>
class StripResults {
  public:
    StripResults(unsigned char* strip, float scale)
        : type_(Type::byte), strip_(strip), scale_(scale) {}
    StripResults(unsigned short* strip, float scale)
        : type_(Type::word), strip_(strip), scale_(scale) {}
    StripResults(double* strip, float scale) : type_(Type::real), strip_(strip), scale_(scale) {}
    StripResults(float* strip, float) : type_(Type::square), strip_(strip), scale_(1.0f) {}

    /// Row y of the columns.
    MVFREQ_ALWAYS_INLINE void operator()(long y, Elements<V> z) const {
        const V square = z.re * z.re + z.im * z.im;
        if (type_ == Type::square) return square.store(static_cast<float*>(strip_) + V::kLanes * y);
        const V magnitude = square.root() * scale_;
        if (type_ == Type::byte) return put<unsigned char>(y, magnitude);
        if (type_ == Type::word) return put<unsigned short>(y, magnitude);
        put<double>(y, magnitude);
    }

  private:
    enum class Type { byte, word, real, square };

    template <class T>
    MVFREQ_ALWAYS_INLINE void put(long y, V magnitude) const {
        magnitude.storePels(static_cast<T*>(strip_) + V::kLanes * y);
    }

    Type type_;
    void* strip_;
    float scale_;
};

/// Strips side by side.
template <class V>
class Strips {
  public:
    /// As ColumnStrips::joinStrips.
    template <class T>
    static void join(const T* strips, long pitch, long rows, long count, T* out,
                     std::ptrdiff_t step) {
        for (long y = 0; y < rows; ++y, strips += V::kLanes, out += step) {
            const T* strip = strips;
            long x = 0;
            for (; x + V::kLanes <= count; x += V::kLanes, strip += pitch) {
                for (int i = 0; i < V::kLanes; ++i) out[x + i] = strip[i];
            }
            for (; x < count; ++x) out[x] = *strip++;
        }
    }
};

}  // namespace mvi
