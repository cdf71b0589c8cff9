// Periodic placement of one image in another.
#pragma once

#include <filt/fft/internal/attention.h>
#include <filt/platform.h>

#include <algorithm>

/// Copies the pels of `src` into `dst` where they overlap, after one attention poll, in four turns:
/// moved by one period to the left and up, up, to the left, and not at all (`negate`: right and
/// down). A period is the larger of both widths by the larger of both heights.
template <class T>
void mf_WrapCopy(const mvPelBuffer_const<T>& src, mvPelBuffer<T>& dst, bool negate) {
    mvi::pollAttention();
    const mvPair<long> offset = src.offset();
    const long sign = negate ? -1 : 1;
    const long periodX = sign * std::max(dst.width(), src.width());
    const long periodY = sign * std::max(dst.height(), src.height());
    mvPelBuffer_const<T> view(src);
    for (const long dy : {periodY, 0L}) {
        for (const long dx : {periodX, 0L}) {
            view.offset(offset.x - dx, offset.y - dy);
            mfPelCopy(view, dst);
        }
    }
}
