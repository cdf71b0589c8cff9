// The row passes over a plane, a few rows at a time.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/real_lines.h>
#include <filt/fft/internal/kernel/paths/row_lanes.h>
#include <filt/fft/internal/kernel/paths/vector.h>

namespace mvi {

/// The row passes with the lanes of the vector type V.
template <class V>
class RowPasses {
  public:
    /// As KernelPath::complexRows. An inverse is conjugated before and after.
    static void complexRows(const float* const* src, float* const* dst, long count, long width,
                            Direction direction, float* scratch) {
        if (direction == Direction::inverse) {
            complexRows<true>(src, dst, count, width, scratch);
        } else {
            complexRows<false>(src, dst, count, width, scratch);
        }
    }

    /// As KernelPath::realRows.
    static void realRows(const float* const* src, float* const* dst, long count, long width,
                         float* scratch) {
        const long half = width / 2;
        for (long r = 0; r < count; r += Lanes::kLanes) {
            const Z* const result = realLines(src + r, count - r, width, scratch);
            Lanes::template store<false>(result, dst + r, count - r, half);
            Lanes::template storeElements<false>(result, {dst + r, count - r}, half, half + 1);
        }
    }

  private:
    using Lanes = RowLanes<V>;
    using Z = Elements<V>;

    template <bool kInverse>
    static void complexRows(const float* const* src, float* const* dst, long count, long width,
                            float* scratch) {
        for (long r = 0; r < count; r += Lanes::kLanes) {
            const Z* const result = complexLines<kInverse>(src + r, count - r, width, scratch);
            Lanes::template store<kInverse>(result, dst + r, count - r, width);
        }
    }

    // The transforms of a few rows, of their conjugates for an inverse.
    template <bool kConjugate>
    static const Z* complexLines(const float* const* rows, long available, long width,
                                 float* scratch) {
        Z* const lines = reinterpret_cast<Z*>(scratch);
        Lanes::template load<kConjugate>(rows, available, lines, width);
        LineTransform<V>::between(lines, lines + width, width);
        return lines + width;
    }

    static const Z* realLines(const float* const* rows, long available, long width,
                              float* scratch) {
        const long half = width / 2;
        Z* const lines = reinterpret_cast<Z*>(scratch);
        Lanes::template load<false>(rows, available, lines, half);
        RealLines<V>::transform(lines, lines + half, half);
        return lines + half;
    }
};

}  // namespace mvi
