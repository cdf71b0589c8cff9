// Placement and the checks of buffers that an archive made.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>

namespace mvi {

namespace {

[[noreturn]] void throwSize() {
    throw mvFrequencyDefs::InvalidSize("Size must be a power of 2.");
}

bool isTransformable(long side) {
    return side <= BufferAccess::kLargestSide && isPowerOfTwo(side);
}

}  // namespace

void BufferAccess::setPlacement(mvFrequencyBuffer& b, const mv_PelBuffer& image) {
    const mvPair<long> offset = image.offset();
    b.xform_ = image.xformCache();
    b.offset_ = {hold32(offset.x), hold32(offset.y)};
}

void BufferAccess::requireTransformable(const mvFrequencyBuffer& b) {
    requireData(b);
    if (!isTransformable(b.width_) || !isTransformable(b.height_)) throwSize();
}

void BufferAccess::requireImageInPlane(const mvFrequencyBuffer& b) {
    if (b.imageWidth_ > b.width_ || b.imageHeight_ > b.height_) throwSize();
}

}  // namespace mvi
