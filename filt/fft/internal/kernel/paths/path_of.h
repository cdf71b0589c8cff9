// How a path is put together from the loops of one vector type.
#pragma once

#include <filt/fft/internal/kernel/paths/built_paths.h>
#include <filt/fft/internal/kernel/paths/passes.h>
#include <filt/fft/internal/kernel/paths/pel_runs.h>

namespace mvi {

/// The path with the lanes of the vector type V.
template <class V>
constexpr KernelPath pathOf(const char* name, bool (*isSupported)()) {
    using Passes = Passes<V>;
    using Runs = Runs<V>;
    return {Runs::template ofPels<unsigned char>(),
            Runs::template ofPels<unsigned short>(),
            Runs::template ofPels<double>(),
            name,
            isSupported,
            Passes::complexRows,
            Passes::realRows,
            Passes::complexColumns,
            Runs::mirrored,
            Runs::squareRange};
}

}  // namespace mvi
