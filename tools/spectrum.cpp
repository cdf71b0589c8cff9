// The spectrum of a picture as a picture.
#include "spectrum.h"

#include <suggest/rounding.h>
#include <suggest/windowed_spectrum.h>

#include <algorithm>

#include "attention.h"
#include "axes.h"
#include "logarithmic_pels.h"
#include "output_file.h"
#include "picture_file.h"
#include "picture_output.h"

namespace {

using Magnitudes = mvPelBuffer<double>;

template <class T>
Magnitudes spectrumOf(const mvPelBuffer<T>& picture) {
    beginStage("transforming", windowedSpectrumPolls(picture));
    return windowedSpectrum(picture);
}

// The frequencies up to `most` on both axes, the zero one still in the middle.
Magnitudes middle(const Magnitudes& plane, double most) {
    const long side = plane.width();
    const long bins = std::max(mfNearestLong(most * static_cast<double>(side)), 1l);
    if (bins >= side / 2) return plane;
    return plane.window(side / 2 - bins, side / 2 - bins, 2 * bins + 1, 2 * bins + 1);
}

mvPelBuffer<unsigned char> enlarged(const mvPelBuffer<unsigned char>& image, long factor) {
    if (factor <= 1) return image;
    mvPelBuffer<unsigned char> large(image.width() * factor, image.height() * factor);
    for (long y = 0; y < large.height(); ++y) {
        const unsigned char* from = image.pointToRow(y / factor);
        unsigned char* to = large.pointToRow(y);
        for (long x = 0; x < large.width(); ++x) to[x] = from[x / factor];
    }
    return large;
}

}  // namespace

void writeSpectrum(const PictureFiles& files, const SpectrumOptions& options) {
    const Magnitudes plane =
        std::visit([](const auto& picture) { return spectrumOf(picture.first()); },
                   readPicture(files.input, {Channels::grey, files.maxPixels}));
    const Magnitudes part = middle(plane, options.maxFrequency);
    const long factor = plane.width() / part.width();
    const mvPelBuffer<unsigned char> shown = enlarged(logarithmicPels(part), factor);
    const auto pelsPerCycle = static_cast<double>(factor * plane.width());
    OutputFiles outputs;
    writePicture(outputs.add(files.output),
                 options.axes ? withAxes(shown, {pelsPerCycle, pelsPerCycle}) : shown);
    outputs.publish();
}
