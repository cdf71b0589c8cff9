// The complex frequency image.
#pragma once

#include <filt/export.h>
#include <filt/fft/errors.h>
#include <filt/fft/float_array.h>
#include <filt/platform.h>

#include <cstdint>
#include <optional>

namespace mvi {
struct BufferAccess;
}

/// One complex, single-precision frequency image of W columns by H rows, both powers of two of at
/// most 2048.
///
/// It holds the whole plane, interleaved (real, imaginary) pairs in row-major order. Three
/// coordinate conventions are in use:
/// - *storage*: column and row of the plane; the zero frequency (DC) is element (0, 0), and the
///   negative frequencies stand in the upper half of columns and rows;
/// - *centred*: signed frequencies in bins, -W/2 .. W/2 - 1 and -H/2 .. H/2 - 1; a negative one
///   stands for column + W or row + H;
/// - *shifted*: DC moved to column W/2 and row H/2, as the centred component images show it.
///
/// A buffer remembers the size, offset and client transform of the image that it came from, so
/// that an inverse transform puts its result where the image was. It is in one of three states:
/// without data (`width()` and all access throw), with frequency data, or overwritten by an
/// in-place inverse transform (`width()` answers, element access throws) until it is filled again.
///
/// Buffers are values: a copy has its own plane. Distinct buffers may be used from several threads
/// at once; one buffer must not be changed while another thread uses it.
class MVFREQ_API mvFrequencyBuffer {
  public:
    /// A buffer without data.
    mvFrequencyBuffer();

    /// A plane of zeros for an image of `width` x `height` pels: each side is padded to the next
    /// power of two; sides below 1 give a padded side of 1. The transform is the identity.
    ///
    /// Throws mvFrequencyDefs::InvalidSize when a side is above 2048.
    mvFrequencyBuffer(long width, long height);

    /// A copy with its own plane; without data when `src` is.
    mvFrequencyBuffer(const mvFrequencyBuffer& src);

    /// Takes the plane of `src` and leaves it without data.
    mvFrequencyBuffer(mvFrequencyBuffer&& src) noexcept;

    /// The lowest `width` x `height` frequencies of `src`, copied without scaling: the spectrum of
    /// the image sized down. The image size shrinks by the same factors, truncated; a client
    /// transform is scaled by them; the offset stays; the band of rows is not taken over.
    ///
    /// Throws, in this order, mvFrequencyDefs::InvalidSize for a width below 2, for a height
    /// below 2; mvFrequencyDefs::Uninitialized for a source without data;
    /// mvFrequencyDefs::InvalidSize for a width, then a height, above the source's padded one, for
    /// a width, then a height, that is no power of two.
    mvFrequencyBuffer(const mvFrequencyBuffer& src, long width, long height);

    /// A complex plane from two images of one size and offset, doubles rounded to float; the
    /// padding is zero. This is spatial data until mfForwardFFT(buffer, buffer) transforms it.
    ///
    /// Throws, in this order, mvFrequencyDefs::UnboundWindow for `real`, then `imaginary`;
    /// mvFrequencyDefs::InvalidSize for heights, widths or offsets that differ and for a side
    /// above 2048; what a failing attention poll throws.
    mvFrequencyBuffer(const mvPelBuffer_const<double>& real,
                      const mvPelBuffer_const<double>& imaginary);

    ~mvFrequencyBuffer();

    /// Copies everything; from a buffer without data only that state is taken. The block is kept
    /// when the padded size stays the same.
    mvFrequencyBuffer& operator=(const mvFrequencyBuffer& src);

    /// Takes the plane of `src` and leaves it without data.
    mvFrequencyBuffer& operator=(mvFrequencyBuffer&& src) noexcept;

    /// Equal sizes, flags, band, offset and plane; the client transform is not compared. Floats
    /// differ only when one is less than the other: +0 equals -0, and a NaN equals anything.
    bool operator==(const mvFrequencyBuffer& other) const;

    /// The padded width W in columns. Throws mvFrequencyDefs::Uninitialized without data.
    long width() const;

    /// The padded height H in rows. Throws mvFrequencyDefs::Uninitialized without data.
    long height() const;

    /// Both, as filters need them: (W, H). Throws mvFrequencyDefs::Uninitialized without data.
    mvPair<long> size() const { return {width(), height()}; }

    /// @name State
    /// Nothing here throws.
    /// @{

    /// True when there is a plane.
    [[nodiscard]] bool hasData() const noexcept { return data_ != nullptr; }

    /// True when an in-place inverse has overwritten the frequencies.
    [[nodiscard]] bool inverseComputed() const noexcept { return hasData() && inverseComputed_; }

    /// Width, height, offset and client transform of the image that the plane came from: (0, 0),
    /// (0, 0) and none without data.
    [[nodiscard]] mvPair<long> imageSize() const noexcept;
    [[nodiscard]] mvPair<long> offset() const noexcept;
    [[nodiscard]] mv2XformCache xformCache() const noexcept;

    /// The first and the last of the rows that hold data, in shifted coordinates, in which DC is
    /// row H/2; they may lie outside of 0 .. H - 1. None when every row counts, or without data.
    ///
    /// A Gabor filter sets the band, and an inverse does not transform the rows outside of it: its
    /// result is right while these are zero. A sum has the band of one operand, so clear it before
    /// the inverse of a sum, or after writing rows outside of it.
    [[nodiscard]] std::optional<mvPair<long>> band() const noexcept;

    /// Lets every row count; the plane stays as it is.
    void clearBand() noexcept;
    /// @}

    /// @name Element access
    /// Column x and row y in storage coordinates, or in centred ones when `centred` is true. Values
    /// are widened from float, or rounded to float when written.
    ///
    /// All throw, in this order and before anything changes, mvFrequencyDefs::Uninitialized without
    /// data, mvFrequencyDefs::InvalidBuffer after an in-place inverse, mvFrequencyDefs::BadCoord
    /// outside the plane.
    /// @{
    /// The complex value (x real, y imaginary), or one part of it.
    mvPair<double> get(long x, long y, bool centred) const;
    double getReal(long x, long y, bool centred) const;
    double getImaginary(long x, long y, bool centred) const;

    /// Sets the complex value, or one part of it.
    void put(long x, long y, mvPair<double> value, bool centred);
    void putReal(long x, long y, double value, bool centred);
    void putImaginary(long x, long y, double value, bool centred);
    /// @}

    /// @name Component images
    /// New images of W x H pels, in storage coordinates, or in shifted ones when `centred` is true.
    /// Offset and transform are those of a new image.
    ///
    /// All throw mvFrequencyDefs::Uninitialized without data, then mvFrequencyDefs::InvalidBuffer
    /// after an in-place inverse.
    /// @{

    /// The real parts.
    mvPelBuffer<double> getRealImage(bool centred) const;

    /// The imaginary parts.
    mvPelBuffer<double> getImaginaryImage(bool centred) const;

    /// The magnitudes, linear, computed in single precision.
    mvPelBuffer<double> getMagnitudeImage(bool centred) const;

    /// The phases in radians, 0 <= phase < 2 pi, computed in double precision.
    mvPelBuffer<double> getPhaseImage(bool centred) const;
    /// @}

  private:
    friend struct mvi::BufferAccess;
    friend class mvFrequencyFilter;
    friend mvArchive& operator||(mvArchive& ar, mvFrequencyBuffer& buffer);

    float* data() const { return data_; }
    void setAndAllocate(long width, long height);

    long masked() const { return masked_; }
    void masked(long flag);
    long maskedMiny() const { return maskedMiny_; }
    void maskedMiny(long row);
    long maskedMaxy() const { return maskedMaxy_; }
    void maskedMaxy(long row);

    bool dropIfEmpty(const mvFrequencyBuffer& src) noexcept;
    void takeShape(const mvFrequencyBuffer& src);
    void allocatePlane(std::int32_t width, std::int32_t height);
    bool exchangeFields(mvArchive& ar, unsigned char version);
    void store(mvArchive& ar);
    void load(mvArchive& ar, unsigned char version);
    void requireData() const;
    void requireFrequencies() const;
    float* element(long x, long y, bool centred) const;

    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    std::int32_t imageWidth_ = 0;
    std::int32_t imageHeight_ = 0;
    std::int32_t masked_ = 0;
    std::int32_t maskedMiny_ = 0;
    std::int32_t maskedMaxy_ = 0;
    mv2XformCache xform_;
    mvPair<std::int32_t> offset_;
    mvFloatArray storage_;
    float* data_ = nullptr;
    bool inverseComputed_ = false;
};

// Behind the class: to a compiler for DLLs, a friend takes back what was said of a function before.

/// Stores the buffer in the archive or loads it, by the archive's direction.
///
/// Throws mvArchive::UnknownVersion for a version above 1 and leaves the buffer unchanged; any
/// later failure while loading leaves it without data. A plane that is said to be larger than the
/// largest is loaded only with all its floats (mvArchive::BadValue otherwise); a shorter array is
/// padded with zeros. Sides that are no powers of two load; transforms refuse them. A side of 0
/// makes a plane without elements, however long the other one is.
MVFREQ_API mvArchive& operator||(mvArchive& ar, mvFrequencyBuffer& buffer);

/// Stores a buffer that must not change. Throws mvArchive::BadValue when the archive is loading.
MVFREQ_API mvArchive& operator||(mvArchive& ar, const mvFrequencyBuffer& buffer);
