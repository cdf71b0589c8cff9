// The band-pass filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/ring_filter.h>

namespace mvi {
class Ring;
}

/// Keeps the frequencies on a ring around DC and clears the others: 1 on the flat top, falling as
/// exp(-(distance - plateau)^2 / (2 sigma^2)) beyond it, 0 from a distance of
/// 4 sigma + plateau + 0.05 cycles per pixel on. A frequency of 0 makes a low-pass filter.
///
/// Afterwards the square around DC is cleared, R being the DC removal radius. This square, the form
/// between two buffers and `==` are those of mvResponseFilter.
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

    /// Exchanges the part of this class; only version 0 is known.
    void serialize_(mvArchive& ar, unsigned char version) override;
    bool rejects() const override { return false; }

  private:
    void keepRing(mvi::Ring& ring, const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const;

    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
