// The band-reject filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/ring_filter.h>

/// Suppresses the frequencies on a ring around DC and leaves the others as they are: the profile is
/// 1 less that of the band-pass filter.
///
/// A square of 2 R - 1 coefficients a side around DC, R being the DC protection radius, comes out
/// as it went in: 0 protects nothing, 1 DC alone. The square is read through element access before
/// anything is filtered: one that does not fit the plane ends in mvFrequencyDefs::BadCoord (or
/// std::length_error, when no list could hold it), a buffer that an inverse has overwritten in
/// mvFrequencyDefs::InvalidBuffer. In place the buffer is unchanged then; `dst` of the other form
/// has its size already and is unmasked.
///
/// In place, coefficients inside the ring's outer and inner radius are multiplied; between two
/// buffers, those that have a gain in the profile. Both agree but for rounding at the edges.
/// `apply(src, dst)` keeps dst's client transform and offset; its image size becomes the padded
/// size.
///
/// `==` holds for equal flags, parameters and profiles; filters without response are equal when
/// their flags are.
class MVFREQ_API mvFrequencyFilterBandReject : public mvRingFilter {
  public:
    /// A filter without response.
    mvFrequencyFilterBandReject();

    /// Builds the filter; throws what `set` throws.
    mvFrequencyFilterBandReject(double sigma, double plateau, double frequency,
                                const mvPair<long>& size, long dcProtectionRadius);
    explicit mvFrequencyFilterBandReject(const mvRingParameters& wanted);

    /// The radius of the DC protection square, 0 or more.
    long dcProtectionRadius() const { return parameters().dcRadius; }
    void dcProtectionRadius(long value) { dcRadius(value); }

    /// Compares as the description of the class says.
    bool operator==(const mvFrequencyFilterBandReject& other) const;

    [[nodiscard]] mvFrequencyFilter* clone() const override;
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override;
    void apply(mvFrequencyBuffer& buf) const override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;

    /// Exchanges the part of this class; version 0 alone is known.
    void serialize_(mvArchive& ar, unsigned char version) override;
    bool rejects() const override { return true; }

  private:
    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
