// The Gabor-reject filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/lobe_filter.h>

/// Suppresses the frequencies in one lobe and leaves the others as they are: the patch is 1 less
/// that of the Gabor filter.
///
/// The square around DC comes out as it went in, R being the DC protection radius. This square, the
/// form between two buffers and `==` are those of mvResponseFilter. The filtered buffer has no band
/// of rows.
class MVFREQ_API mvFrequencyFilterGaborReject : public mvLobeFilter {
  public:
    /// A filter without response.
    mvFrequencyFilterGaborReject();

    /// Builds the filter; throws what `set` throws.
    mvFrequencyFilterGaborReject(const mvPair<double>& sigma, const mvPair<double>& plateau,
                                 mvRadian angle, double frequency, const mvPair<long>& size,
                                 long dcProtectionRadius);
    explicit mvFrequencyFilterGaborReject(const mvLobeParameters& wanted);

    /// The radius of the DC protection square, 0 or more.
    long dcProtectionRadius() const { return parameters().dcRadius; }
    void dcProtectionRadius(long value) { dcRadius(value); }

    /// Compares as the description of the class says.
    bool operator==(const mvFrequencyFilterGaborReject& other) const;

    [[nodiscard]] mvFrequencyFilter* clone() const override;
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override;
    void apply(mvFrequencyBuffer& buf) const override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;

    /// Exchanges the part of this class; only version 0 is known.
    void serialize_(mvArchive& ar, unsigned char version) override;
    bool rejects() const override { return true; }

  private:
    void rejectLobe(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const;

    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
