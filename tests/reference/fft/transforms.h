// The transforms between images and spectra, step by step as they are defined.
#pragma once

#include <optional>

#include "reference/fft/image.h"
#include "reference/fft/plane.h"

namespace reference {

/// A complex plane with what the transforms know about the image it came from.
struct Spectrum {
    Plane plane;
    long imageWidth = 0;
    long imageHeight = 0;
    long x = 0;
    long y = 0;
    bool masked = false;
    long maskedMiny = 0;
    long maskedMaxy = 0;
    /// The plane holds spatial data: an inverse does not transform it again.
    bool inverseComputed = false;
};

/// An output: empty where the caller's pel buffer is not bound, else the caller's image.
template <class T>
using Output = std::optional<Image<T>>;

int paddedSize(long size);

/// One real image. Poll order: wrap copy, kernel.
template <class T>
Spectrum forward(const Image<T>& image, const Poll& poll = noPoll);

/// Real and imaginary part, equal in size and offset.
template <class T>
Spectrum forward(const Image<T>& real, const Image<T>& imaginary, const Poll& poll = noPoll);

/// The plane as it stands, all rows.
Spectrum forward(const Spectrum& src, const Poll& poll = noPoll);

/// Plane to plane, without the factor 1 / (W H); neither masked nor marked afterwards.
Spectrum inverse(const Spectrum& src, const Poll& poll = noPoll);

/// The plane after the inverse kernel, still unscaled; what was marked already stays as it is.
Spectrum spatial(const Spectrum& src, const Poll& poll = noPoll);

/// The routines below take a spectrum after `spatial`. Pels are scaled by 1 / (W H).
template <class T>
void magnitudeImage(const Spectrum& space, Output<T>& out, bool rescale, const Poll& poll = noPoll);
void realAndImaginaryImages(const Spectrum& space, Output<double>& real, Output<double>& imaginary,
                            const Poll& poll = noPoll);
void angleImage(const Spectrum& space, Output<double>& angle, const Poll& poll = noPoll);
void quadrantImage(const Spectrum& space, Output<unsigned char>& quadrant,
                   const Poll& poll = noPoll);

}  // namespace reference
