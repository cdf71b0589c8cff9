// The image area of a plane, as the column pass finishes it.
#pragma once

#include <filt/fft/internal/kernel/transform.h>

namespace mvi {

/// A sink that calls visit(x, y, elements, count) for runs of elements of the rows
/// 0 .. height - 1.
template <class Visit>
class RunSink : public ColumnSink {
  public:
    RunSink(long height, Visit visit) : height_(height), visit_(visit) {}

    void take(const FinishedColumns& columns) override {
        for (long y = 0; y < height_; ++y) {
            visit_(columns.x, y, columns.first + columns.pitch * y, columns.count);
        }
    }

  private:
    long height_;
    Visit visit_;
};

}  // namespace mvi
