// The image filter.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/filter.h>

/// Multiplies by any complex frequency image, for instance the spectrum of a kernel image: a
/// convolution.
///
/// `==` holds for equal flags and equal images, as frequency buffers compare. `apply(src, dst)`
/// makes `dst` a copy of `src` in every respect, multiplied and without band. A watcher is called
/// before every assignment and before an image is set, not before one is loaded or moved away.
///
/// Both forms of `apply` throw, in this order and before anything changes,
/// mvFrequencyDefs::Uninitialized for a source without data, the same for a filter without image,
/// mvFrequencyDefs::InvalidSize for a source of another padded size. When an inverse has
/// overwritten the source or the image, they throw mvFrequencyDefs::InvalidBuffer; `dst` is
/// assigned by then.
class MVFREQ_API mvFrequencyFilterImage : public mvFrequencyFilter {
  public:
    /// A filter without image.
    mvFrequencyFilterImage();

    /// Throws what `setImage` throws.
    explicit mvFrequencyFilterImage(const mvFrequencyBuffer& image);

    /// A copy has its own image; moving leaves the source without image.
    mvFrequencyFilterImage(const mvFrequencyFilterImage& other);
    mvFrequencyFilterImage(mvFrequencyFilterImage&& other) noexcept;

    /// Copies the flag and the image; from a filter without image that state is taken.
    mvFrequencyFilterImage& operator=(const mvFrequencyFilterImage& other);
    mvFrequencyFilterImage& operator=(mvFrequencyFilterImage&& other);
    ~mvFrequencyFilterImage() override;

    /// Takes a full copy of `image`. Throws mvFrequencyDefs::Uninitialized for an image without
    /// data and then changes nothing.
    void setImage(const mvFrequencyBuffer& image);

    /// The filter's own copy of the image; one without data when there is none.
    [[nodiscard]] const mvFrequencyBuffer& image() const noexcept { return image_; }
    [[nodiscard]] bool hasResponse() const override { return image_.hasData(); }

    /// The padded size of the image. Throws mvFrequencyDefs::Uninitialized when there is none.
    long supportWidth() const { return image_.width(); }
    long supportHeight() const { return image_.height(); }

    /// Compares as the description of the class says.
    bool operator==(const mvFrequencyFilterImage& other) const;

    [[nodiscard]] mvFrequencyFilter* clone() const override;
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override;
    void apply(mvFrequencyBuffer& buf) const override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;

    /// Exchanges the part of this class; only version 0 is known.
    void serialize_(mvArchive& ar, unsigned char version) override;

  private:
    friend struct mvi::FilterAccess;

    void create(const mvFrequencyBuffer& image);
    void requireApplicable(const mvFrequencyBuffer& buf) const;
    void multiply(mvFrequencyBuffer& buf) const;
    bool sameAs(const mvFrequencyFilterImage& other) const;
    void exchange(mvArchive& ar);

    static mvPersistent* make();
    static mv_Instantiator sExemplar;

    mvFrequencyBuffer image_;
};
