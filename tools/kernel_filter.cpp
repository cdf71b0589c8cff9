// Filters given as a picture.
#include "kernel_filter.h"

#include <algorithm>
#include <bit>

#include "failure.h"
#include "size_text.h"

namespace {

long wrapped(long position, long side) {
    return position < 0 ? position + side : position;
}

// The kernel with its centre on pel (0, 0), the rest wrapped around the plane's edges.
template <class T>
mvPelBuffer<double> centredOnOrigin(const mvPelBuffer<T>& kernel, mvPair<long> size) {
    mvPelBuffer<double> plane(size.x, size.y);
    for (long y = 0; y < kernel.height(); ++y) {
        double* row = plane.pointToRow(wrapped(y - kernel.height() / 2, size.y));
        for (long x = 0; x < kernel.width(); ++x) {
            row[wrapped(x - kernel.width() / 2, size.x)] = kernel.pel(x, y);
        }
    }
    return plane;
}

void divideBySum(mvPelBuffer<double>& plane, const std::string& path) {
    double sum = 0;
    for (long y = 0; y < plane.height(); ++y) {
        for (long x = 0; x < plane.width(); ++x) sum += plane.pel(x, y);
    }
    if (sum == 0) throw Failure(path + ": a kernel needs a pel that is not black");
    for (long y = 0; y < plane.height(); ++y) {
        for (long x = 0; x < plane.width(); ++x) plane.pointToRow(y)[x] /= sum;
    }
}

// The sides of planes end at 2048.
long planeSide(long kernel) {
    return static_cast<long>(std::bit_ceil(static_cast<unsigned long>(std::min(kernel, 2048l))));
}

}  // namespace

mvPair<long> Kernel::leastPlane() const {
    const auto plane = [](const auto& kernel) {
        const mv_PelBuffer& pels = kernel.first();
        return mvPair<long>(planeSide(pels.width()), planeSide(pels.height()));
    };
    return std::visit(plane, picture_);
}

std::unique_ptr<mvFrequencyFilter> Kernel::filter(mvPair<long> size) const {
    const auto laidOut = [&](const auto& picture) {
        const auto& kernel = picture.first();
        if (kernel.width() > size.x || kernel.height() > size.y) {
            throw Failure(path_ + ": a kernel of " + sizeText({kernel.width(), kernel.height()}) +
                          " does not fit a plane of " + sizeText(size));
        }
        return centredOnOrigin(kernel, size);
    };
    mvPelBuffer<double> plane = std::visit(laidOut, picture_);
    divideBySum(plane, path_);
    mvFrequencyBuffer response;
    mfForwardFFT(plane, response);
    return std::make_unique<mvFrequencyFilterImage>(response);
}
