// Growable array of float: the storage of frequency buffers and filter responses.
#pragma once

#include <filt/export.h>

#include <cstddef>
#include <utility>

/// A growable array of float whose first element lies on a 64-byte boundary.
///
/// New elements are zero, and they come zeroed from the allocator, so that a large new array costs
/// no pass over its memory. Not copyable; moving leaves the source empty.
///
/// Internal: public classes have members of this type, which is why it is installed and exported.
/// No function takes or gives one, and it may change with any release.
class MVFREQ_API mvFloatArray {
  public:
    mvFloatArray() noexcept = default;
    /// `size` zeros.
    explicit mvFloatArray(std::size_t size) { resize(size); }
    mvFloatArray(mvFloatArray&& other) noexcept { swap(other); }
    mvFloatArray& operator=(mvFloatArray&& other) noexcept {
        mvFloatArray(std::move(other)).swap(*this);
        return *this;
    }
    ~mvFloatArray();

    /// The first element; null when there are none.
    float* data() noexcept { return first_; }
    const float* data() const noexcept { return first_; }

    /// The number of elements.
    std::size_t size() const noexcept { return size_; }

    /// Makes the size `size`: the elements that were there keep their values, others are zero.
    /// A smaller size keeps the block. Throws std::bad_alloc and then changes nothing.
    void resize(std::size_t size);

    /// Exchanges the elements; none is moved.
    void swap(mvFloatArray& other) noexcept;

  private:
    void* block_ = nullptr;
    float* first_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};
