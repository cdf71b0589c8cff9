// The gains of a ring along a row.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <internal/product.h>
// Not <cmath>, which has inline functions: linkers keep one of each, whatever processor it is for.
#include <math.h>  // NOLINT(modernize-deprecated-headers)

namespace mvi {

/// Loops that are written for the compiler to vectorise; that they depend on the vector type V
/// keeps those of different instruction sets apart.
template <class V>
class RadialGains {
  public:
    /// As KernelPath::radialGains. Roots come in one loop, the table's gains in another.
    static void fill(const RadialProfile& profile, std::int64_t rowTerm, long begin, long end,
                     float* gains) {
        constexpr long kRun = 64;
        std::int64_t index[kRun];
        for (long first = begin; first < end; first += kRun) {
            const int count = static_cast<int>(end - first < kRun ? end - first : kRun);
            positions(profile, static_cast<double>(rowTerm), static_cast<int>(first), count, index);
            for (int i = 0; i < count; ++i) gains[first + i] = profile.gains[index[i]];
        }
    }

  private:
    // All beyond the profile finds the float behind its last gain: a zero, or what a loaded
    // response has there. A NaN finds the first gain.
    static void positions(const RadialProfile& profile, double rowTerm, int first, int count,
                          std::int64_t* index) {
        const double radius = profile.radius, perBin = profile.samplesPerBin;
        const auto last = static_cast<double>(profile.count);
        for (int i = 0; i < count; ++i) {
            const double x = first + i;
            const double position = ::fabs((::sqrt(product(x, x) + rowTerm) - radius) * perBin);
            const double found = position == position ? position : 0.0;
            index[i] = static_cast<std::int64_t>(found < last ? found : last);
        }
    }
};

}  // namespace mvi
