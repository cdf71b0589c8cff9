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
class MVFREQ_API mvFrequencyFilterGaborReject : public mvLobeFilter {
  public:
    /// A filter without response.
    mvFrequencyFilterGaborReject();

    /// Builds the filter; throws what `set` throws.
    mvFrequencyFilterGaborReject(const mvPair<double>& sigma, const mvPair<double>& plateau,
                                 mvRadian angle, double frequency, const mvPair<long>& size,
                                 long dcProtectionRadius);

    mvFrequencyFilterGaborReject(const mvFrequencyFilterGaborReject& other);
    mvFrequencyFilterGaborReject(mvFrequencyFilterGaborReject&& other) noexcept;

    /// Copies everything; from a filter without response only that is taken, and the flag and the
    /// parameters stay.
    mvFrequencyFilterGaborReject& operator=(const mvFrequencyFilterGaborReject& other);
    mvFrequencyFilterGaborReject& operator=(mvFrequencyFilterGaborReject&& other) noexcept;
    ~mvFrequencyFilterGaborReject() override;

    /// Equal flags, parameters and patches, a NaN being equal to anything; filters without response
    /// are equal when their flags are.
    bool operator==(const mvFrequencyFilterGaborReject& other) const;

    mvFrequencyFilter* clone() const override;

    /// Builds the filter for buffers of the padded size `size`.
    ///
    /// Throws, in this order and before anything changes, mvFrequencyDefs::InvalidArgument for a
    /// frequency outside 0.0 .. 0.5, a sigma that is not positive, a plateau below 0, a radius
    /// below 0; mvFrequencyDefs::InvalidSize for a width, then a height, that is no power of two;
    /// std::length_error for a patch that is too large.
    void set(const mvPair<double>& sigma, const mvPair<double>& plateau, mvRadian angle,
             double frequency, const mvPair<long>& size, long dcProtectionRadius);

    /// The radius of the DC protection square, 0 or more.
    long dcProtectionRadius() const { return parameters().dcRadius; }
    void dcProtectionRadius(long value) { dcRadius(value); }

    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override;
    void apply(mvFrequencyBuffer& buf) const override;

  protected:
    void serialize_(mvArchive& ar, unsigned char version) override;
    void dispatchSerialize(mvArchive& ar) override;

  private:
    void create(const mvLobeParameters& wanted) override;
    void rejectLobe(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const;

    static mvPersistent* make();
    static mv_Instantiator sExemplar;
};
