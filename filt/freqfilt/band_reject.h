// The band-reject filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/ring_filter.h>

/// Suppresses the frequencies on a ring around DC and leaves the others as they are: the profile is
/// 1 less that of the band-pass filter.
///
/// The square around DC comes out as it went in, R being the DC protection radius. This square, the
/// form between two buffers and `==` are those of mvResponseFilter, but for two things: a radius
/// whose square is larger than any list ends in std::length_error, and when the square is refused,
/// `dst` of the form between two buffers has its new size already and no band.
///
/// In place, coefficients inside the ring's outer and inner radius are multiplied; between two
/// buffers, those that have a gain in the profile. Both agree but for rounding at the edges.
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

    /// Exchanges the part of this class; only version 0 is known.
    void serialize_(mvArchive& ar, unsigned char version) override;
    bool rejects() const override { return true; }

  private:
    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
