// Plain C++: runs everywhere.
#include <filt/fft/internal/kernel/built_paths.h>
#include <filt/fft/internal/kernel/passes.h>

const mf_KernelPath mf_kPlainPath =
    mf_PathOf<mf_Passes<mf_PlainVector<8>>>("plain", mf_PlainIsSupported);
