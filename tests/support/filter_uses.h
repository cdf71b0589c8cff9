// The public operations upon filters.
#pragma once

#include <filt/freqfilt.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "support/store_again.h"

namespace archive {

/// A filter and a buffer of its size, both copies of their own.
template <class F>
struct Operands {
    F& filter;
    mvFrequencyBuffer& buffer;
};

/// One operation.
template <class F>
struct FilterUse {
    const char* name;
    void (*call)(Operands<F> o);
};

inline void expectSame(const std::string& record, const std::string& due) {
    EXPECT_EQ(record, due);
}

/// What all filters have.
template <class F>
inline constexpr FilterUse<F> kLife[] = {
    {"isInitialized", [](Operands<F> o) { static_cast<void>(o.filter.isInitialized()); }},
    {"hasResponse", [](Operands<F> o) { static_cast<void>(o.filter.hasResponse()); }},
    {"copy", [](Operands<F> o) { F{o.filter}; }},
    {"move", [](Operands<F> o) { F{std::move(o.filter)}; }},
    {"clone",
     [](Operands<F> o) { const std::unique_ptr<mvFrequencyFilter> clone(o.filter.clone()); }},
    {"assignment",
     [](Operands<F> o) {
         F other;
         other = o.filter;
         other = o.filter;
         if (o.filter.hasResponse()) expectSame(stored(other), stored(o.filter));
     }},
    {"moving assignment",
     [](Operands<F> o) {
         const bool isWhole = o.filter.hasResponse();
         const std::string bytes = stored(o.filter);
         F other;
         other = std::move(o.filter);
         if (isWhole) expectSame(stored(other), bytes);
     }},
    {"assignment from a filter without response", [](Operands<F> o) { o.filter = F(); }},
    {"comparison with a copy",
     [](Operands<F> o) {
         const F copy(o.filter);
         static_cast<void>(copy == o.filter);
     }},
    {"comparison with another", [](Operands<F> o) { static_cast<void>(F() == o.filter); }},
    {"storing", [](Operands<F> o) { stored(o.filter); }},
    {"storing and loading", [](Operands<F> o) { storeAgain(o.filter); }},
    {"loading into it",
     [](Operands<F> o) {
         F other;
         load(stored(other), o.filter);
     }},
    {"storing and loading by pointer",
     [](Operands<F> o) {
         mvPersistent* pointer = &o.filter;
         Loading loading(stored(pointer));
         mfLoad<F>(loading);
     }},
};

/// The ways to apply one.
template <class F>
inline constexpr FilterUse<F> kApplication[] = {
    {"application in place", [](Operands<F> o) { o.filter.apply(o.buffer); }},
    {"application",
     [](Operands<F> o) {
         mvFrequencyBuffer out;
         o.filter.apply(o.buffer, out);
     }},
    {"application to a buffer of another size",
     [](Operands<F> o) {
         mvFrequencyBuffer out(16, 2);
         o.filter.apply(o.buffer, out);
     }},
    {"application to the buffer itself", [](Operands<F> o) { o.filter.apply(o.buffer, o.buffer); }},
    {"application to the wrong buffer",
     [](Operands<F> o) {
         mvFrequencyBuffer other(16, 2);
         o.filter.apply(other);
     }},
    {"application, and back to an image",
     [](Operands<F> o) {
         mvPelBuffer<unsigned char> out;
         o.filter.apply(o.buffer);
         mfInverseFFT(o.buffer, out, true, true);
     }},
};

/// Filters a small picture of pels T into pels U.
template <class T, class U>
void filterPicture(const mvFrequencyFilter& filter, const mvFilterImageOptions& options) {
    const mvPelBuffer<T> picture(5, 3);
    mvPelBuffer<U> out;
    mfFilterImage<T, U>(picture, filter, out, options);
}

/// Pictures in, pictures out.
template <class F>
inline constexpr FilterUse<F> kPictures[] = {
    {"plane", [](Operands<F> o) { mfFilterPlane(o.filter); }},
    {"reach", [](Operands<F> o) { mfFilterReach(o.filter); }},
    {"picture", [](Operands<F> o) { filterPicture<unsigned char, unsigned char>(o.filter, {}); }},
    {"picture, rescaled",
     [](Operands<F> o) {
         filterPicture<double, unsigned short>(o.filter,
                                               {.border = mvBorder::zero, .rescale = true});
     }},
    {"real parts of a picture",
     [](Operands<F> o) {
         filterPicture<unsigned short, double>(o.filter,
                                               {.result = mvFilterResult::real, .margin = {0, 0}});
     }},
};

template <class F>
long radiusOf(F& filter) {
    if constexpr (requires { filter.dcRemovalRadius(); }) {
        return filter.dcRemovalRadius();
    } else {
        return filter.dcProtectionRadius();
    }
}

template <class F>
void setRadius(F& filter, long radius) {
    if constexpr (requires { filter.dcRemovalRadius(); }) {
        filter.dcRemovalRadius(radius);
    } else {
        filter.dcProtectionRadius(radius);
    }
}

/// What filters of parameters tell.
template <class F>
inline constexpr FilterUse<F> kGetters[] = {
    {"parameters", [](Operands<F> o) { static_cast<void>(o.filter.parameters()); }},
    {"frequency", [](Operands<F> o) { o.filter.frequency(); }},
    {"sigma", [](Operands<F> o) { o.filter.sigma(); }},
    {"plateau", [](Operands<F> o) { o.filter.plateau(); }},
    {"size", [](Operands<F> o) { o.filter.size(); }},
    {"radius", [](Operands<F> o) { radiusOf(o.filter); }},
    {"supportWidth", [](Operands<F> o) { o.filter.supportWidth(); }},
    {"supportHeight",
     [](Operands<F> o) {
         if constexpr (requires { o.filter.supportHeight(); }) o.filter.supportHeight();
     }},
    {"angle",
     [](Operands<F> o) {
         if constexpr (requires { o.filter.angle(); }) o.filter.angle();
     }},
    {"data",
     [](Operands<F> o) {
         if constexpr (requires { o.filter.data(); }) o.filter.data();
     }},
};

/// Builds a small response.
template <class F>
void setAll(F& filter) {
    if constexpr (std::is_base_of_v<mvRingFilter, F>) {
        filter.set(0.05, 0.02, 0.2, {16, 8}, 1);
    } else {
        filter.set({0.05, 0.04}, {0.02, 0.01}, mvRadian(0.5), 0.2, {16, 8}, 1);
    }
}

/// The same as an operation.
template <class F>
inline constexpr FilterUse<F> kBuilding[] = {
    {"set", [](Operands<F> o) { setAll(o.filter); }},
};

/// Setters; each builds a new response of the parameters that were loaded.
template <class F>
inline constexpr FilterUse<F> kSetters[] = {
    {"frequency, set", [](Operands<F> o) { o.filter.frequency(0.125); }},
    {"size, set",
     [](Operands<F> o) {
         o.filter.size({16, 16});
     }},
    {"radius, set", [](Operands<F> o) { setRadius(o.filter, 2); }},
    {"angle, set",
     [](Operands<F> o) {
         if constexpr (requires { o.filter.angle(); }) o.filter.angle(mvRadian(1.0));
     }},
};

/// What filters by an image have beside.
inline constexpr FilterUse<mvFrequencyFilterImage> kImageGetters[] = {
    {"supportWidth", [](Operands<mvFrequencyFilterImage> o) { o.filter.supportWidth(); }},
    {"supportHeight", [](Operands<mvFrequencyFilterImage> o) { o.filter.supportHeight(); }},
};
inline constexpr FilterUse<mvFrequencyFilterImage> kImageSetters[] = {
    {"setImage",
     [](Operands<mvFrequencyFilterImage> o) { o.filter.setImage(mvFrequencyBuffer(4, 4)); }},
    {"setImage with no data",
     [](Operands<mvFrequencyFilterImage> o) { o.filter.setImage(mvFrequencyBuffer()); }},
};

}  // namespace archive
