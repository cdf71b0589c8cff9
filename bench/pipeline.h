// Image in, filter, image out: the whole of what an application does.
#pragma once

#include <filt/freqfilt.h>

#include <complex>
#include <memory>
#include <optional>

#include "fftw.h"
#include "pel_peer.h"

namespace bench {

/// Three rings that leave most of the plane empty, and one that reaches everywhere; one lobe; what
/// rejects these; a convolution by a small kernel.
enum class FilterKind {
    NarrowRing,
    StandardRing,
    WideRing,
    RingEverywhere,
    RingReject,
    Gabor,
    GaborReject,
    Image
};

/// What every library is asked for: magnitudes of the filtered image, in pels, padded with zeros to
/// powers of two.
struct Pipeline {
    Pipeline(FilterKind filterKind, Size imageSize);

    /// With a plane of this size, smaller than the image where that is cut into tiles.
    Pipeline(FilterKind filterKind, Size imageSize, Size plane);

    /// Columns of the plane.
    struct Columns {
        long first, count;
    };

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

    /// False when the filtered image is complex, since the filter keeps one lobe of two.
    bool leavesReals() const {
        return kind != FilterKind::Gabor && kind != FilterKind::GaborReject;
    }
    bool hasRealGains() const { return kind != FilterKind::Image; }

    /// Those of columns 0 to W/2 that the filter reaches. A filter that leaves reals does the same
    /// to the others; one that does not has them only where the others are empty.
    std::optional<Columns> columnsOfLeftHalf() const;
};

const char* nameOf(FilterKind kind);

/// @name This library: in one call, with tiles of this margin and on threads, and in the three
/// calls that it stands for
/// @{
template <class T>
std::unique_ptr<PelPeer<T>> mvfreqOneCall(const Pipeline& work);
std::unique_ptr<PelPeer<unsigned char>> mvfreqOfTiles(std::string name, const Pipeline& work,
                                                      long margin, int threads);
template <class T>
std::unique_ptr<PelPeer<T>> mvfreqThreeCalls(const Pipeline& work);
/// @}

/// FFTW over the whole plane: forward, the filter, inverse.
template <class T>
void addFftwPipelines(PelPeers<T>& peers, const Pipeline& work,
                      const std::shared_ptr<const Fftw>& build, FftwForm form);

/// FFTW pruned by hand: only rows of the image and columns that the filter reaches. Adds nothing
/// for filters with columns in both halves that are not each other's mirror images.
template <class T>
void addFftwPruned(PelPeers<T>& peers, const Pipeline& work,
                   const std::shared_ptr<const Fftw>& build);

template <class T>
std::unique_ptr<PelPeer<T>> opencvPipeline(const Pipeline& work);

/// Those of all libraries but this one, with plans from before.
template <class T>
void addPipelinesOfOthers(PelPeers<T>& peers, const Pipeline& work, const Settings& settings);

}  // namespace bench
