// Sixteen lanes: AVX-512.
#include <filt/fft/internal/kernel/paths/path_of.h>

namespace mvi {

const KernelPath kAvx512Path = pathOf<MachineVector<16>>("avx512", avx512IsSupported);

}  // namespace mvi
