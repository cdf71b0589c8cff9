// The table of paths and the choice among them.
#include <filt/fft/internal/kernel/built_paths.h>

namespace {

constexpr const mf_KernelPath* kPaths[] = {
#if defined(MVFREQ_X86_PATHS)
    &mf_kAvx512Path,
    &mf_kAvx2Path,
#endif
#if defined(__GNUC__)
    &mf_kBaselinePath,
#endif
    &mf_kPlainPath,
};

const mf_KernelPath& firstSupported() {
    for (const mf_KernelPath* path : kPaths) {
        if (path->isSupported()) return *path;
    }
    return mf_kPlainPath;
}

}  // namespace

bool mf_PlainIsSupported() {
    return true;
}
bool mf_BaselineIsSupported() {
    return true;
}

#if defined(MVFREQ_X86_PATHS)
bool mf_Avx2IsSupported() {
    return __builtin_cpu_supports("avx2");
}

bool mf_Avx512IsSupported() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}
#endif

const mf_KernelPath* const* mf_KernelPathList::begin() {
    return kPaths;
}
const mf_KernelPath* const* mf_KernelPathList::end() {
    return kPaths + sizeof(kPaths) / sizeof(kPaths[0]);
}

const mf_KernelPath& mf_BestKernelPath() {
    static const mf_KernelPath& best = firstSupported();
    return best;
}
