// Image in, filter, image out: the whole of what an application does.
#pragma once

#include <filt/freqfilt.h>

#include <complex>
#include <memory>

#include "fftw.h"
#include "peer.h"

namespace bench {

enum class FilterKind { BandPass, Gabor, Image };

/// What every library is asked for: magnitudes of the filtered image, in pels, padded with zeros to
/// powers of two.
struct Pipeline {
    Pipeline(FilterKind filterKind, Size imageSize);

    FilterKind kind;
    Size image;
    Size padded;
    std::shared_ptr<const mvFrequencyFilter> filter;
    /// The filter's value at each element of the padded plane, by rows.
    std::vector<std::complex<float>> response;
    /// True for each row of the plane that holds values other than zero.
    std::vector<bool> rowHasData;

    std::complex<float> at(long x, long y) const {
        return response[static_cast<std::size_t>(y * padded.width + x)];
    }
};

const char* nameOf(FilterKind kind);

/// Load and result of all: one value a pel. T is the pel type.
/// @{
template <class T>
std::unique_ptr<Peer> mvfreqPipeline(const Pipeline& work);
template <class T>
void addFftwPipelines(Peers& peers, const Pipeline& work, const std::shared_ptr<const Fftw>& build);
template <class T>
std::unique_ptr<Peer> opencvPipeline(const Pipeline& work);
/// @}

}  // namespace bench
