// Meters the allocator and limits it: the linker sends the library's malloc and calloc here, and
// the operators new and delete are replaced.
#include "support/allocation_meter.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "support/aligned_blocks.h"
#include "support/block_table.h"

namespace {

std::size_t largestBlock = archive::kLargestBlock;
bool metering = false;
std::size_t held = 0;
std::size_t largest = 0;
long untilFailure = 0;  // blocks up to the one that is refused; none when it is 0 or less

// The meter's own bookkeeping must not meter itself.
struct Pause {
    Pause() { metering = false; }
    ~Pause() { metering = true; }
};

support::BlockTable& blocks() {
    static support::BlockTable all;
    return all;
}

// A block that is refused counts as well: it was asked for.
bool isRefused(std::size_t size) {
    if (metering && --untilFailure == 0) return true;
    if (size <= largestBlock) return false;
    if (metering) largest = std::max(largest, size);
    return true;
}

void* note(void* block, std::size_t size) {
    if (!metering || !block) return block;
    const Pause pause;
    blocks().add(block, size);
    held += size;
    largest = std::max(largest, held);
    return block;
}

void forget(void* block) {
    if (!metering || !block) return;
    held -= blocks().take(block);
}

// On Windows its way does not lead through free.
void releaseAligned(void* block) {
    forget(block);
    support::freeAlignedBlock(block);
}

}  // namespace

// The sanitizers' run time refers to them too.
#pragma GCC visibility push(default)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
void __wrap_free(void* block);

void* __wrap_malloc(std::size_t size) {
    return isRefused(size) ? nullptr : note(__real_malloc(size), size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    const std::size_t most =
        std::numeric_limits<std::size_t>::max() / std::max(size, std::size_t{1});
    if (isRefused(std::min(count, most) * size)) return nullptr;
    return note(__real_calloc(count, size), count * size);
}
void* __wrap_realloc(void* block, std::size_t size) {
    forget(block);
    return note(__real_realloc(block, size), size);
}
void __wrap_free(void* block) {
    forget(block);
    __real_free(block);
}
}
#pragma GCC visibility pop

void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (!block) throw std::bad_alloc();
    return block;
}
// Inlined without the operator new, it looks to g++ as if they did not fit.
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

// What is aligned beyond other blocks comes from elsewhere.
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    const std::size_t whole = (size + step - 1) / step * step;
    void* const block = isRefused(size) ? nullptr : note(support::alignedBlock(step, whole), size);
    if (!block) throw std::bad_alloc();
    return block;
}
void operator delete(void* block, std::align_val_t) noexcept {
    releaseAligned(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    releaseAligned(block);
}

namespace archive {

BlockLimit::BlockLimit(std::size_t bytes) {
    largestBlock = bytes;
}

BlockLimit::~BlockLimit() {
    largestBlock = kLargestBlock;
}

AllocationMeter::AllocationMeter(long failAt) {
    blocks().clear();
    held = 0;
    largest = 0;
    untilFailure = failAt;
    metering = true;
}

AllocationMeter::~AllocationMeter() {
    metering = false;
}

std::size_t AllocationMeter::peak() const {
    return largest;
}

}  // namespace archive
