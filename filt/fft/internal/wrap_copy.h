// Periodic placement of one image in another.
#pragma once

#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/integers.h>
#include <filt/platform.h>

#include <algorithm>
#include <cstdint>

/// Copies the pels of `src` into `dst` where they overlap, after one attention poll, in four turns:
/// moved by one period to the left and up, up, to the left, and not at all (`negate`: right and
/// down). A period is the larger of both widths by the larger of both heights.
template <class T>
void mf_WrapCopy(const mvPelBuffer_const<T>& src, mvPelBuffer<T>& dst, bool negate) {
    mvi::pollAttention();
    const mvPair<long> offset = src.offset();
    const std::int64_t sign = negate ? -1 : 1;
    const std::int64_t periodX = sign * std::max(dst.width(), src.width());
    const std::int64_t periodY = sign * std::max(dst.height(), src.height());
    mvPelBuffer_const<T> view(src);
    for (const std::int64_t dy : {periodY, std::int64_t{0}}) {
        for (const std::int64_t dx : {periodX, std::int64_t{0}}) {
            view.offset(mvi::hold32(offset.x - dx), mvi::hold32(offset.y - dy));
            mfPelCopy(view, dst);
        }
    }
}
