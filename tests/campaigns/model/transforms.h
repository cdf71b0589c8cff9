// The transforms in the model, check by check and poll by poll.
#pragma once

#include "campaigns/model/buffers.h"
#include "campaigns/model/images.h"

namespace model {

template <class T>
void forward(const Image<T>& image, Buffer& dst, const Poll& poll);
template <class T>
void forward(const Image<T>& real, const Image<T>& imaginary, Buffer& dst, const Poll& poll);
void forward(const Buffer& src, Buffer& dst, const Poll& poll);

void inverse(Buffer& src, Buffer& dst, bool destroy, const Poll& poll);
void inverse(Buffer& buf, Image<double>& real, Image<double>& imaginary, bool destroy,
             const Poll& poll);

/// Either of the two last images may be null.
template <class T>
void inverse(Buffer& buf, Image<T>& out, Image<double>* angle, Image<Byte>* quadrant, bool rescale,
             bool destroy, const Poll& poll);

void angleImage(const Buffer& buf, Image<double>& angle, const Poll& poll);
void quadrantImage(const Buffer& buf, Image<Byte>& quadrant, const Poll& poll);

}  // namespace model
