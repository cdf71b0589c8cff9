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
    for (long y = 0; y < codes.height(); ++y)
        for (long x = 0; x < codes.width(); ++x) codes.pointToRow(y)[x] *= 85;
    return codes;
}

template <class T>
void filterPels(const mvPelBuffer<T>& picture, const FilterRun& run, const MakeFilter& makeFilter) {
    const std::unique_ptr<mvFrequencyFilter> filter = makeFilter(paddedSize(picture));

    mvFrequencyBuffer buffer;
    mfForwardFFT(withBorder(picture, run.border), buffer);
    filter->apply(buffer);
    mvPelBuffer<T> result;
    mfInverseFFT(buffer, result, run.rescale, true);

    OutputFiles files;
    writePicture(files.add(run.output), cropped(result, picture));
    if (!run.angleImage.empty())
        writePicture(files.add(run.angleImage), angleImage(buffer, picture));
    if (!run.quadrantImage.empty())
        writePicture(files.add(run.quadrantImage), quadrantImage(buffer, picture));
    if (!run.save.empty()) saveFilter(files.add(run.save), *filter);
    files.publish();
}

}  // namespace

void filterPicture(const FilterRun& run, const MakeFilter& makeFilter) {
    std::visit([&](const auto& picture) { filterPels(picture, run, makeFilter); },
               readPicture(run.input));
}
