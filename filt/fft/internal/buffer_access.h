// What the engine and the arithmetic may do to a frequency buffer beyond its public interface.
#pragma once

#include <filt/fft/frequency_buffer.h>

#include <cstddef>

namespace mvi {

/// A view of a buffer's private fields.
struct BufferAccess {
    static constexpr long kLargestSide = 2048;

    /// Floats behind the plane: room to move its first one up to a 16-byte boundary.
    static constexpr std::size_t kSlackFloats = 7;

    static float* data(const mvFrequencyBuffer& b) { return b.data_; }
    static long width(const mvFrequencyBuffer& b) { return b.width_; }
    static long height(const mvFrequencyBuffer& b) { return b.height_; }
    static long imageWidth(const mvFrequencyBuffer& b) { return b.imageWidth_; }
    static long imageHeight(const mvFrequencyBuffer& b) { return b.imageHeight_; }
    static long masked(const mvFrequencyBuffer& b) { return b.masked(); }
    static long maskedMiny(const mvFrequencyBuffer& b) { return b.maskedMiny(); }
    static long maskedMaxy(const mvFrequencyBuffer& b) { return b.maskedMaxy(); }
    static bool inverseComputed(const mvFrequencyBuffer& b) { return b.inverseComputed_; }
    static const mv2XformCache& xform(const mvFrequencyBuffer& b) { return b.xform_; }
    static mvPair<long> offset(const mvFrequencyBuffer& b) { return {b.offset_.x, b.offset_.y}; }

    static std::size_t floats(const mvFrequencyBuffer& b) {
        return 2 * static_cast<std::size_t>(b.width_) * static_cast<std::size_t>(b.height_);
    }

    static void setAndAllocate(mvFrequencyBuffer& b, long width, long height) {
        b.setAndAllocate(width, height);
    }
    /// Assigns everything but the floats of `src`, which has data; `b` may be `src`.
    static void takeShape(mvFrequencyBuffer& b, const mvFrequencyBuffer& src) {
        if (&b != &src) b.takeShape(src);
    }
    static void setPlacement(mvFrequencyBuffer& b, const mv_PelBuffer& image);
    static void setMasked(mvFrequencyBuffer& b, long flag) { b.masked(flag); }
    static void setInverseComputed(mvFrequencyBuffer& b, bool flag) { b.inverseComputed_ = flag; }

    /// Throws mvFrequencyDefs::Uninitialized without data.
    static void requireData(const mvFrequencyBuffer& b) { b.requireData(); }

    /// Throws mvFrequencyDefs::Uninitialized without data, then mvFrequencyDefs::InvalidBuffer
    /// after an in-place inverse.
    static void requireFrequencies(const mvFrequencyBuffer& b) { b.requireFrequencies(); }

    /// Throws mvFrequencyDefs::Uninitialized without data, then mvFrequencyDefs::InvalidSize for
    /// sides that the kernel does not take; only an archive makes such a buffer.
    static void requireTransformable(const mvFrequencyBuffer& b);

    /// Throws mvFrequencyDefs::InvalidSize for an image that is larger than its plane; only an
    /// archive makes such a buffer.
    static void requireImageInPlane(const mvFrequencyBuffer& b);
};

}  // namespace mvi
