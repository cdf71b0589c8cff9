// How far an image filter reaches.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/image_columns.h>
#include <filt/fft/internal/spatial_plane.h>
#include <filt/freqfilt/internal/image_reach.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace mvi {

namespace {

using Sums = std::vector<double>;

// The sums of the magnitudes in each column and in each row of a plane.
struct AxisSums {
    AxisSums(long width, long height)
        : columns(static_cast<std::size_t>(width)), rows(static_cast<std::size_t>(height)) {}

    void add(long x, long y, const float* elements, long count) {
        run.resize(static_cast<std::size_t>(count));
        bestKernelPath().pels<double>().fromMagnitudes(elements, count, 1.0f, run.data());
        double& row = rows[static_cast<std::size_t>(y)];
        auto column = columns.begin() + x;
        for (const double magnitude : run) {
            *column++ += magnitude;
            row += magnitude;
        }
    }

    Sums columns, rows;
    std::vector<double> run;
};

// The sums at the distances 0 to size / 2 from line 0, around the axis.
Sums byDistance(const Sums& lines) {
    Sums sums(lines.size() / 2 + 1);
    for (std::size_t i = 0; i < lines.size(); ++i) sums[std::min(i, lines.size() - i)] += lines[i];
    return sums;
}

// A comparison with a NaN ends the way inwards.
long reachOf(const Sums& lines, double total) {
    const Sums sums = byDistance(lines);
    double beyond = 0.0;
    std::size_t reach = sums.size() - 1;
    while (reach > 1 && beyond + sums[reach] <= total / 1024.0) beyond += sums[reach--];
    return std::max<long>(static_cast<long>(reach), 1);
}

}  // namespace

mvPair<long> reachOf(const mvFrequencyBuffer& image) {
    BufferAccess::requireTransformable(image);
    const long width = BufferAccess::width(image), height = BufferAccess::height(image);
    AxisSums sums(width, height);
    RunSink sink(height, [&](long x, long y, const float* elements, long count) {
        sums.add(x, y, elements, count);
    });
    visitSpatialPlane(image, width, sink);
    const double total = std::accumulate(sums.columns.begin(), sums.columns.end(), 0.0);
    return {reachOf(sums.columns, total), reachOf(sums.rows, total)};
}

}  // namespace mvi
