// Memory and polls of a transform.
#include <filt/fft/internal/kernel/work.h>

#include <new>

namespace mvi {

void AlignedDelete::operator()(float* floats) const {
    ::operator delete[](floats, std::align_val_t(64));
}

Floats makeFloats(std::size_t count) {
    return Floats(new (std::align_val_t(64)) float[count]);
}

Work::Work(const KernelPath& kernelPath, mvPair<long> planeSize)
    : path(kernelPath),
      size(planeSize),
      scratch(makeFloats(kernelScratchFloats(size.x, size.y))),
      rows(new const float*[static_cast<std::size_t>(size.y + kRowsAhead)]) {}

void pollTransposition(mvPair<long> size, long smallest) {
    if (size.x >= smallest && size.y >= smallest) pollAttention();
}

}  // namespace mvi
