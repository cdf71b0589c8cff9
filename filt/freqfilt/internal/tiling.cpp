// How an image is cut into tiles that fill a filter's plane.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/tiling.h>

namespace mvi {

bool needsTiles(long image, long plane, long margin, mvBorder border) {
    if (image > plane) return true;
    return border == mvBorder::mirror && margin > (plane - image) / 2;
}

AxisPlan planAxis(long image, long plane, long margin, mvBorder border) {
    if (!needsTiles(image, plane, margin, border)) return {image, plane, 0, image, false};
    return {image, plane, margin, plane - 2 * margin, true};
}

long planeFor(long image, mvBorder border) {
    const std::int64_t pels = image, room = border == mvBorder::mirror ? (pels + 7) / 8 : 0;
    return hold32(powerOfTwoAbove(pels + 2 * room));
}

}  // namespace mvi
