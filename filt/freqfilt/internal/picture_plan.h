// What the picture call is checked for, and how its image is cut.
#pragma once

#include <filt/freqfilt/internal/filter_list.h>
#include <filt/freqfilt/internal/tiling.h>

namespace mvi {

/// The plan of a call, when all that is asked for can be done; throws otherwise, in the order that
/// mfFilterImage names. `givesDoubles`: whether the output has pels of that type.
TilePlan checkedPlan(const mv_PelBuffer& image, FilterList filters, const mv_PelBuffer& out,
                     bool givesDoubles, const mvFilterImageOptions& options);

}  // namespace mvi
