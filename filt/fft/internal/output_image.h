// Where the pels of a result go: into the caller's image or a new one.
#pragma once

#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/wrap_copy.h>
#include <filt/platform.h>

namespace mvi {

/// One output of an inverse transform or a phase image.
///
/// An unbound output of the caller becomes a new image of the buffer's image size, offset and
/// client transform; a bound one keeps its own and receives the pels where both overlap.
template <class T>
class OutputImage {
  public:
    OutputImage(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out)
        : offset_(BufferAccess::offset(buf)),
          xform_(BufferAccess::xform(buf)),
          out_(out),
          wasBound_(out.isBound()),
          target_(BufferAccess::imageWidth(buf), BufferAccess::imageHeight(buf), 32) {
        place(target_);
    }

    /// Where the pels are written, row by row.
    T* row(long y) { return target_.pointToRow(y); }

    /// Shows the image to a caller whose output was unbound.
    void bind() {
        if (!wasBound_) out_ = target_;
    }

    /// Places the pels as the wrap copy does, when the buffer has an offset.
    void wrap() {
        if (offset_ == mvPair<long>(0, 0)) return;
        mvPelBuffer<T> wrapped(target_.width(), target_.height(), 32);
        mf_WrapCopy(target_, wrapped, true);
        place(wrapped);
        target_ = wrapped;
        if (!wasBound_) out_ = wrapped;
    }

    /// Hands the pels to an output that was bound.
    void deliver() {
        if (wasBound_) mfPelCopy(target_, out_);
    }

    /// Gives the caller's image the buffer's client transform.
    void copyXformToOutput() { out_.copyXforms(xform_); }

  private:
    void place(mvPelBuffer<T>& image) const {
        image.offset(offset_);
        image.copyXforms(xform_);
    }

    mvPair<long> offset_;
    mv2XformCache xform_;
    mvPelBuffer<T>& out_;
    bool wasBound_;
    mvPelBuffer<T> target_;
};

}  // namespace mvi
