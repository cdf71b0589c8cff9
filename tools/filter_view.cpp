// The response of a filter as a picture.
#include "filter_view.h"

#include <filt/freqfilt.h>

#include <algorithm>

#include "axes.h"
#include "filter_archive.h"
#include "output_file.h"
#include "picture_output.h"

namespace {

mvFrequencyBuffer planeOfOnes(mvPair<long> size) {
    // The size comes from a file: too large a one is refused before two planes are made of it.
    static_cast<void>(mvFrequencyBuffer(size.x, size.y));
    mvPelBuffer<double> ones(size.x, size.y);
    mfPelSet(ones, 1.0);
    return {ones, mvPelBuffer<double>(size.x, size.y)};
}

// A plane of ones, filtered: the gains at their places, with all else that the filters do.
mvPelBuffer<double> gains(FilterList filters) {
    mvFrequencyBuffer plane = planeOfOnes(mfFilterPlane(filters));
    for (const mvFrequencyFilter* filter : filters) filter->apply(plane);
    return plane.getMagnitudeImage(true);
}

double largest(const mvPelBuffer<double>& image) {
    double most = 0;
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        most = std::max(most, *std::max_element(row, row + image.width()));
    }
    return most;
}

}  // namespace

void viewFilter(const std::string& archive, const std::string& output, bool axes) {
    const FilterChain filters = loadFilters(archive);
    const mvPelBuffer<double> response = gains(filters.list());
    const mvPelBuffer<unsigned char> plane =
        mfFrequencyMapImage(response, mvFrequencyDefs::eMapRange, 0, largest(response));
    const mvPair<double> size(static_cast<double>(plane.width()),
                              static_cast<double>(plane.height()));
    OutputFiles outputs;
    writePicture(outputs.add(output), axes ? withAxes(plane, size) : plane);
    outputs.publish();
}
