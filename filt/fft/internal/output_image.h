// Where the pels of a result go: into the caller's image or a new one.
#pragma once

#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/wrap_copy.h>
#include <filt/platform.h>

namespace mvi {

/// One output of an inverse transform or a phase image.
///
/// All its memory is taken when it is constructed: an inverse that overwrites its source does so
/// when nothing but an attention poll can fail any more.
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
          target_(BufferAccess::imageWidth(buf), BufferAccess::imageHeight(buf), 32) {
        place(target_);
        if (!(offset_ == mvPair<long>(0, 0))) {
            wrapped_ = mvPelBuffer<T>(target_.width(), target_.height(), 32);
        }
    }

    /// Where the pels are written, row by row.
    T* row(long y) { return target_.pointToRow(y); }

    /// Pels from one row to the next.
    std::ptrdiff_t step() const { return target_.rowUpdate(); }

    /// Shows the image to a caller whose output is unbound.
    void bind() {
        wasBound_ = out_.isBound();
        if (!wasBound_) out_ = target_;
    }

    /// Places the pels as the wrap copy does, when the buffer has an offset.
    void wrap() {
        if (!wrapped_.isBound()) return;
        mf_WrapCopy(target_, wrapped_, true);
        place(wrapped_);
        target_ = wrapped_;
        if (!wasBound_) out_ = wrapped_;
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
    bool wasBound_ = false;
    mvPelBuffer<T> target_;
    mvPelBuffer<T> wrapped_;
};

}  // namespace mvi
