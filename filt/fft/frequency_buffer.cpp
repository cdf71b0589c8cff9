// Storage and life cycle of the frequency buffer.
#include <filt/fft/frequency_buffer.h>
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>
#include <filt/fft/internal/same_values.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace {

void requireReducible(const mvFrequencyBuffer& src, long width, long height) {
    using InvalidSize = mvFrequencyDefs::InvalidSize;
    if (width < 2) throw InvalidSize("Copied width must be > 1");
    if (height < 2) throw InvalidSize("Copied height must be > 1");
    if (width > src.width()) {
        throw InvalidSize("Copied width cannot be greater than source width");
    }
    if (height > src.height()) {
        throw InvalidSize("Copied height cannot be greater than source height");
    }
    if (!mvi::isPowerOfTwo(width)) throw InvalidSize("Unsupported width");
    if (!mvi::isPowerOfTwo(height)) throw InvalidSize("Unsupported height");
}

void requirePair(const mv_PelBuffer& real, const mv_PelBuffer& imaginary) {
    if (!real.isBound() || !imaginary.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
    if (real.height() != imaginary.height() || real.width() != imaginary.width() ||
        !(real.offset() == imaginary.offset())) {
        throw mvFrequencyDefs::InvalidSize(
            "Real and Imaginary PelBuffers must have the same dimensions and offset.");
    }
}

// The lowest `width` columns of the `rows` rows from `row` on: both ends of each source row.
float* copyLowFrequencies(const float* src, std::ptrdiff_t srcWidth, long row, long rows,
                          long width, float* dst) {
    for (long y = row; y < row + rows; ++y) {
        const float* const line = src + 2 * srcWidth * y;
        dst = std::copy_n(line, width, dst);
        dst = std::copy_n(line + 2 * srcWidth - width, width, dst);
    }
    return dst;
}

}  // namespace

mvFrequencyBuffer::mvFrequencyBuffer() = default;

mvFrequencyBuffer::mvFrequencyBuffer(long width, long height) {
    setAndAllocate(width, height);
    xform_.setIdentity();
}

mvFrequencyBuffer::mvFrequencyBuffer(const mvFrequencyBuffer& src) {
    *this = src;
}

mvFrequencyBuffer::mvFrequencyBuffer(mvFrequencyBuffer&& src) noexcept {
    *this = std::move(src);
}

mvFrequencyBuffer::mvFrequencyBuffer(const mvFrequencyBuffer& src, long width, long height) {
    requireReducible(src, width, height);
    setAndAllocate(width, height);
    inverseComputed_ = src.inverseComputed_;

    const double sx = static_cast<double>(width) / src.width_;
    const double sy = static_cast<double>(height) / src.height_;
    imageWidth_ = mvi::truncate<std::int32_t>(src.imageWidth_ * sx);
    imageHeight_ = mvi::truncate<std::int32_t>(src.imageHeight_ * sy);
    xform_ = src.xform_;
    if (src.xform_.isSet()) {
        const mvMatrix<2> scale(sx, sy, mvRadian(0.0), mvRadian(0.0));
        const mv2XformLinear reduction(scale, mvVector<2>(0.0, 0.0));
        xform_.xform(src.xform_.linearXform() * reduction);
    }
    offset_ = src.offset_;

    float* const middle = copyLowFrequencies(src.data_, src.width_, 0, height / 2, width, data_);
    copyLowFrequencies(src.data_, src.width_, src.height_ - height / 2, height / 2, width, middle);
}

mvFrequencyBuffer::mvFrequencyBuffer(const mvPelBuffer_const<double>& real,
                                     const mvPelBuffer_const<double>& imaginary) {
    requirePair(real, imaginary);
    setAndAllocate(real.width(), real.height());
    mvi::BufferAccess::setPlacement(*this, real);
    for (long y = 0; y < imageHeight_; ++y) {
        const double* const re = real.pointToRow(y);
        const double* const im = imaginary.pointToRow(y);
        float* out = data_ + 2L * width_ * y;
        for (long x = 0; x < imageWidth_; ++x) {
            *out++ = static_cast<float>(re[x]);
            *out++ = static_cast<float>(im[x]);
        }
    }
    // What lies beyond the images is zero already, as new memory is.
    mvi::pollAttention();
}

mvFrequencyBuffer::~mvFrequencyBuffer() = default;

mvFrequencyBuffer& mvFrequencyBuffer::operator=(const mvFrequencyBuffer& src) {
    if (this == &src || dropIfEmpty(src)) return *this;
    takeShape(src);
    std::copy_n(src.data_, mvi::BufferAccess::floats(src), data_);
    return *this;
}

// Everything but the floats of a buffer with data. The padded size is taken as it is: a reduced
// copy's may be larger than its image asks for.
void mvFrequencyBuffer::takeShape(const mvFrequencyBuffer& src) {
    allocatePlane(src.width_, src.height_);
    imageWidth_ = src.imageWidth_;
    imageHeight_ = src.imageHeight_;
    xform_ = src.xform_;
    offset_ = src.offset_;
    inverseComputed_ = src.inverseComputed_;
    masked_ = src.masked_;
    maskedMiny_ = src.maskedMiny_;
    maskedMaxy_ = src.maskedMaxy_;
}

mvFrequencyBuffer& mvFrequencyBuffer::operator=(mvFrequencyBuffer&& src) noexcept {
    if (this == &src || dropIfEmpty(src)) return *this;
    width_ = src.width_;
    height_ = src.height_;
    imageWidth_ = src.imageWidth_;
    imageHeight_ = src.imageHeight_;
    masked_ = std::exchange(src.masked_, 0);
    maskedMiny_ = src.maskedMiny_;
    maskedMaxy_ = src.maskedMaxy_;
    xform_ = src.xform_;
    offset_ = src.offset_;
    storage_ = std::move(src.storage_);
    data_ = std::exchange(src.data_, nullptr);
    inverseComputed_ = src.inverseComputed_;
    return *this;
}

// Assignment from a buffer without data: that state is taken, the block stays.
bool mvFrequencyBuffer::dropIfEmpty(const mvFrequencyBuffer& src) noexcept {
    if (src.data_ != nullptr) return false;
    masked_ = 0;
    data_ = nullptr;
    return true;
}

bool mvFrequencyBuffer::operator==(const mvFrequencyBuffer& other) const {
    if (data_ == nullptr || other.data_ == nullptr) return data_ == other.data_;
    if (width_ != other.width_ || height_ != other.height_) return false;
    if (imageWidth_ != other.imageWidth_ || imageHeight_ != other.imageHeight_) return false;
    if (inverseComputed_ != other.inverseComputed_ || masked_ != other.masked_) return false;
    if (masked_ != 0 && (maskedMiny_ != other.maskedMiny_ || maskedMaxy_ != other.maskedMaxy_)) {
        return false;
    }
    if (!(offset_ == other.offset_)) return false;
    return mvi::sameFloats(data_, other.data_, mvi::BufferAccess::floats(*this));
}

long mvFrequencyBuffer::width() const {
    requireData();
    return width_;
}

long mvFrequencyBuffer::height() const {
    requireData();
    return height_;
}

mvPair<long> mvFrequencyBuffer::imageSize() const noexcept {
    return hasData() ? mvPair<long>(imageWidth_, imageHeight_) : mvPair<long>();
}

mvPair<long> mvFrequencyBuffer::offset() const noexcept {
    return hasData() ? mvPair<long>(offset_.x, offset_.y) : mvPair<long>();
}

mv2XformCache mvFrequencyBuffer::xformCache() const noexcept {
    return hasData() ? xform_ : mv2XformCache();
}

std::optional<mvPair<long>> mvFrequencyBuffer::band() const noexcept {
    if (!hasData() || masked_ == 0) return std::nullopt;
    return mvPair<long>(maskedMiny_, maskedMaxy_);
}

void mvFrequencyBuffer::clearBand() noexcept {
    masked_ = maskedMiny_ = maskedMaxy_ = 0;
}

void mvFrequencyBuffer::masked(long flag) {
    masked_ = mvi::hold32(flag);
}
void mvFrequencyBuffer::maskedMiny(long row) {
    maskedMiny_ = mvi::hold32(row);
}
void mvFrequencyBuffer::maskedMaxy(long row) {
    maskedMaxy_ = mvi::hold32(row);
}

// Sizes the plane for an image of `width` x `height` and enters the frequency-data state.
void mvFrequencyBuffer::setAndAllocate(long width, long height) {
    if (width > mvi::BufferAccess::kLargestSide || height > mvi::BufferAccess::kLargestSide) {
        throw mvFrequencyDefs::InvalidSize("Width and Height must be no larger than 2048.");
    }
    allocatePlane(mvi::hold32(mvi::powerOfTwoAbove(width)),
                  mvi::hold32(mvi::powerOfTwoAbove(height)));
    imageWidth_ = mvi::hold32(width);
    imageHeight_ = mvi::hold32(height);
}

// Keeps the plane when it has the size already; changes nothing when memory runs out.
void mvFrequencyBuffer::allocatePlane(std::int32_t width, std::int32_t height) {
    if (data_ == nullptr || width != width_ || height != height_) {
        const auto elements = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        storage_.resize(2 * elements + mvi::BufferAccess::kSlackFloats);
        data_ = storage_.data();
    }
    width_ = width;
    height_ = height;
    masked_ = 0;
    inverseComputed_ = false;
}

void mvFrequencyBuffer::requireData() const {
    if (data_ == nullptr) {
        throw mvFrequencyDefs::Uninitialized("FrequencyBuffer has not been initialized");
    }
}

void mvFrequencyBuffer::requireFrequencies() const {
    requireData();
    if (inverseComputed_) {
        throw mvFrequencyDefs::InvalidBuffer(
            "Cannot access frequency data once inverse has been computed.");
    }
}
