// Sixteen lanes: AVX-512.
#include <filt/fft/internal/kernel/path_of.h>

const mf_KernelPath mf_kAvx512Path =
    mf_PathOf<mf_MachineVector<16>>("avx512", mf_Avx512IsSupported);
