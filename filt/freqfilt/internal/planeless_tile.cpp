// A tile by the way that needs no plane.
#include <filt/freqfilt/internal/planeless_tile.h>

namespace mvi {

template <class T>
template <class P>
void PlanelessTile<T>::compute(TileImage<T>& image, const PlaneOutput<P>& out) {
    plane_.template forward<T>(image.rows(), size_.x, [&](long y) {
        return image.row(y, rows_.data() + size_.x * (y % kMostLanes));
    });
    plane_.inverse(out);
}

#define MVFREQ_COMPUTE_OF(T)                                                                    \
    template void PlanelessTile<T>::compute(TileImage<T>&, const PlaneOutput<unsigned char>&);  \
    template void PlanelessTile<T>::compute(TileImage<T>&, const PlaneOutput<unsigned short>&); \
    template void PlanelessTile<T>::compute(TileImage<T>&, const PlaneOutput<double>&);         \
    template void PlanelessTile<T>::compute(TileImage<T>&, const PlaneOutput<float>&);

MVFREQ_COMPUTE_OF(unsigned char)
MVFREQ_COMPUTE_OF(unsigned short)
MVFREQ_COMPUTE_OF(double)
#undef MVFREQ_COMPUTE_OF

}  // namespace mvi
