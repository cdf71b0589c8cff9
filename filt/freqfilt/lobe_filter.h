// What the Gabor and the Gabor-reject filter have in common.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/response_filter.h>

/// What a lobe filter is built from. `sigma`, `plateau` (x along the lobe's direction, y across it)
/// and `frequency` are in cycles per pixel, `angle` in radians.
struct MVFREQ_API mvLobeParameters {
    mvPair<double> sigma;    ///< Gaussian widths, along and across
    mvPair<double> plateau;  ///< half-sizes of the flat top, along and across
    mvRadian angle;          ///< direction of the lobe from DC and turn of its axes
    double frequency = 0.0;  ///< distance of the lobe's centre from DC
    mvPair<long> size;       ///< padded size of the buffers to filter
    long dcRadius = 0;       ///< of the square around DC that is removed or protected

    /// Equal when all parameters are.
    friend bool operator==(const mvLobeParameters&, const mvLobeParameters&) = default;
};

extern template class mvResponseFilter<mvLobeParameters>;

/// A filter whose response is one turned elliptical Gaussian with a flat top.
///
/// The lobe's centre lies at the distance `frequency` from DC in the direction `angle`, x to the
/// right and y downwards; its axes are turned by the same angle. Lengths are in cycles per pixel of
/// the filter's width. There is no mirror lobe, so an image filtered with it is complex. Only a
/// patch of odd size around the centre is stored, its support.
///
/// Where the patch is laid, the centre is truncated toward DC; its last column is not used; what
/// falls outside the plane is dropped.
///
/// Getters and setters throw mvFrequencyDefs::Uninitialized while there is no response. A setter
/// with the stored value does nothing; any other builds the filter anew and throws what `set`
/// throws.
class MVFREQ_API mvLobeFilter : public mvResponseFilter<mvLobeParameters> {
  public:
    /// Builds the filter for buffers of the padded size `size`; `dcRadius` is that of the square
    /// around DC which is removed or protected.
    ///
    /// Throws, in this order and before anything changes, mvFrequencyDefs::InvalidArgument for a
    /// frequency outside 0.0 .. 0.5, a sigma that is not positive, a plateau below 0, a radius
    /// below 0; mvFrequencyDefs::InvalidSize for a width, then a height, that is no power of two;
    /// std::length_error for a patch that is too large.
    void set(const mvPair<double>& sigma, const mvPair<double>& plateau, mvRadian angle,
             double frequency, const mvPair<long>& size, long dcRadius);

    /// The same from named parameters.
    void set(const mvLobeParameters& wanted) { create(wanted); }

    /// The Gaussian widths in cycles per pixel, along and across, above 0.
    mvPair<double> sigma() { return parameters().sigma; }
    void sigma(const mvPair<double>& value);

    /// The half-sizes of the flat top in cycles per pixel, along and across, 0 or more.
    mvPair<double> plateau() { return parameters().plateau; }
    void plateau(const mvPair<double>& value);

    /// The direction of the lobe from DC and the turn of its axes.
    mvRadian angle() { return parameters().angle; }
    void angle(mvRadian value);

    /// The distance of the lobe's centre from DC in cycles per pixel, 0.0 to 0.5.
    double frequency() const { return parameters().frequency; }
    void frequency(double value);

    /// The padded size of the buffers that the filter is for.
    mvPair<long> size() { return parameters().size; }
    void size(const mvPair<long>& value);

    /// The columns and rows of the stored patch; odd.
    long supportWidth() const;
    long supportHeight() const;

  protected:
    // Through this base a filter would take the response of another class.
    mvLobeFilter() = default;
    mvLobeFilter(const mvLobeFilter&) = default;
    mvLobeFilter(mvLobeFilter&&) noexcept = default;
    mvLobeFilter& operator=(const mvLobeFilter&) = default;
    mvLobeFilter& operator=(mvLobeFilter&&) = default;

    void create(const mvLobeParameters& wanted) override;
    /// What the setter of the radius does, under whatever name it has.
    void dcRadius(long value);

    /// What `==` says.
    bool sameAs(const mvLobeFilter& other) const;

    /// Exchanges the parameters and the response.
    void exchange(mvArchive& ar);
};
