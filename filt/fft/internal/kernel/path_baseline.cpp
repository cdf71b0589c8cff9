// Four lanes: what every processor of the architecture has.
#include <filt/fft/internal/kernel/built_paths.h>
#include <filt/fft/internal/kernel/passes.h>

const mf_KernelPath mf_kBaselinePath =
    mf_PathOf<mf_Passes<mf_MachineVector<4>>>("baseline", mf_BaselineIsSupported);
