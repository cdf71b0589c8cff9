// Random pictures, and options of the picture call.
#pragma once

#include <filt/freqfilt.h>

#include <sstream>
#include <string>
#include <type_traits>

#include "support/pel_images.h"
#include "support/random_planes.h"

namespace cases {

/// Random pels; doubles are of the size of bytes, of both signs.
template <class T>
reference::Image<T> somePicture(long width, long height, unsigned seed) {
    reference::Image<T> image = support::randomImage<T>(width, height, seed);
    if constexpr (std::is_same_v<T, double>) {
        for (double& pel : image.pels) pel *= 200;
    }
    return image;
}

/// Options that the call takes for such an output.
template <class U>
mvFilterImageOptions someOptions(support::Random& random, mvPair<long> plane) {
    mvFilterImageOptions options;
    options.border = random.below(2) == 0 ? mvBorder::zero : mvBorder::mirror;
    if (std::is_same_v<U, double> && random.below(2) == 0) options.result = mvFilterResult::real;
    options.rescale = !std::is_same_v<U, double> && random.below(3) == 0;
    const auto margin = [&](long side) {
        return random.below(2) == 0
                   ? -1L
                   : static_cast<long>(random.below(static_cast<unsigned>(side + 1) / 2));
    };
    options.margin.x = margin(plane.x);
    options.margin.y = margin(plane.y);
    options.threads = 1 + static_cast<int>(random.below(4));
    return options;
}

/// Mostly short ones.
inline long someSide(support::Random& random) {
    return 1 + static_cast<long>(random.below(random.below(4) == 0 ? 64 : 20));
}

/// What failures say of a case.
inline std::string textOf(const mvFilterImageOptions& options) {
    std::ostringstream out;
    out << (options.border == mvBorder::zero ? "zero" : "mirror")
        << (options.result == mvFilterResult::real ? ", real" : "")
        << (options.rescale ? ", rescaled" : "") << ", margin (" << options.margin.x << ", "
        << options.margin.y << "), " << options.threads << " threads";
    return out.str();
}

}  // namespace cases
