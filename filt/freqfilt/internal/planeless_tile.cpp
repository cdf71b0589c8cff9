// A tile by the way that needs no plane.
#include <filt/fft/internal/spatial_plane.h>
#include <filt/freqfilt/internal/planeless_tile.h>

#include <algorithm>
#include <type_traits>

namespace mvi {

namespace {

// Writes `count` columns of a panel of magnitudes, or of their squares.
template <class P>
void write(const KernelPath& path, const float* magnitudes, long count, float scale,
           const TileOutput<P>& out, P* to) {
    const float* row = magnitudes + path.lanes * out.from.y;
    if constexpr (std::is_same_v<P, float>) {
        for (long y = 0; y < out.size.y; ++y, row += path.lanes, to += out.step) {
            std::copy_n(row, count, to);
        }
    } else {
        path.pels<P>().scaled(row, out.size.y, count, scale, to, out.step);
    }
}

}  // namespace

template <class T>
template <class P>
void PlanelessTile<T>::compute(TileImage<T>& image, const TileOutput<P>& out) {
    plane_.template forward<T>(image.rows(), size_.x, [&](long y) {
        return image.row(y, rows_.data() + size_.x * (y % kMostLanes));
    });
    const float scale = inverseScale(size_);
    plane_.inverse({out.from.x, out.size.x}, out.result == TileResult::squares,
                   [&](long x, long count, const float* magnitudes) {
                       write(bestKernelPath(), magnitudes, count, scale, out,
                             out.first + (x - out.from.x));
                   });
}

#define MVFREQ_COMPUTE_OF(T)                                                                   \
    template void PlanelessTile<T>::compute(TileImage<T>&, const TileOutput<unsigned char>&);  \
    template void PlanelessTile<T>::compute(TileImage<T>&, const TileOutput<unsigned short>&); \
    template void PlanelessTile<T>::compute(TileImage<T>&, const TileOutput<double>&);         \
    template void PlanelessTile<T>::compute(TileImage<T>&, const TileOutput<float>&);

MVFREQ_COMPUTE_OF(unsigned char)
MVFREQ_COMPUTE_OF(unsigned short)
MVFREQ_COMPUTE_OF(double)
#undef MVFREQ_COMPUTE_OF

}  // namespace mvi
