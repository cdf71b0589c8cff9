// The types of pel that there are transforms for, and what a call with another one meets.
#pragma once

#include <filt/fft/frequency_buffer.h>
#include <filt/platform.h>

#include <type_traits>

/// True for the types of pel that images are transformed from and to: unsigned char, unsigned short
/// and double.
template <class T>
// NOLINTNEXTLINE(readability-identifier-naming): what callers may name begins with mv.
inline constexpr bool mvIsTransformPel =
    std::is_same_v<T, unsigned char> || std::is_same_v<T, unsigned short> ||
    std::is_same_v<T, double>;

namespace mvi {

/// Any other type of pel.
template <class T>
concept OtherPel = !mvIsTransformPel<T>;

/// Ends the translation of the calls below with a sentence; without it the linker would end it.
template <class T>
void refusePel() {
    static_assert(mvIsTransformPel<T>,
                  "Only images of unsigned char, unsigned short or double pels are transformed; "
                  "convert this one first.");
}

}  // namespace mvi

/// @name Other types of pel
/// Calls with them do not compile, and the message says why.
/// @{
template <mvi::OtherPel T>
void mfForwardFFT(const mvPelBuffer_const<T>&, mvFrequencyBuffer&) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfForwardFFT(const mvPelBuffer_const<T>&, const mvPelBuffer_const<T>&, mvFrequencyBuffer&) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfInverseFFT(mvFrequencyBuffer&, mvPelBuffer<T>&, bool, bool) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfInverseFFT(const mvFrequencyBuffer&, mvPelBuffer<T>&, bool) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfInverseFFTAngle(mvFrequencyBuffer&, mvPelBuffer<T>&, mvPelBuffer<double>&, bool, bool) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfInverseFFTAngle(const mvFrequencyBuffer&, mvPelBuffer<T>&, mvPelBuffer<double>&, bool) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfInverseFFTQuadrant(mvFrequencyBuffer&, mvPelBuffer<T>&, mvPelBuffer<unsigned char>&, bool,
                          bool) {
    mvi::refusePel<T>();
}
template <mvi::OtherPel T>
void mfInverseFFTQuadrant(const mvFrequencyBuffer&, mvPelBuffer<T>&, mvPelBuffer<unsigned char>&,
                          bool) {
    mvi::refusePel<T>();
}
/// @}
