// Forward and inverse transforms between images and frequency buffers.
#pragma once

#include <filt/export.h>
#include <filt/fft/frequency_buffer.h>
#include <filt/fft/transform_pels.h>  // IWYU pragma: export
#include <filt/platform.h>

/// @file
/// Forward transforms compute X(k) = sum of x(n) e^(-2 pi i k n / N) in each dimension, inverse
/// ones the same with e^(+2 pi i k n / N). The kernel never scales; pel outputs of the inverse
/// multiply by 1 / (W H), the inverse into a buffer does not.
///
/// All of them poll the calling thread's attention handler, before every 16 rows and every 64
/// columns that they transform; the conversion to pels that follows an inverse has one poll at its
/// begin.
///
/// What a call that fails leaves behind:
/// - A check that fails changes nothing.
/// - Memory that runs out (std::bad_alloc) changes no source and no image. A source that was to be
///   transformed in place keeps its plane and its state; all memory is taken before that.
/// - A poll that fails leaves images of the caller's as they were or with any pels; one that was
///   not bound may be bound. A source that is transformed in place is left partly or as a whole
///   transformed, and in its former state all the same: fill it again. Behind the place where an
///   inverse marks it as overwritten are only the polls of the copies that place magnitudes, or
///   quadrants beside doubles, of an image with an offset; after these it is marked, and another
///   inverse gives the pels.
/// - Both may leave a buffer that is a destination with a plane of the new size that is partly made
///   and counts as frequencies: fill it again. An inverse in place fills its destination last and
///   leaves it as it was.
///
/// Buffers with sides that are no powers of two, or above 2048, can come out of an archive; every
/// transform of one throws mvFrequencyDefs::InvalidSize, "Size must be a power of 2.", right after
/// the check for data. Pel outputs refuse in the same way a buffer whose image is larger than its
/// plane.

/// @name Forward
/// T is `unsigned char`, `unsigned short` or `double`; for any other type a call does not compile.
/// @{

/// The spectrum of an image taken as the real part. The image is padded with zeros to powers of
/// two; `dst` takes its size, offset and client transform, unmasked, and is resized as needed.
///
/// Throws, in this order, mvFrequencyDefs::UnboundWindow for an unbound image,
/// mvFrequencyDefs::InvalidSize for a side above 2048, what a failing poll throws.
template <class T>
MVFREQ_API void mfForwardFFT(const mvPelBuffer_const<T>& image, mvFrequencyBuffer& dst);

/// The spectrum of a complex image given as two images of one size and offset.
///
/// Throws, in this order, mvFrequencyDefs::UnboundWindow for `real`, then `imaginary`;
/// mvFrequencyDefs::InvalidSize for widths, heights or offsets that differ, for a side above 2048;
/// what a failing poll throws.
template <class T>
MVFREQ_API void mfForwardFFT(const mvPelBuffer_const<T>& real,
                             const mvPelBuffer_const<T>& imaginary, mvFrequencyBuffer& dst);

/// The spectrum of the complex plane that `src` holds, whatever state that plane is in. `src` and
/// `dst` may be one object.
///
/// Throws, in this order, mvFrequencyDefs::Uninitialized for a source without data,
/// mvFrequencyDefs::InvalidSize for a plane of unsupported size, what a failing poll throws.
MVFREQ_API void mfForwardFFT(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst);
/// @}

/// @name Inverse
///
/// Where `destroy` is true the caller's buffer is transformed in place and then holds spatial
/// data: its element access throws until it is filled again. A buffer in that state is not
/// transformed a second time. Otherwise the caller's buffer is left as it is, unless it is also the
/// destination: the one buffer is then transformed in place, and counts as frequency data.
///
/// An output that is not bound becomes a new image with the size, offset and client transform of
/// the source image. One that is bound keeps its own size and offset and receives the pels where
/// both overlap.
///
/// With an offset other than (0, 0) the result is laid into an image of the same size at the
/// origin as the wrap copy places it: a pel that falls outside at its own offset is tried again
/// one image width or height further right or down; pels that no copy covers are 0.
///
/// All throw, in this order, mvFrequencyDefs::Uninitialized without data,
/// mvFrequencyDefs::InvalidSize for an unsupported plane, what a failing poll throws. Pel outputs
/// of a buffer whose image size is below 1 throw an mvExceptionWithString before anything changes:
/// no pel buffer is empty.
/// @{

/// The unscaled complex plane: W H times the spatial signal, as a plain frequency buffer.
MVFREQ_API void mfInverseFFT(mvFrequencyBuffer& src, mvFrequencyBuffer& dst, bool destroy);
MVFREQ_API void mfInverseFFT(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst);

/// The scaled real and imaginary parts. Bound outputs receive the client transform, too.
MVFREQ_API void mfInverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<double>& real,
                             mvPelBuffer<double>& imaginary, bool destroy);
MVFREQ_API void mfInverseFFT(const mvFrequencyBuffer& buf, mvPelBuffer<double>& real,
                             mvPelBuffer<double>& imaginary);

/// The scaled magnitudes, for integer pels rounded half up and clamped to the pel range.
///
/// With `rescale` the range of magnitudes in the image is spread over the whole range of integer
/// pels; a constant image becomes 0. Double pels are never rescaled. The search for the least
/// magnitude begins at 1e20 as an unscaled square: a magnitude of 1e10 / (W H), 9537 on a plane of
/// 1024 x 1024. When every pel is brighter, that magnitude becomes 0, and none of the pels does.
/// Images of 8 bits are never so bright; those of 16 bits can be, on planes of 512 x 512 and more.
template <class T>
MVFREQ_API void mfInverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<T>& out, bool rescale,
                             bool destroy);
template <class T>
MVFREQ_API void mfInverseFFT(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out, bool rescale);

/// The magnitudes and the angles in radians, -pi to pi, of the spatial result.
template <class T>
MVFREQ_API void mfInverseFFTAngle(mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                                  mvPelBuffer<double>& angle, bool rescale, bool destroy);
template <class T>
MVFREQ_API void mfInverseFFTAngle(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                                  mvPelBuffer<double>& angle, bool rescale);

/// The magnitudes and the quadrant codes of the spatial result: bit 0 for a negative real part,
/// bit 1 for a negative imaginary part.
template <class T>
MVFREQ_API void mfInverseFFTQuadrant(mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                                     mvPelBuffer<unsigned char>& quadrant, bool rescale,
                                     bool destroy);
template <class T>
MVFREQ_API void mfInverseFFTQuadrant(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                                     mvPelBuffer<unsigned char>& quadrant, bool rescale);
/// @}

/// @name Phase of a plane
/// Over the image area of any buffer with data; called on frequency data they describe the
/// spectrum in storage order. Outputs are treated as those of the inverse transforms; a bound one
/// keeps its own client transform.
///
/// Both throw, in this order, mvFrequencyDefs::Uninitialized without data,
/// mvFrequencyDefs::InvalidSize for an image larger than its plane, what the one attention poll
/// throws, an mvExceptionWithString for an image size below 1.
/// @{

/// The angle of each element, atan2 of imaginary and real part in single precision, in radians,
/// -pi to pi.
MVFREQ_API void mf_ComputeAngleImage(const mvFrequencyBuffer& buf, mvPelBuffer<double>& angle);

/// The quadrant of each element: bit 0 for a negative real part, bit 1 for a negative imaginary
/// part; zeros and NaNs count as not negative.
MVFREQ_API void mf_ComputeQuadrantImage(const mvFrequencyBuffer& buf,
                                        mvPelBuffer<unsigned char>& quadrant);
/// @}

/// @name By pel type
/// What the templates above forward to; `angle` may be null.
/// @{
#define MVFREQ_TRANSFORMS_OF(Pel)                                                               \
    MVFREQ_API void mf_ForwardFFT(const mvPelBuffer_const<Pel>& image, mvFrequencyBuffer& dst); \
    MVFREQ_API void mf_ForwardFFT(const mvPelBuffer_const<Pel>& real,                           \
                                  const mvPelBuffer_const<Pel>& imaginary,                      \
                                  mvFrequencyBuffer& dst);                                      \
    MVFREQ_API void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<Pel>& out,                \
                                  mvPelBuffer<double>* angle, bool rescale, bool destroy);      \
    MVFREQ_API void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<Pel>& out,                \
                                  mvPelBuffer<unsigned char>& quadrant, bool rescale,           \
                                  bool destroy);

MVFREQ_TRANSFORMS_OF(unsigned char)
MVFREQ_TRANSFORMS_OF(unsigned short)
MVFREQ_TRANSFORMS_OF(double)
#undef MVFREQ_TRANSFORMS_OF
/// @}
