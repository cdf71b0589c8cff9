// The two entries of the kernel that work on a plane in place.
#include <filt/fft/internal/kernel.h>
#include <filt/fft/internal/kernel/transform.h>

namespace {

// Rows that are in the plane already.
class RowsOfThePlane : public mvi::RowSource {
  public:
    explicit RowsOfThePlane(long rows) : rows_(rows) {}
    long rows() const override { return rows_; }
    void write(long, float*) const override {}

  private:
    long rows_;
};

}  // namespace

void mf_FFT2D(float* data, mvPair<long> size, int direction, int rowLow, int rowHigh,
              const mvi::KernelPath& path) {
    const auto turn = direction < 0 ? mvi::Direction::inverse : mvi::Direction::forward;
    mvi::transformComplex(data, data, size, turn, {size.y, rowLow, rowHigh}, size.x, nullptr, path);
}

void mf_RealFFT2D(float* data, mvPair<long> size, int, int, int, const mvi::KernelPath& path) {
    mvi::transformReal(RowsOfThePlane(size.y), data, size, path);
}
