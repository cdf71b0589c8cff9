// The stored response of a filter.
#include <filt/fft/errors.h>
#include <filt/fft/internal/archive_routines.h>
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/response.h>

#include <algorithm>
#include <utility>

mvFilterResponse& mvFilterResponse::operator=(const mvFilterResponse& other) {
    allocate(other.width_, other.height_);
    std::copy_n(other.data_, size(), data_);
    return *this;
}

mvFilterResponse& mvFilterResponse::operator=(mvFilterResponse&& other) noexcept {
    width_ = other.width_;
    height_ = other.height_;
    storage_ = std::move(other.storage_);
    data_ = std::exchange(other.data_, nullptr);
    return *this;
}

void mvFilterResponse::requireSet() const {
    if (!isSet()) {
        throw mvFrequencyDefs::Uninitialized("FrequencyFilter has not been initialized");
    }
}

std::size_t mvFilterResponse::size() const noexcept {
    return mvi::heldSize(std::int64_t{width_} * height_);
}

void mvFilterResponse::allocate(std::int32_t width, std::int32_t height) {
    const std::int64_t gains = std::max<std::int64_t>(std::int64_t{width} * height, 0);
    const std::size_t needed = mvi::heldSize(gains + std::int64_t{kSlackFloats});
    if (storage_.size() != needed) {
        mvFloatArray fresh(needed);
        storage_.swap(fresh);
    }
    data_ = storage_.data();
    width_ = width;
    height_ = height;
}

void mvFilterResponse::exchangeSize(mvArchive& ar) {
    if (!ar.isStoring()) data_ = nullptr;
    ar || width_ || height_;
}

void mvFilterResponse::exchangeGains(mvArchive& ar) {
    bool hasGains = isSet();
    ar || hasGains;
    if (ar.isStoring()) {
        mvi::storeFloats(ar, data_, hasGains ? size() : 0);
        return;
    }
    mvi::LoadedFloats loaded = mvi::loadFloats(ar, kSlackFloats);
    if (hasGains) {
        constexpr std::size_t kLargestPadded = 16 * 1024 * 1024;
        mvi::padFloats(loaded, std::max(size(), loaded.count), kSlackFloats, kLargestPadded);
        storage_ = std::move(loaded.values);
        data_ = storage_.data();
    } else {
        storage_ = mvFloatArray();
    }
}
