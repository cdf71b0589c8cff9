// The image filter.
#include <filt/fft/arithmetic.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/freqfilt/image_filter.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/filter_life_cycle.h>

#include <utility>

MVFREQ_FILTER_LIFE_CYCLE(mvFrequencyFilterImage, 2846)

mvFrequencyFilterImage::mvFrequencyFilterImage(const mvFrequencyBuffer& image) {
    create(image);
}
mvFrequencyFilterImage::mvFrequencyFilterImage(const mvFrequencyFilterImage& other)
    : mvFrequencyFilterImage() {
    *this = other;
}
mvFrequencyFilterImage::mvFrequencyFilterImage(mvFrequencyFilterImage&& other) noexcept {
    *this = std::move(other);
}
mvFrequencyFilterImage::~mvFrequencyFilterImage() = default;

mvFrequencyFilterImage& mvFrequencyFilterImage::operator=(const mvFrequencyFilterImage& other) {
    if (this == &other) return *this;
    mutating_();
    image_ = other.image_;
    mvFrequencyFilter::operator=(other);
    return *this;
}

mvFrequencyFilterImage& mvFrequencyFilterImage::operator=(mvFrequencyFilterImage&& other) {
    if (this == &other) return *this;
    mutating_();
    image_ = std::move(other.image_);
    initialized_ = std::exchange(other.initialized_, false);
    return *this;
}

bool mvFrequencyFilterImage::sameAs(const mvFrequencyFilterImage& other) const {
    return initialized_ == other.initialized_ && image_ == other.image_;
}

void mvFrequencyFilterImage::setImage(const mvFrequencyBuffer& image) {
    create(image);
}

void mvFrequencyFilterImage::create(const mvFrequencyBuffer& image) {
    mvi::BufferAccess::requireData(image);
    mutating_();
    image_ = image;
    initialized_ = true;
}

void mvFrequencyFilterImage::requireApplicable(const mvFrequencyBuffer& buf) const {
    mvi::BufferAccess::requireData(buf);
    mvi::BufferAccess::requireData(image_);
    mvi::requireFilterSize(buf, {image_.width(), image_.height()});
}

void mvFrequencyFilterImage::apply(mvFrequencyBuffer& buf) const {
    requireApplicable(buf);
    multiply(buf);
}

void mvFrequencyFilterImage::apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const {
    requireApplicable(src);
    dst = src;
    multiply(dst);
}

void mvFrequencyFilterImage::multiply(mvFrequencyBuffer& buf) const {
    mfFrequencyMultiply(image_, buf);
    maskFrequencyBuffer(buf, false, 0, 0);
}

void mvFrequencyFilterImage::exchange(mvArchive& ar) {
    ar || image_;
}
