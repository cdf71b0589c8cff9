// A tile by the way that serves every filter: forward transform, filters, inverse transform.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/spatial_plane.h>
#include <filt/freqfilt/internal/three_calls.h>

#include <vector>

namespace mvi {

namespace {

// The rows of a tile's image as packed reals.
template <class T>
class RealRows : public RowSource {
  public:
    RealRows(TileImage<T>& image, long width)
        : image_(image), pels_(static_cast<std::size_t>(width)) {}

    long rows() const override { return image_.rows(); }

    void write(long y, float* row) const override {
        const auto width = static_cast<long>(pels_.size());
        bestKernelPath().pels<T>().toReals(image_.row(y, pels_.data()), width, row);
        if (width == 1) row[1] = 0.0f;
    }

  private:
    TileImage<T>& image_;
    mutable std::vector<T> pels_;
};

}  // namespace

template <class T>
void ThreeCalls::transform(TileImage<T>& image) {
    BufferAccess::setAndAllocate(buffer_, plane_.x, plane_.y);
    transformReal(RealRows<T>(image, plane_.x), BufferAccess::data(buffer_), plane_);
}

// A filter of the caller's own may do anything to the buffer.
void ThreeCalls::requireSamePlane() const {
    if (buffer_.width() != plane_.x || buffer_.height() != plane_.y) {
        throw mvFrequencyDefs::InvalidSize("The filter has changed the size of its buffer.");
    }
}

void ThreeCalls::applyFilters() {
    for (const mvFrequencyFilter* filter : filters_) {
        filter->apply(buffer_);
        requireSamePlane();
    }
}

template <class T, class P>
void ThreeCalls::compute(TileImage<T>& image, const PlaneOutput<P>& out) {
    transform(image);
    applyFilters();
    writeResults(buffer_, out);
    // The conversion to pels has a poll of its own.
    pollAttention();
}

#define MVFREQ_COMPUTE_OF(T)                                                                       \
    template void ThreeCalls::compute(TileImage<T>& image, const PlaneOutput<unsigned char>& out); \
    template void ThreeCalls::compute(TileImage<T>& image,                                         \
                                      const PlaneOutput<unsigned short>& out);                     \
    template void ThreeCalls::compute(TileImage<T>& image, const PlaneOutput<double>& out);        \
    template void ThreeCalls::compute(TileImage<T>& image, const PlaneOutput<float>& out);

MVFREQ_COMPUTE_OF(unsigned char)
MVFREQ_COMPUTE_OF(unsigned short)
MVFREQ_COMPUTE_OF(double)
#undef MVFREQ_COMPUTE_OF

}  // namespace mvi
