// The filters of one picture call, as one.
#include <filt/fft/errors.h>
#include <filt/freqfilt/internal/filter_list.h>
#include <filt/freqfilt/internal/known_filters.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace mvi {

void requireFilters(FilterList filters) {
    using InvalidArgument = mvFrequencyDefs::InvalidArgument;
    if (filters.empty()) throw InvalidArgument("There must be at least one filter.");
    if (std::find(filters.begin(), filters.end(), nullptr) != filters.end()) {
        throw InvalidArgument("A filter of the list is missing.");
    }
}

std::optional<mvPair<long>> planeOf(FilterList filters) {
    std::optional<mvPair<long>> plane;
    bool isOne = true;
    for (const mvFrequencyFilter* filter : filters) {
        const std::optional<mvPair<long>> own = planeOf(*filter);
        if (!own) continue;
        isOne = isOne && *own == plane.value_or(*own);
        plane = own;
    }
    if (!isOne) throw mvFrequencyDefs::InvalidSize("All filters must be built for one plane.");
    return plane;
}

mvPair<long> reachOf(FilterList filters) {
    constexpr long kFarthest = std::numeric_limits<std::int32_t>::max();
    const auto isUnknown = [](const mvFrequencyFilter* filter) { return !planeOf(*filter); };
    if (std::any_of(filters.begin(), filters.end(), isUnknown)) return {};
    mvPair<long> sum;
    for (const mvFrequencyFilter* filter : filters) {
        const mvPair<long> reach = reachOf(*filter);
        // No sum goes beyond it on the way: a long has no more bits on some machines.
        sum.x += std::min(reach.x, kFarthest - sum.x);
        sum.y += std::min(reach.y, kFarthest - sum.y);
    }
    return sum;
}

}  // namespace mvi
