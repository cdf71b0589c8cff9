// The band-pass filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/ring_filter.h>

namespace mvi {
class Ring;
}

/// Keeps the frequencies on a ring around DC and clears the others: 1 on the flat top, falling as
/// exp(-(distance - plateau)^2 / (2 sigma^2)) beyond it, 0 from about four sigmas on. A frequency
/// of 0 makes a low-pass filter.
///
/// Afterwards a square of 2 R - 1 coefficients a side around DC can be cleared, R being the DC
/// removal radius: 0 clears nothing, 1 DC alone. The square goes through element access, after the
/// buffer has been filtered: one that does not fit the plane ends in mvFrequencyDefs::BadCoord, a
/// buffer that an inverse has overwritten in mvFrequencyDefs::InvalidBuffer, and the buffer stays
/// filtered.
///
/// `apply(src, dst)` keeps dst's client transform and offset; its image size becomes the padded
/// size.
///
/// `==` holds for equal flags, parameters and profiles; filters without response are equal when
/// their flags are.
class MVFREQ_API mvFrequencyFilterBandPass : public mvRingFilter {
  public:
    /// A filter without response.
    mvFrequencyFilterBandPass();

    /// Builds the filter; throws what `set` throws.
    mvFrequencyFilterBandPass(double sigma, double plateau, double frequency,
                              const mvPair<long>& size, long dcRemovalRadius);
    explicit mvFrequencyFilterBandPass(const mvRingParameters& wanted);

    /// The radius of the DC removal square, 0 or more.
    long dcRemovalRadius() const { return parameters().dcRadius; }
    void dcRemovalRadius(long value) { dcRadius(value); }

    /// Compares as the description of the class says.
    bool operator==(const mvFrequencyFilterBandPass& other) const;

    [[nodiscard]] mvFrequencyFilter* clone() const override;
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override;
    void apply(mvFrequencyBuffer& buf) const override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;

    /// Exchanges the part of this class; version 0 alone is known.
    void serialize_(mvArchive& ar, unsigned char version) override;
    bool rejects() const override { return false; }

  private:
    void keepRing(mvi::Ring& ring, const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const;

    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
