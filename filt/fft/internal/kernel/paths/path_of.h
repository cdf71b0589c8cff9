// How a path is put together from the loops of one vector type.
#pragma once

#include <filt/fft/internal/kernel/paths/built_paths.h>
#include <filt/fft/internal/kernel/paths/column_passes.h>
#include <filt/fft/internal/kernel/paths/panel_passes.h>
#include <filt/fft/internal/kernel/paths/pel_runs.h>
#include <filt/fft/internal/kernel/paths/radial_gains.h>
#include <filt/fft/internal/kernel/paths/row_passes.h>
#include <filt/fft/internal/kernel/paths/strips.h>

namespace mvi {

/// The loops over pels of type T.
template <class V, class T>
constexpr PelRuns<T> pelRunsOf() {
    using Filtered = PanelPasses<V>;
    using Runs = Runs<V>;
    return {Runs::template toReals<T>,           Runs::template toElements<T>,
            Runs::template fromMagnitudes<T>,    Runs::template fromMagnitudesMapped<T>,
            Runs::template fromSquaresMapped<T>, Filtered::template pelsToPanels<T>};
}

/// The strips of results of type T.
template <class V, class T>
constexpr ColumnStrips<T> columnStripsOf() {
    return {PanelPasses<V>::template panelToStrip<T>, Strips<V>::template join<T>};
}

/// The path with the lanes of the vector type V.
template <class V>
constexpr KernelPath pathOf(const char* name, bool (*isSupported)()) {
    using Rows = RowPasses<V>;
    using Columns = ColumnPasses<V>;
    using Filtered = PanelPasses<V>;
    using Runs = Runs<V>;
    return {pelRunsOf<V, unsigned char>(),
            pelRunsOf<V, unsigned short>(),
            pelRunsOf<V, double>(),
            columnStripsOf<V, unsigned char>(),
            columnStripsOf<V, unsigned short>(),
            columnStripsOf<V, double>(),
            columnStripsOf<V, float>(),
            name,
            isSupported,
            V::kLanes,
            Rows::complexRows,
            Rows::realRows,
            Columns::complexColumns,
            Runs::mirrored,
            Runs::squareRange,
            Runs::squares,
            Runs::rangeOfSquares,
            RadialGains<V>::fill,
            Filtered::gainColumns,
            Filtered::complexRowsToPanels,
            Filtered::panelsToRows,
            Filtered::panelsToGainedRows,
            Filtered::panelsToProductRows};
}

}  // namespace mvi
