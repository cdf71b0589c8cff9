// Four lanes: what every processor of the architecture has.
#include <filt/fft/internal/kernel/paths/path_of.h>

namespace mvi {

const KernelPath kBaselinePath = pathOf<MachineVector<4>>("baseline", baselineIsSupported);

}  // namespace mvi
