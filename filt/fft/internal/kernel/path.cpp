// The table of paths and the choice among them.
#include <filt/fft/internal/kernel/paths/built_paths.h>

namespace mvi {

namespace {

constexpr const KernelPath* kPaths[] = {
#if defined(MVFREQ_X86_PATHS)
    &kAvx512Path,
    &kAvx2Path,
#endif
#if defined(__GNUC__)
    &kBaselinePath,
#endif
    &kPlainPath,
};

const KernelPath& firstSupported() {
    for (const KernelPath* path : kPaths) {
        if (path->isSupported()) return *path;
    }
    return kPlainPath;
}

}  // namespace

bool plainIsSupported() {
    return true;
}
bool baselineIsSupported() {
    return true;
}

#if defined(MVFREQ_X86_PATHS)
bool avx2IsSupported() {
    return __builtin_cpu_supports("avx2");
}

bool avx512IsSupported() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}
#endif

const KernelPath* const* KernelPathList::begin() {
    return kPaths;
}
const KernelPath* const* KernelPathList::end() {
    return kPaths + sizeof(kPaths) / sizeof(kPaths[0]);
}

const KernelPath& bestKernelPath() {
    static const KernelPath& best = firstSupported();
    return best;
}

}  // namespace mvi
