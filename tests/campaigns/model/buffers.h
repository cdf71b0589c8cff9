// The life of a buffer in the model.
#pragma once

#include "campaigns/model/state.h"

namespace model {

/// Throw what the library says without data, and when an inverse has overwritten them.
void requireData(const Buffer& b);
void requireFrequencies(const Buffer& b);

/// Throws what transforms say of a plane that only an archive makes.
void requireTransformable(const Buffer& b);

/// Sizes the plane for an image; floats that were there stay.
void setAndAllocate(Buffer& b, long width, long height);

void assign(Buffer& b, const Buffer& src);
void move(Buffer& b, Buffer& src);
Buffer reduced(const Buffer& src, long width, long height);
Buffer complexPlane(const Image<double>& real, const Image<double>& imaginary, const Poll& poll);
bool isEqual(const Buffer& a, const Buffer& b);

/// The real part of an element, its imaginary part behind it; throws for coordinates outside.
float* element(Buffer& b, long x, long y, bool centred);

/// The plane as the reference's algorithms take it, and back.
reference::Plane planeOf(const Buffer& b);
void setPlane(Buffer& b, const reference::Plane& plane);
reference::Spectrum spectrumOf(const Buffer& b);

}  // namespace model
