// Plain C++: runs everywhere.
#include <filt/fft/internal/kernel/path_of.h>

const mf_KernelPath mf_kPlainPath = mf_PathOf<mf_PlainVector<8>>("plain", mf_PlainIsSupported);
