// The peers of the two-dimensional transforms.
#pragma once

#include <filt/fft/internal/kernel.h>

#include "fftw.h"
#include "peer.h"

namespace bench {

/// @name Complex, forward; load and result: the whole plane.
/// The first of each library's works in place, or however else FFTW is asked to; the others go from
/// one plane to another and keep the first.
/// @{
std::unique_ptr<Peer> mvfreqComplex(Size size, const mvi::KernelPath& path);
std::unique_ptr<Peer> mvfreqComplexCopy(Size size);
void addFftwComplex(Peers& peers, Size size, const std::shared_ptr<const Fftw>& build,
                    FftwForm form);
void addFftwComplexTwoStep(Peers& peers, Size size, const std::shared_ptr<const Fftw>& build);
std::unique_ptr<Peer> kissfftComplex(Size size);
std::unique_ptr<Peer> opencvComplex(Size size);
std::unique_ptr<Peer> opencvComplexCopy(Size size);
std::unique_ptr<Peer> ffmpegComplex(Size size);
std::unique_ptr<Peer> ffmpegComplexCopy(Size size);
/// @}

/// @name Real, forward; load: one real a pel, result: columns 0 to W/2 of the plane.
/// @{
std::unique_ptr<Peer> mvfreqReal(Size size, const mvi::KernelPath& path);
void addFftwReal(Peers& peers, Size size, const std::shared_ptr<const Fftw>& build, FftwForm form);
void addFftwRealTwoStep(Peers& peers, Size size, const std::shared_ptr<const Fftw>& build);
std::unique_ptr<Peer> opencvReal(Size size);
std::unique_ptr<Peer> ffmpegReal(Size size);
/// @}

/// Complex, in place, inverse, of the rows rowLow .. rowHigh in shifted coordinates.
std::unique_ptr<Peer> mvfreqInverse(std::string name, Size size, long rowLow, long rowHigh);

/// Copies `bytes` bytes; with `toNewMemory` to memory that is allocated every time.
std::unique_ptr<Peer> copy(long bytes, bool toNewMemory = false);

}  // namespace bench
