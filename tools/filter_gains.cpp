// What a filter lets through, as an image.
#include "filter_gains.h"

#include "grey_levels.h"

namespace {

mvFrequencyBuffer planeOfOnes(mvPair<long> size) {
    // The size may come from a file: too large a one is refused before two planes are made of it.
    static_cast<void>(mvFrequencyBuffer(size.x, size.y));
    mvPelBuffer<double> ones(size.x, size.y);
    mfPelSet(ones, 1.0);
    return {ones, mvPelBuffer<double>(size.x, size.y)};
}

}  // namespace

mvPelBuffer<double> gainsOf(mvFilterList filters) {
    mvFrequencyBuffer plane = planeOfOnes(mfFilterPlane(filters));
    for (const mvFrequencyFilter* filter : filters) filter->apply(plane);
    return plane.getMagnitudeImage(true);
}

mvPelBuffer<unsigned char> gainPels(const mvPelBuffer_const<double>& gains) {
    const double largest = magnitudeRange(gains, 100).high;
    return mfFrequencyMapImage(gains, mvFrequencyDefs::eMapRange, 0, largest);
}
