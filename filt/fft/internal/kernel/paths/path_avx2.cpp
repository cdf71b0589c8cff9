// Eight lanes: AVX2.
#include <filt/fft/internal/kernel/paths/path_of.h>

namespace mvi {

const KernelPath kAvx2Path = pathOf<MachineVector<8>>("avx2", avx2IsSupported);

}  // namespace mvi
