// The Gabor-reject filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/lobe_filter.h>

/// Suppresses the frequencies in one lobe and leaves the others as they are: the patch is 1 less
/// that of the Gabor filter.
///
/// A square of 2 R - 1 coefficients a side around DC, R being the DC protection radius, comes out
/// as it went in: 0 protects nothing, 1 DC alone. The square is read through element access before
/// anything changes: one that does not fit the plane ends in mvFrequencyDefs::BadCoord (or
/// std::length_error, when no list could hold it), a buffer that an inverse has overwritten in
/// mvFrequencyDefs::InvalidBuffer.
///
/// The band of rows of the filtered buffer is cleared. `apply(src, dst)` keeps dst's client
/// transform and offset; its image size becomes the padded size.
///
/// `==` holds for equal flags, parameters and patches, a NaN being equal to anything; filters
/// without response are equal when their flags are.
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

    /// Exchanges the part of this class; version 0 alone is known.
    void serialize_(mvArchive& ar, unsigned char version) override;
    bool rejects() const override { return true; }

  private:
    void rejectLobe(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const;

    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
