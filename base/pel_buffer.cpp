// Pel buffers: memory, windows and offsets.
#include <base/exception.h>
#include <base/pel_buffer.h>

#include <cstdlib>
#include <limits>
#include <new>
#include <numeric>

namespace {

constexpr auto kLargestBlock = static_cast<std::size_t>(PTRDIFF_MAX);

void checkSides(long width, long height) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    if (width < 1 || height < 1 || width > kLargest || height > kLargest) {
        throw mvExceptionWithString("The sides of a pel buffer must be from 1 to 2147483647.");
    }
}

void checkAlignment(long alignment) {
    if (alignment < 1 || alignment > 65536 || (alignment & (alignment - 1)) != 0) {
        throw mvExceptionWithString("An alignment must be a power of two from 1 to 65536.");
    }
}

[[noreturn]] void throwTooLarge() {
    throw mvExceptionWithString("The pel buffer is too large.");
}

std::int32_t clamped(std::int64_t value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

std::shared_ptr<void> zeroedBlock(std::size_t size) {
    void* const block = std::calloc(1, size);
    if (!block) throw std::bad_alloc();
    return {block, &std::free};
}

}  // namespace

mv_PelBuffer& mv_PelBuffer::operator=(const mv_PelBuffer& other) {
    checkAccess(other);
    mv_PelBuffer copy(other);
    swap(copy);
    return *this;
}

mv_PelBuffer& mv_PelBuffer::operator=(mv_PelBuffer&& other) {
    checkAccess(other);
    mv_PelBuffer taken(std::move(other));
    swap(taken);
    return *this;
}

void mv_PelBuffer::swap(mv_PelBuffer& other) noexcept {
    std::swap(owner_, other.owner_);
    std::swap(origin_, other.origin_);
    std::swap(width_, other.width_);
    std::swap(height_, other.height_);
    std::swap(rowUpdate_, other.rowUpdate_);
    std::swap(offset_, other.offset_);
    std::swap(xform_, other.xform_);
}

void mv_PelBuffer::offset(long x, long y) noexcept {
    offset_ = {clamped(x), clamped(y)};
}

void mv_PelBuffer::allocate(long width, long height, long alignment, std::size_t pelSize) {
    checkSides(width, height);
    checkAlignment(alignment);
    // The lowest bit set in a size is at least the alignment of its type.
    const std::size_t start = std::max(static_cast<std::size_t>(alignment), pelSize & -pelSize);
    const std::size_t step = std::lcm(start, pelSize);
    const auto columns = static_cast<std::size_t>(width), rows = static_cast<std::size_t>(height);
    if (columns > (kLargestBlock - step) / pelSize) throwTooLarge();
    // NOLINTNEXTLINE(clang-analyzer-core.DivideZero): no multiple of a size is 0.
    const std::size_t rowBytes = (columns * pelSize + step - 1) / step * step;
    if (rows > (kLargestBlock - start) / rowBytes) throwTooLarge();
    if (!std::in_range<long>(rowBytes / pelSize)) throwTooLarge();

    std::size_t space = rows * rowBytes + start;
    owner_ = zeroedBlock(space);
    origin_ = owner_.get();
    std::align(start, rows * rowBytes, origin_, space);
    width_ = width;
    height_ = height;
    rowUpdate_ = static_cast<long>(rowBytes / pelSize);
}

void mv_PelBuffer::bind(const void* pels, long width, long height, long rowUpdate,
                        std::size_t pelSize, std::shared_ptr<void> owner) {
    if (!pels) throw mvExceptionWithString("A pel buffer cannot view null pels.");
    checkSides(width, height);
    if (rowUpdate < width) {
        throw mvExceptionWithString("The row step of a pel buffer must not be below its width.");
    }
    const std::size_t rowLimit = kLargestBlock / pelSize / static_cast<std::size_t>(height);
    if (static_cast<std::size_t>(rowUpdate) > rowLimit) throwTooLarge();

    owner_ = std::move(owner);
    origin_ = const_cast<void*>(pels);
    width_ = width;
    height_ = height;
    rowUpdate_ = rowUpdate;
}

void mv_PelBuffer::narrow(long x, long y, long width, long height, std::size_t pelSize) {
    checkBound();
    const bool inside = x >= 0 && y >= 0 && width >= 1 && height >= 1 && x < width_ &&
                        y < height_ && width <= width_ - x && height <= height_ - y;
    if (!inside) throw mvExceptionWithString("The window is empty or outside the pel buffer.");
    origin_ = at(x, y, pelSize);
    width_ = width;
    height_ = height;
    offset_ = {clamped(std::int64_t{offset_.x} + x), clamped(std::int64_t{offset_.y} + y)};
}

unsigned char* mv_PelBuffer::at(long x, long y, std::size_t pelSize) const noexcept {
    const std::ptrdiff_t pels = std::ptrdiff_t{y} * rowUpdate_ + x;
    return static_cast<unsigned char*>(origin_) + pels * static_cast<std::ptrdiff_t>(pelSize);
}

void mv_PelBuffer::checkAccess(const mv_PelBuffer& other) const {
    if (access_.writes && !other.access_.writes) {
        throw mvExceptionWithString("Pels that are only read cannot become those of a writer.");
    }
}

void mv_PelBuffer::checkBound() const {
    if (!isBound()) throw mvExceptionWithString("The pel buffer is not bound.");
}

void mv_PelBuffer::throwOutside() {
    throw mvExceptionWithString("The pel is outside the pel buffer.");
}
