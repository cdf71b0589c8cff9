// The paths by name.
#pragma once

#include <filt/fft/internal/kernel/path.h>

bool mf_PlainIsSupported();
bool mf_BaselineIsSupported();
bool mf_Avx2IsSupported();
bool mf_Avx512IsSupported();

extern const mf_KernelPath mf_kPlainPath;
extern const mf_KernelPath mf_kBaselinePath;
extern const mf_KernelPath mf_kAvx2Path;
extern const mf_KernelPath mf_kAvx512Path;
