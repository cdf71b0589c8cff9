// A frequency buffer's plane and fields, as tests read and write them.
#pragma once

#include <filt/fft.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/freqfilt/filter.h>

#include <algorithm>

#include "reference/fft/plane.h"
#include "reference/fft/transforms.h"

namespace support {

/// Opens the helpers through which filters reach into a buffer.
struct BufferProbe : mvFrequencyFilter {
    using mvFrequencyFilter::getFrequencyBufferData;
    using mvFrequencyFilter::maskFrequencyBuffer;
    using mvFrequencyFilter::setAndAllocateFrequencyBuffer;
};

inline const float* dataOf(const mvFrequencyBuffer& buffer) {
    return BufferProbe::getFrequencyBufferData(buffer);
}

inline reference::Plane planeOf(const mvFrequencyBuffer& buffer) {
    reference::Plane plane(static_cast<int>(buffer.width()), static_cast<int>(buffer.height()));
    std::copy_n(dataOf(buffer), plane.floatCount(), plane.floats());
    return plane;
}

inline void setPlane(mvFrequencyBuffer& buffer, const reference::Plane& plane) {
    std::copy_n(plane.floats(), plane.floatCount(), BufferProbe::getFrequencyBufferData(buffer));
}

/// A buffer for an image that fills the plane.
inline mvFrequencyBuffer bufferOf(const reference::Plane& plane) {
    mvFrequencyBuffer buffer(plane.width, plane.height);
    setPlane(buffer, plane);
    return buffer;
}

/// The buffer with all that the transforms know about it, in the reference's terms.
inline reference::Spectrum spectrumOf(const mvFrequencyBuffer& buffer) {
    const mvPair<long> offset = mvi::BufferAccess::offset(buffer);
    return {.plane = planeOf(buffer),
            .imageWidth = mvi::BufferAccess::imageWidth(buffer),
            .imageHeight = mvi::BufferAccess::imageHeight(buffer),
            .x = offset.x,
            .y = offset.y,
            .masked = mvi::BufferAccess::masked(buffer) != 0,
            .maskedMiny = mvi::BufferAccess::maskedMiny(buffer),
            .maskedMaxy = mvi::BufferAccess::maskedMaxy(buffer),
            .inverseComputed = mvi::BufferAccess::inverseComputed(buffer)};
}

}  // namespace support
