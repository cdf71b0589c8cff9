// Finished columns to results.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/fft/internal/kernel/transform.h>

#include <algorithm>
#include <type_traits>

namespace mvi {

/// Takes the part of the columns that the output asks for.
template <class P>
class ResultSink : public ColumnSink {
  public:
    ResultSink(const PlaneOutput<P>& out, float scale, const KernelPath& path)
        : out_(out), scale_(scale), path_(path) {}

    void take(const FinishedColumns& columns) override {
        const long begin = std::max(columns.x, out_.from.x);
        const long end = std::min(columns.x + columns.count, out_.from.x + out_.size.x);
        if (begin >= end) return;
        const float* row = columns.first + columns.pitch * out_.from.y + 2 * (begin - columns.x);
        P* to = out_.first + (begin - out_.from.x);
        for (long y = 0; y < out_.size.y; ++y, row += columns.pitch, to += out_.step) {
            convert(row, end - begin, to);
        }
    }

  private:
    void convert(const float* elements, long count, P* to) const {
        if constexpr (std::is_same_v<P, float>) {
            path_.squares(elements, count, to);
        } else {
            if constexpr (std::is_same_v<P, double>) {
                if (out_.result == PlaneResult::realParts) {
                    return takeRealParts(elements, count, to);
                }
            }
            path_.pels<P>().fromMagnitudes(elements, count, scale_, to);
        }
    }

    void takeRealParts(const float* elements, long count, double* to) const {
        for (long i = 0; i < count; ++i) to[i] = scale_ * elements[2 * i];
    }

    const PlaneOutput<P>& out_;
    float scale_;
    const KernelPath& path_;
};

}  // namespace mvi
