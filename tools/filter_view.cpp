// The response of a filter as a picture.
#include "filter_view.h"

#include "axes.h"
#include "filter_archive.h"
#include "filter_gains.h"
#include "output_file.h"
#include "picture_output.h"

void viewFilter(const std::string& archive, const std::string& output, bool axes) {
    const mvFilterChain filters = loadFilters(archive);
    const mvPelBuffer<unsigned char> plane = gainPels(gainsOf(filters.list()));
    const mvPair<double> size(static_cast<double>(plane.width()),
                              static_cast<double>(plane.height()));
    OutputFiles outputs;
    writePicture(outputs.add(output), axes ? withAxes(plane, size) : plane);
    outputs.publish();
}
