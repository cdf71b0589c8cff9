// The sizes of blocks, by their addresses.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace support {

/// Takes memory only when it grows, so that a meter of allocations can hold one, and is quick while
/// it holds little: fuzzers ask it millions of times a second.
class BlockTable {
  public:
    /// The block is not in the table.
    void add(const void* block, std::size_t size) {
        if (2 * count_ >= entries_.size()) grow();
        put({block, size});
    }

    /// Takes the block out and returns its size; 0 when it is not there.
    std::size_t take(const void* block) {
        if (count_ == 0) return 0;
        const std::size_t at = placeOf(block);
        const std::size_t size = entries_[at].size;
        if (entries_[at].block) close(at);
        return size;
    }

    void clear() {
        if (count_ > 0) std::fill(entries_.begin(), entries_.end(), Entry{});
        count_ = 0;
    }

  private:
    struct Entry {
        const void* block = nullptr;
        std::size_t size = 0;
    };

    // Addresses are multiples of 16.
    std::size_t home(const void* block) const {
        const std::uint64_t bits = reinterpret_cast<std::uintptr_t>(block) >> 4;
        return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15U) >> 32) & last();
    }
    std::size_t last() const { return entries_.size() - 1; }

    // Where the block stands, or would stand.
    std::size_t placeOf(const void* block) const {
        std::size_t at = home(block);
        while (entries_[at].block && entries_[at].block != block) at = (at + 1) & last();
        return at;
    }

    void put(const Entry& entry) {
        entries_[placeOf(entry.block)] = entry;
        ++count_;
    }

    // Empties a place; entries behind it that came from before it move up.
    void close(std::size_t at) {
        --count_;
        for (std::size_t next = (at + 1) & last(); entries_[next].block;
             next = (next + 1) & last()) {
            const std::size_t way = (next - home(entries_[next].block)) & last();
            if (way < ((next - at) & last())) continue;
            entries_[at] = std::exchange(entries_[next], Entry{});
            at = next;
        }
        entries_[at] = Entry{};
    }

    void grow() {
        const std::vector<Entry> former = std::exchange(
            entries_, std::vector<Entry>(std::max<std::size_t>(2 * entries_.size(), 256)));
        count_ = 0;
        for (const Entry& entry : former) {
            if (entry.block) put(entry);
        }
    }

    std::vector<Entry> entries_;
    std::size_t count_ = 0;
};

}  // namespace support
