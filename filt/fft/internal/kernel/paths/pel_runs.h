// Conversions between pels and elements, run by run.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/pel_of.h>
#include <internal/product.h>

// Not <cmath>, which has inline functions: linkers keep one of each, whatever processor it is for.
#include <math.h>  // NOLINT(modernize-deprecated-headers)

namespace mvi {

/// The loops of PelRuns and their neighbours. They are written for the compiler to vectorise;
/// that they depend on the vector type V keeps those of different instruction sets apart.
template <class V>
class Runs {
  public:
    static void mirrored(const float* elements, long count, float* end) {
        constexpr long kBlock = V::kLanes / 2;
        const auto mirrorBlock = [=](long i) {
            V::load(elements + 2 * i).mirrored().store(end - 2 * (i + kBlock));
        };
        long i = 0;
        for (; i + kBlock <= count; i += kBlock) mirrorBlock(i);
        // What is left goes with some of those that are done.
        if (count >= kBlock) {
            mirrorBlock(count - kBlock);
            return;
        }
        for (; i < count; ++i) {
            end[-2 * i - 2] = elements[2 * i];
            end[-2 * i - 1] = -elements[2 * i + 1];
        }
    }

    static void squareRange(const float* elements, long count, SquareRange& range) {
        widen(range, count, [=](std::int64_t i) { return square(elements + 2 * i); });
    }

    static void rangeOfSquares(const float* squares, std::int64_t count, SquareRange& range) {
        widen(range, count, [=](std::int64_t i) { return squares[i]; });
    }

    static void squares(const float* elements, long count, float* out) {
        for (long i = 0; i < count; ++i) out[i] = square(elements + 2 * i);
    }

    template <class T>
    static void toReals(const T* pels, long count, float* out) {
        for (long i = 0; i < count; ++i) out[i] = static_cast<float>(pels[i]);
    }

    template <class T>
    static void toElements(const T* re, const T* im, long count, float* out) {
        for (long i = 0; i < count; ++i) {
            out[2 * i] = static_cast<float>(re[i]);
            out[2 * i + 1] = static_cast<float>(im[i]);
        }
    }

    template <class T>
    static void fromMagnitudes(const float* elements, long count, float scale, T* pels) {
        for (long i = 0; i < count; ++i) {
            pels[i] = PelOf<V>::template rounded<T>(product(magnitude(elements + 2 * i), scale));
        }
    }

    template <class T>
    static void fromMagnitudesMapped(const float* elements, long count, float scale, float low,
                                     float factor, T* pels) {
        for (long i = 0; i < count; ++i) {
            pels[i] = PelOf<V>::template rounded<T>(
                product(product(magnitude(elements + 2 * i), scale) - low, factor));
        }
    }

    template <class T>
    static void fromSquaresMapped(const float* squares, long count, float scale, float low,
                                  float factor, T* pels) {
        for (long i = 0; i < count; ++i) {
            pels[i] = PelOf<V>::template rounded<T>(
                product(product(::sqrtf(squares[i]), scale) - low, factor));
        }
    }

  private:
    // Widens the range by squareAt(0) .. squareAt(count - 1).
    template <class SquareAt>
    static void widen(SquareRange& range, std::int64_t count, SquareAt squareAt) {
        // One range for each lane, since compilers may not reorder comparisons. NaNs are left out
        // by all of them, and no square is -0, so that the ranges join in any order.
        constexpr long kLanes = 16;
        float least[kLanes], greatest[kLanes];
        for (long l = 0; l < kLanes; ++l) {
            least[l] = range.least;
            greatest[l] = range.greatest;
        }
        const auto take = [&](long l, std::int64_t i) {
            const float s = squareAt(i);
            least[l] = smaller(s, least[l]);
            greatest[l] = larger(s, greatest[l]);
        };
        std::int64_t i = 0;
        for (; i + kLanes <= count; i += kLanes) {
            for (long l = 0; l < kLanes; ++l) take(l, i + l);
        }
        for (long l = 0; i + l < count; ++l) take(l, i + l);
        for (long l = 0; l < kLanes; ++l) {
            range.least = smaller(least[l], range.least);
            range.greatest = larger(greatest[l], range.greatest);
        }
    }

    static float smaller(float s, float least) { return s < least ? s : least; }
    static float larger(float s, float greatest) { return s > greatest ? s : greatest; }

    static float square(const float* z) { return product(z[0], z[0]) + product(z[1], z[1]); }
    static float magnitude(const float* z) { return ::sqrtf(square(z)); }
};

}  // namespace mvi
