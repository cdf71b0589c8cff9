// Sixteen lanes: AVX-512.
#include <filt/fft/internal/kernel/built_paths.h>
#include <filt/fft/internal/kernel/passes.h>

const mf_KernelPath mf_kAvx512Path =
    mf_PathOf<mf_Passes<mf_MachineVector<16>>>("avx512", mf_Avx512IsSupported);
