// Pictures that other filters are tried on.
#include "filtered_pictures.h"

std::vector<mvi::DoubleView> mvi::filtered(const std::vector<DoubleView>& pictures,
                                           const std::vector<mvFilterStep>& steps,
                                           mvPair<long> plane, mvPair<long> margin) {
    const mvFilterChain filters = mfBuildFilters(steps, plane);
    std::vector<DoubleView> results;
    for (const DoubleView& picture : pictures) {
        DoubleImage result;
        mfFilterImage(picture, filters.list(), result,
                      {.result = mvFilterResult::real, .margin = margin});
        results.emplace_back(result);
    }
    return results;
}
