// Eight lanes: AVX2.
#include <filt/fft/internal/kernel/built_paths.h>
#include <filt/fft/internal/kernel/passes.h>

const mf_KernelPath mf_kAvx2Path =
    mf_PathOf<mf_Passes<mf_MachineVector<8>>>("avx2", mf_Avx2IsSupported);
