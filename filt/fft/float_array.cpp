// Zeroed, aligned, growable storage of floats.
#include <filt/fft/float_array.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kAlignment = 64;

float* alignUp(void* block) {
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    return reinterpret_cast<float*>((address + kAlignment - 1) / kAlignment * kAlignment);
}

}  // namespace

mvFloatArray::~mvFloatArray() {
    std::free(block_);
}

void mvFloatArray::resize(std::size_t size) {
    if (size <= capacity_) {
        if (size > size_) std::fill(first_ + size_, first_ + size, 0.0f);
        size_ = size;
        return;
    }
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / sizeof(float);
    if (size > kMost - kAlignment) throw std::bad_alloc();
    void* const block = std::calloc(size * sizeof(float) + kAlignment, 1);
    if (block == nullptr) throw std::bad_alloc();
    float* const first = alignUp(block);
    std::copy_n(first_, size_, first);
    std::free(block_);
    block_ = block;
    first_ = first;
    size_ = capacity_ = size;
}

void mvFloatArray::swap(mvFloatArray& other) noexcept {
    std::swap(block_, other.block_);
    std::swap(first_, other.first_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
}
