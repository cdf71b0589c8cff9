// Blocks that are aligned beyond others: on Windows malloc's kin has names of its own for them.
#pragma once

#include <cstdlib>

namespace support {

/// Null where there is no memory; the size is a multiple of the alignment.
inline void* alignedBlock(std::size_t alignment, std::size_t size) {
#if defined(_WIN32)
    return _aligned_malloc(size, alignment);
#else
    return std::aligned_alloc(alignment, size);
#endif
}

inline void freeAlignedBlock(void* block) {
#if defined(_WIN32)
    _aligned_free(block);
#else
    std::free(block);
#endif
}

}  // namespace support
