// Stands between the libraries and the allocator: the linker sends their malloc and its kin here,
// and all forms of the operators new and delete are replaced.
#include "campaigns/faults/allocation_faults.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_set>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void __real_free(void* block);
extern char __executable_start;

void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size);
void __wrap_free(void* block);
}

namespace {

// The ledger is everybody's.
thread_local bool isThisArmed = false;
std::atomic<bool> areAllArmed = false;
std::mutex guard;
std::atomic<long> failing = 0;
std::atomic<long> allocations = 0;
std::atomic<bool> oneHasFailed = false;
std::atomic<faults::Extent> reach = faults::Extent::kOnlyThis;

// The ledger's own memory must not pass through the functions that it keeps book of.
template <class T>
struct RealAllocator {
    using value_type = T;
    RealAllocator() = default;
    template <class U>
    RealAllocator(const RealAllocator<U>&) {}
    T* allocate(std::size_t count) { return static_cast<T*>(__real_malloc(count * sizeof(T))); }
    void deallocate(T* block, std::size_t) { __real_free(block); }
    friend bool operator==(const RealAllocator&, const RealAllocator&) { return true; }
};

using Ledger =
    std::unordered_set<void*, std::hash<void*>, std::equal_to<void*>, RealAllocator<void*>>;

// Never destroyed: other objects free their memory after the end of main.
Ledger& newLedger() {
    return *new (__real_malloc(sizeof(Ledger))) Ledger;
}

Ledger& ledger() {
    static Ledger& all = newLedger();
    return all;
}

// Where the calls that failed return to.
Ledger& sites() {
    static Ledger& all = newLedger();
    return all;
}

bool failsNow(void* site) {
    if (!isThisArmed && !areAllArmed) return false;
    const long number = ++allocations;
    if (failing == 0) return false;
    if (reach == faults::Extent::kOnlyThis ? number != failing : number < failing) return false;
    oneHasFailed = true;
    const std::lock_guard lock(guard);
    sites().insert(site);
    return true;
}

void* noted(void* block) {
    if (block == nullptr) return block;
    const std::lock_guard lock(guard);
    ledger().insert(block);
    return block;
}

// Before the block is given back: from then on another thread may get it.
void forget(void* block) noexcept {
    const std::lock_guard lock(guard);
    ledger().erase(block);
}

void release(void* block) noexcept {
    if (block == nullptr) return;
    forget(block);
    __real_free(block);
}

void* allocate(std::size_t size, void* site) {
    return failsNow(site) ? nullptr : noted(__real_malloc(size));
}

void* allocateAligned(std::size_t alignment, std::size_t size, void* site) {
    const std::size_t whole = (size + alignment - 1) / alignment * alignment;
    return failsNow(site) ? nullptr : noted(__real_aligned_alloc(alignment, whole));
}

void* orThrow(void* block) {
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

std::size_t number(std::align_val_t alignment) {
    return static_cast<std::size_t>(alignment);
}

}  // namespace

extern "C" {
void* __wrap_malloc(std::size_t size) {
    return allocate(size, __builtin_return_address(0));
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return failsNow(__builtin_return_address(0)) ? nullptr : noted(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, std::size_t size) {
    if (failsNow(__builtin_return_address(0))) return nullptr;
    forget(block);
    return noted(__real_realloc(block, size));
}
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return allocateAligned(alignment, size, __builtin_return_address(0));
}
void __wrap_free(void* block) {
    release(block);
}
}

void* operator new(std::size_t size) {
    return orThrow(allocate(size, __builtin_return_address(0)));
}
void* operator new[](std::size_t size) {
    return orThrow(allocate(size, __builtin_return_address(0)));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, __builtin_return_address(0));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return orThrow(allocateAligned(number(alignment), size, __builtin_return_address(0)));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return orThrow(allocateAligned(number(alignment), size, __builtin_return_address(0)));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocateAligned(number(alignment), size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocateAligned(number(alignment), size, __builtin_return_address(0));
}

void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    release(block);
}

namespace faults {

AllocationFaults::AllocationFaults(long failAt, Extent extent, Threads threads) {
    failing = failAt;
    reach = extent;
    allocations = 0;
    oneHasFailed = false;
    isThisArmed = threads == Threads::kThis;
    areAllArmed = threads == Threads::kAll;
}

AllocationFaults::~AllocationFaults() {
    isThisArmed = false;
    areAllArmed = false;
}

long AllocationFaults::count() const {
    return allocations;
}

bool AllocationFaults::hasFailed() const {
    return oneHasFailed;
}

void AllocationFaults::failAll() {
    reach = Extent::kThisAndLater;
    failing = 1;
}

std::size_t liveBlocks() {
    const std::lock_guard lock(guard);
    return ledger().size();
}

std::vector<std::size_t> failedSites() {
    std::vector<std::size_t> offsets;
    for (void* const site : sites()) {
        offsets.push_back(static_cast<std::size_t>(static_cast<char*>(site) - &__executable_start));
    }
    return offsets;
}

}  // namespace faults
