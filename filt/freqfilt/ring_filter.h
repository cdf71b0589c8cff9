// What the band-pass and the band-reject filter have in common.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/response_filter.h>

/// What a ring filter is built from. `frequency`, `sigma` and `plateau` are in cycles per pixel.
struct MVFREQ_API mvRingParameters {
    double sigma = 0.0;      ///< Gaussian width of the flanks
    double plateau = 0.0;    ///< half-width of the flat top
    double frequency = 0.0;  ///< radius of the ring
    mvPair<long> size;       ///< padded size of the buffers to filter
    long dcRadius = 0;       ///< of the square around DC that is removed or protected

    /// Equal when all parameters are.
    friend bool operator==(const mvRingParameters&, const mvRingParameters&) = default;
};

extern template class mvResponseFilter<mvRingParameters>;

/// A filter whose response depends only on the distance from a ring around DC.
///
/// The ring's radius is `frequency`; the response has a flat top of half-width `plateau` and
/// Gaussian flanks of width `sigma`, all in cycles per pixel of the filter's width. It is stored as
/// a radial profile, 32 gains per frequency bin, and ends 4 sigma + plateau + 0.05 from the
/// ring.
///
/// Getters and setters throw mvFrequencyDefs::Uninitialized while there is no response. A setter
/// with the stored value does nothing; any other builds the filter anew and throws what `set`
/// throws.
class MVFREQ_API mvRingFilter : public mvResponseFilter<mvRingParameters> {
  public:
    /// Builds the filter for buffers of the padded size `size`; `dcRadius` is that of the square
    /// around DC which is removed or protected.
    ///
    /// Throws, in this order and before anything changes, mvFrequencyDefs::InvalidArgument for a
    /// frequency outside 0.0 .. 0.5, a sigma that is not positive, a plateau or a radius below 0;
    /// mvFrequencyDefs::InvalidSize for a width, then a height, that is no power of two;
    /// std::length_error for a profile that is too long.
    void set(double sigma, double plateau, double frequency, const mvPair<long>& size,
             long dcRadius);

    /// The same from named parameters.
    void set(const mvRingParameters& wanted) { create(wanted); }

    /// The radius of the ring in cycles per pixel, 0.0 to 0.5.
    double frequency() const { return parameters().frequency; }
    void frequency(double value);

    /// The Gaussian width of the flanks in cycles per pixel, above 0.
    double sigma() const { return parameters().sigma; }
    void sigma(double value);

    /// The half-width of the flat top in cycles per pixel, 0 or more.
    double plateau() const { return parameters().plateau; }
    void plateau(double value);

    /// The padded size of the buffers that the filter is for.
    mvPair<long> size() const { return parameters().size; }
    void size(const mvPair<long>& value);

    /// The length of the profile in frequency bins; odd.
    long supportWidth() const;

  protected:
    // Through this base a filter would take the response of another class.
    mvRingFilter() = default;
    mvRingFilter(const mvRingFilter&) = default;
    mvRingFilter(mvRingFilter&&) noexcept = default;
    mvRingFilter& operator=(const mvRingFilter&) = default;
    mvRingFilter& operator=(mvRingFilter&&) = default;

    void create(const mvRingParameters& wanted) override;
    /// What the setter of the radius does, under whatever name it has.
    void dcRadius(long value);

    /// What `==` says.
    bool sameAs(const mvRingFilter& other) const;

    /// Exchanges the parameters and the response.
    void exchange(mvArchive& ar);
};
