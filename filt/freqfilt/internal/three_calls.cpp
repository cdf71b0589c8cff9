// A tile by the way that serves every filter: forward transform, filters, inverse transform.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/spatial_plane.h>
#include <filt/freqfilt/internal/three_calls.h>

#include <algorithm>
#include <type_traits>
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

void takeRealParts(const float* elements, long count, float scale, double* to) {
    for (long i = 0; i < count; ++i) to[i] = scale * elements[2 * i];
}

// Turns runs of elements into results.
template <class P>
void convert(TileResult result, const float* elements, long count, float scale, P* to) {
    const KernelPath& path = bestKernelPath();
    if constexpr (std::is_same_v<P, float>) {
        path.squares(elements, count, to);
    } else {
        if constexpr (std::is_same_v<P, double>) {
            if (result == TileResult::realParts) return takeRealParts(elements, count, scale, to);
        }
        path.pels<P>().fromMagnitudes(elements, count, scale, to);
    }
}

// Takes the part of the columns that the output asks for.
template <class P>
class OutputSink : public ColumnSink {
  public:
    OutputSink(const TileOutput<P>& out, float scale) : out_(out), scale_(scale) {}

    void take(const FinishedColumns& columns) override {
        const long begin = std::max(columns.x, out_.from.x);
        const long end = std::min(columns.x + columns.count, out_.from.x + out_.size.x);
        if (begin >= end) return;
        const float* row = columns.first + columns.pitch * out_.from.y + 2 * (begin - columns.x);
        P* to = out_.first + (begin - out_.from.x);
        for (long y = 0; y < out_.size.y; ++y, row += columns.pitch, to += out_.step) {
            convert(out_.result, row, end - begin, scale_, to);
        }
    }

  private:
    const TileOutput<P>& out_;
    float scale_;
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
void ThreeCalls::compute(TileImage<T>& image, const TileOutput<P>& out) {
    transform(image);
    applyFilters();
    OutputSink<P> sink(out, inverseScale(buffer_));
    visitSpatialPlane(buffer_, out.from.x + out.size.x, sink);
    // The conversion to pels has a poll of its own.
    pollAttention();
}

#define MVFREQ_COMPUTE_OF(T)                                                                       \
    template void ThreeCalls::compute(TileImage<T>& image, const TileOutput<unsigned char>& out);  \
    template void ThreeCalls::compute(TileImage<T>& image, const TileOutput<unsigned short>& out); \
    template void ThreeCalls::compute(TileImage<T>& image, const TileOutput<double>& out);         \
    template void ThreeCalls::compute(TileImage<T>& image, const TileOutput<float>& out);

MVFREQ_COMPUTE_OF(unsigned char)
MVFREQ_COMPUTE_OF(unsigned short)
MVFREQ_COMPUTE_OF(double)
#undef MVFREQ_COMPUTE_OF

}  // namespace mvi
