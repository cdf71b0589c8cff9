// The filters in the model.
#pragma once

#include "campaigns/model/buffers.h"

namespace model {

inline constexpr const char* kNoFilter = "Uninitialized: FrequencyFilter has not been initialized";
inline constexpr const char* kOtherSize =
    "InvalidSize: Size of frequency buffer does not match size of filter.";

/// Throw what building from such parameters throws.
void validate(const reference::RingParameters& given, bool rejects);
void validate(const reference::LobeParameters& given, bool rejects);

template <class Response>
void assign(ParametricFilter<Response>& filter, const ParametricFilter<Response>& src) {
    if (&filter == &src) return;
    if (src.hasResponse) {
        filter.watcher.announce();
        filter = src;
    } else {
        filter.hasResponse = false;
    }
}

/// Moving takes the flag as well, if there is a response.
template <class Response>
void move(ParametricFilter<Response>& filter, ParametricFilter<Response>& src) {
    if (&filter == &src) return;
    assign(filter, src);
    if (src.hasResponse) src.isInitialized = false;
    src.hasResponse = false;
}

/// Image filters say that they change whatever is assigned.
void assign(ImageFilter& filter, const ImageFilter& src);
void move(ImageFilter& filter, ImageFilter& src);

/// The checks of both forms of `apply`.
template <class Response>
void requireApplicable(const ParametricFilter<Response>& filter, const Buffer& b) {
    requireData(b);
    if (!filter.hasResponse) throw Thrown{kNoFilter};
    const auto& given = filter.response.given;
    if (b.width != given.width || b.height != given.height) throw Thrown{kOtherSize};
}

/// Takes over what an algorithm of the reference made of the buffer.
void take(Buffer& b, const reference::Spectrum& spectrum);

void apply(const ImageFilter& filter, Buffer& b);
void apply(const ImageFilter& filter, const Buffer& src, Buffer& dst);

}  // namespace model
