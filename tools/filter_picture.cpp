// A picture through a filter and back.
#include "filter_picture.h"

#include "filter_archive.h"
#include "output_file.h"
#include "png_picture.h"

namespace {

// The part of the plane that shows the picture.
template <class T>
mvPelBuffer<T> cropped(const mvPelBuffer<T>& plane, const mv_PelBuffer& picture) {
    return plane.window(0, 0, picture.width(), picture.height());
}

mvPelBuffer<unsigned char> angleImage(const mvFrequencyBuffer& spatial,
                                      const mv_PelBuffer& picture) {
    mvPelBuffer<double> angle;
    mf_ComputeAngleImage(spatial, angle);
    return mfFrequencyMapImage(cropped(angle, picture), mvFrequencyDefs::eMapAngle, 0, 0);
}

// The codes 0 .. 3 as four grey levels that can be told apart: 0, 85, 170 and 255.
mvPelBuffer<unsigned char> quadrantImage(const mvFrequencyBuffer& spatial,
                                         const mv_PelBuffer& picture) {
    mvPelBuffer<unsigned char> codes;
    mf_ComputeQuadrantImage(spatial, codes);
    codes = cropped(codes, picture);
    for (long y = 0; y < codes.height(); ++y) {
        for (long x = 0; x < codes.width(); ++x) codes.pointToRow(y)[x] *= 85;
    }
    return codes;
}

template <class T>
void filterPels(const mvPelBuffer<T>& picture, const PictureFiles& files,
                const FilterOptions& options, SharedFilters& filters) {
    const mvFrequencyFilter& filter = filters.get(paddedSize(picture), files.input);

    mvFrequencyBuffer buffer;
    mfForwardFFT(withBorder(picture, options.border), buffer);
    filter.apply(buffer);
    mvPelBuffer<T> result;
    mfInverseFFT(buffer, result, options.rescale, true);

    OutputFiles outputs;
    writePicture(outputs.add(files.output), cropped(result, picture));
    if (!options.angleImage.empty()) {
        writePicture(outputs.add(options.angleImage), angleImage(buffer, picture));
    }
    if (!options.quadrantImage.empty()) {
        writePicture(outputs.add(options.quadrantImage), quadrantImage(buffer, picture));
    }
    if (!options.save.empty()) saveFilter(outputs.add(options.save), filter);
    outputs.publish();
}

}  // namespace

void filterPicture(const PictureFiles& files, const FilterOptions& options,
                   SharedFilters& filters) {
    std::visit([&](const auto& picture) { filterPels(picture, files, options, filters); },
               readPicture(files.input));
}
