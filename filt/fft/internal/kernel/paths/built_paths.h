// The paths by name.
#pragma once

#include <filt/fft/internal/kernel/path.h>

namespace mvi {

bool plainIsSupported();
bool baselineIsSupported();
bool avx2IsSupported();
bool avx512IsSupported();

extern const KernelPath kPlainPath;
extern const KernelPath kBaselinePath;
extern const KernelPath kAvx2Path;
extern const KernelPath kAvx512Path;

}  // namespace mvi
