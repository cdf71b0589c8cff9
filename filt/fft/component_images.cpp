// The planes of real parts, imaginary parts, magnitudes and phases as images.
#include <filt/fft/frequency_buffer.h>
#include <internal/product.h>

#include <cmath>
#include <cstddef>

namespace {

template <class Component>
void convertRun(const float* elements, long count, double* pels, Component component) {
    for (long i = 0; i < count; ++i) pels[i] = component(elements[2 * i], elements[2 * i + 1]);
}

// Walks the plane in storage order; centred, the element (x, y) goes to the pel
// ((x + W/2) mod W, (y + H/2) mod H), so each row is two runs that change places.
template <class Component>
mvPelBuffer<double> componentImage(const float* plane, long width, long height, bool centred,
                                   Component component) {
    mvPelBuffer<double> image(width, height, 32);
    const long shiftX = centred ? width / 2 : 0;
    const long shiftY = centred ? height / 2 : 0;
    for (long y = 0; y < height; ++y) {
        const float* const row = plane + 2 * static_cast<std::ptrdiff_t>(width) * y;
        double* const pels =
            image.pointToRow(y < height - shiftY ? y + shiftY : y + shiftY - height);
        convertRun(row, width - shiftX, pels + shiftX, component);
        convertRun(row + 2 * (width - shiftX), shiftX, pels, component);
    }
    return image;
}

}  // namespace

mvPelBuffer<double> mvFrequencyBuffer::getRealImage(bool centred) const {
    requireFrequencies();
    return componentImage(data_, width_, height_, centred, [](float re, float) { return re; });
}

mvPelBuffer<double> mvFrequencyBuffer::getImaginaryImage(bool centred) const {
    requireFrequencies();
    return componentImage(data_, width_, height_, centred, [](float, float im) { return im; });
}

mvPelBuffer<double> mvFrequencyBuffer::getMagnitudeImage(bool centred) const {
    requireFrequencies();
    return componentImage(data_, width_, height_, centred, [](float re, float im) {
        return std::sqrt(mvi::product(re, re) + mvi::product(im, im));
    });
}

mvPelBuffer<double> mvFrequencyBuffer::getPhaseImage(bool centred) const {
    requireFrequencies();
    return componentImage(data_, width_, height_, centred, [](float re, float im) {
        const double angle = std::atan2(static_cast<double>(im), static_cast<double>(re));
        return mvRadian(angle).norm().toDouble();
    });
}
