// Four lanes: what every processor of the architecture has.
#include <filt/fft/internal/kernel/path_of.h>

const mf_KernelPath mf_kBaselinePath =
    mf_PathOf<mf_MachineVector<4>>("baseline", mf_BaselineIsSupported);
