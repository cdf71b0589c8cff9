// The Gabor filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/lobe_filter.h>

/// Keeps the frequencies in one lobe and clears the others: 1 on the flat top, a Gaussian beyond
/// it.
///
/// The filtered buffer is marked with the band of the rows that hold data, so that an inverse
/// transform skips the others in its first pass.
///
/// Afterwards the square around DC is cleared, R being the DC removal radius. This square, the form
/// between two buffers and `==` are those of mvResponseFilter.
class MVFREQ_API mvFrequencyFilterGabor : public mvLobeFilter {
  public:
    /// A filter without response.
    mvFrequencyFilterGabor();

    /// Builds the filter; throws what `set` throws.
    mvFrequencyFilterGabor(const mvPair<double>& sigma, const mvPair<double>& plateau,
                           mvRadian angle, double frequency, const mvPair<long>& size,
                           long dcRemovalRadius);
    explicit mvFrequencyFilterGabor(const mvLobeParameters& wanted);

    /// The radius of the DC removal square, 0 or more.
    long dcRemovalRadius() const { return parameters().dcRadius; }
    void dcRemovalRadius(long value) { dcRadius(value); }

    /// Compares as the description of the class says.
    bool operator==(const mvFrequencyFilterGabor& other) const;

    [[nodiscard]] mvFrequencyFilter* clone() const override;
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override;
    void apply(mvFrequencyBuffer& buf) const override;

    /// The patch row by row; null when there is none.
    using mvLobeFilter::data;

    /// Exchanges the part of this class; only version 0 is known.
    void serialize_(mvArchive& ar, unsigned char version) override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;
    bool rejects() const override { return false; }

  private:
    void keepLobe(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const;

    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
