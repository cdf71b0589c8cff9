// What the picture call may know of a filter beyond its public interface.
#pragma once

#include <filt/freqfilt/image_filter.h>
#include <filt/freqfilt/lobe_filter.h>
#include <filt/freqfilt/ring_filter.h>

namespace mvi {

/// A view of the private parts of filters.
struct FilterAccess {
    /// What the response was built from; throws mvFrequencyDefs::Uninitialized without response.
    template <class P>
    static const P& parameters(const mvResponseFilter<P>& filter) {
        filter.response_.requireSet();
        return filter.parameters_;
    }

    template <class P>
    static const mvFilterResponse& response(const mvResponseFilter<P>& filter) {
        return filter.response_;
    }

    /// The frequency image, which may have no data.
    static const mvFrequencyBuffer& image(const mvFrequencyFilterImage& filter) {
        return filter.image_;
    }
};

}  // namespace mvi
