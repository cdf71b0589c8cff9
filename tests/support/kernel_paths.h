// The kernel's paths that this processor has.
#pragma once

#include <filt/fft/internal/kernel/path.h>

#include <gtest/gtest.h>

#include <vector>

namespace support {

inline std::vector<const mvi::KernelPath*> supportedPaths() {
    std::vector<const mvi::KernelPath*> paths;
    for (const mvi::KernelPath* path : mvi::KernelPathList()) {
        if (path->isSupported()) paths.push_back(path);
    }
    return paths;
}

/// Calls check(path) on each; a failure says on which.
template <class Check>
void onEveryPath(Check check) {
    for (const mvi::KernelPath* path : supportedPaths()) {
        SCOPED_TRACE(path->name);
        check(*path);
    }
}

}  // namespace support
