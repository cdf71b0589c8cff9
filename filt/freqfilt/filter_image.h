// Picture in, picture out: filters applied to an image of any size.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/filter.h>
#include <filt/platform.h>

#include <initializer_list>
#include <span>

/// What stands around the image where a plane is larger: zeros, or the image's own mirror image.
///
/// Zeros make a bright picture end at a cliff, and filters answer to cliffs; the mirror has none.
enum class mvBorder { zero, mirror };

/// What comes out of each pel: the magnitude of the filtered value, or its real part with its sign.
enum class mvFilterResult { magnitude, real };

/// How mfFilterImage goes about a picture. The defaults suit photographs and camera frames.
struct mvFilterImageOptions {
    /// What stands around the image.
    mvBorder border = mvBorder::mirror;

    /// Real parts need an output of doubles.
    mvFilterResult result = mvFilterResult::magnitude;

    /// Spreads the magnitudes of the whole result over the whole range of an integer output, as the
    /// inverse transforms do.
    bool rescale = false;

    /// How many pels around a tile are filtered with it and then dropped, along x and along y; -1
    /// takes the reach of the filters, but at most a quarter of the plane.
    mvPair<long> margin{-1, -1};

    /// How many threads work on the tiles, the calling one included. The others end with the call.
    /// The number changes nothing in the result. There are never more threads than tiles, and fewer
    /// than asked for when the system gives no more.
    int threads = 1;
};

/// @name The picture call
/// T and U are `unsigned char`, `unsigned short` or `double` each.
/// @{

/// Makes `out` the filtered image: forward transform, filter and inverse transform in one call, for
/// images of any size and with the same bits as the three calls.
///
/// The filter's plane (mfFilterPlane) decides how an image is cut, along each axis by itself. Let n
/// be the side of the image and S that of the plane.
/// - *One plane.* Where the image fits, it lies in one plane, at position 0. With the border
///   `mirror` there must also be room for a margin at either end; the rest of the plane then fades
///   from the mirror image at the image's end into that at its begin. From n on, position i is the
///   blend of pel 2 n - 1 - i and pel S - 1 - i, the latter with the weight
///   (i - n + 0.5) / (S - n): first along x, then along y, then rounded to the nearest for integer
///   pels.
/// - *Tiles.* A longer image is cut into tiles of S less two margins. Each is filtered with the
///   image around it; beyond the image stand zeros, or its mirror image as often as needed, each
///   edge pel twice.
///
/// A filter class of the caller's own has no plane: along each axis the plane is the smallest power
/// of two that holds the image, with `mirror` and an eighth of it at either end, and there are no
/// tiles. Its `apply` in place is called once, on the calling thread.
///
/// Several filters are applied to a spectrum in their order before the way back:
/// `mfFilterImage(image, {&withoutWave, &band}, out)`. Calls one after the other would differ,
/// since magnitudes and rounded pels would lie between. All filters must be built for one plane,
/// and the reach of the list is the sum of their reaches. A filter of the caller's own goes with
/// the plane of the others: its `apply` is called for each tile, from any of the threads, and its
/// reach counts as a quarter of the plane. A list of one does what its filter does by itself.
///
/// `out` becomes an image of the input's size, offset and client transform when it is not bound.
/// When it is, it must have the input's size and keeps its own offset and transform; it may share
/// the input's pels, in whole or in part. No pel is wrapped around, whatever the offsets are.
///
/// Magnitudes and real parts are those of mfInverseFFT. The range that `rescale` spreads is that of
/// the whole result.
///
/// Throws, in this order and before anything changes:
/// - mvFrequencyDefs::UnboundWindow for an unbound image;
/// - mvFrequencyDefs::InvalidArgument for a list without filters, then for one with a null pointer;
/// - mvFrequencyDefs::Uninitialized for the first filter without response, with the text of its
///   `apply`;
/// - mvFrequencyDefs::InvalidSize for filters of several planes, then for a plane with a side above
///   2048, then for one with a side that is no power of two, which only an archive makes;
/// - mvFrequencyDefs::InvalidArgument for real parts and an integer output; for `rescale` and an
///   output of doubles; for a margin below -1, or one of half the plane and more along an axis that
///   is cut; for fewer than one thread;
/// - mvFrequencyDefs::InvalidSize for a bound output of another size.
///
/// Then what a failing poll throws, and what `apply` throws. The calling thread asks its attention
/// handler at least as often as the three calls would for the tiles that it works on; the first
/// tile is one of them. Other threads ask nothing. Whatever is thrown on any thread stops all of
/// them, and then leaves the call. An unbound output then stays unbound; pels of a bound one may
/// have been written.
///
/// Needs the memory of one tile for each thread; with `rescale` a float for each pel of the result;
/// a copy of the input when there are several tiles and the output shares its pels.
template <class T, class U>
MVFREQ_API void mfFilterImage(const mvPelBuffer_const<T>& image, const mvFrequencyFilter& filter,
                              mvPelBuffer<U>& out, const mvFilterImageOptions& options = {});
template <class T, class U>
MVFREQ_API void mfFilterImage(const mvPelBuffer_const<T>& image,
                              std::span<const mvFrequencyFilter* const> filters,
                              mvPelBuffer<U>& out, const mvFilterImageOptions& options = {});
template <class T, class U>
void mfFilterImage(const mvPelBuffer_const<T>& image,
                   std::initializer_list<const mvFrequencyFilter*> filters, mvPelBuffer<U>& out,
                   const mvFilterImageOptions& options = {}) {
    mfFilterImage(image, std::span(filters.begin(), filters.size()), out, options);
}

/// The padded size of the buffers that a filter, or each filter of a list, was built for; (0, 0)
/// for filter classes of the caller's own. Throws, in this order, mvFrequencyDefs::InvalidArgument
/// for a list without filters, or with a null pointer, mvFrequencyDefs::Uninitialized for a filter
/// without response, mvFrequencyDefs::InvalidSize for filters of several planes.
MVFREQ_API mvPair<long> mfFilterPlane(const mvFrequencyFilter& filter);
MVFREQ_API mvPair<long> mfFilterPlane(std::span<const mvFrequencyFilter* const> filters);
inline mvPair<long> mfFilterPlane(std::initializer_list<const mvFrequencyFilter*> filters) {
    return mfFilterPlane(std::span(filters.begin(), filters.size()));
}

/// How far a pel of the result depends on its surroundings, in pels along x and y: the margin that
/// tiles need so that no seam shows.
///
/// For rings ceil(2 / (pi sigma)) in both directions, four standard deviations of their envelope in
/// the image. For lobes of the sigmas s along and t across the angle a
/// ceil(2 / pi sqrt((cos a / s)^2 + (sin a / t)^2)) along x, sine and cosine exchanged along y. For
/// image filters the smallest distance from the origin beyond which the columns, or rows, of the
/// image's inverse transform hold at most 1/1024 of the sum of its magnitudes; this costs an
/// inverse transform at every call. At least 1 and at most 2^31 - 1; (0, 0) for a filter class of
/// the caller's own. For a list the sum of the reaches, at most 2^31 - 1; (0, 0) when one of the
/// filters is a class of the caller's own.
///
/// Throws, in this order, what mfFilterPlane throws, mvFrequencyDefs::InvalidSize for an image
/// filter whose plane no transform takes, what a failing poll of the inverse transform throws.
MVFREQ_API mvPair<long> mfFilterReach(const mvFrequencyFilter& filter);
MVFREQ_API mvPair<long> mfFilterReach(std::span<const mvFrequencyFilter* const> filters);
inline mvPair<long> mfFilterReach(std::initializer_list<const mvFrequencyFilter*> filters) {
    return mfFilterReach(std::span(filters.begin(), filters.size()));
}
/// @}
