// Clearing of what lies between the image and the padded plane.
#pragma once

namespace mvi {

/// Clears the columns from `imageWidth` on and the rows from `imageHeight` on of a plane of
/// `width` x `height` complex elements, after one attention poll.
void clearPadding(float* plane, long imageWidth, long imageHeight, long width, long height);

}  // namespace mvi
