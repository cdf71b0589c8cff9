// Eight lanes: AVX2.
#include <filt/fft/internal/kernel/path_of.h>

const mf_KernelPath mf_kAvx2Path = mf_PathOf<mf_MachineVector<8>>("avx2", mf_Avx2IsSupported);
