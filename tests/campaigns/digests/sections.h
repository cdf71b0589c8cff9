// Groups of cases with one digest each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace digest {

struct Section {
    std::string name;
    long cases;
    std::uint64_t digest;
};

/// One section for each path of the kernel that this processor has; their digests are equal.
std::vector<Section> kernelSections();

/// Forward and inverse transforms with their pel conversions and quadrants; arithmetic and
/// component images; maps without the logarithm; archived filters.
std::vector<Section> librarySections();

/// One section for each path that this processor has, of pictures that are filtered without a
/// plane; their digests are equal.
std::vector<Section> planelessSections();

/// The picture call.
std::vector<Section> pictureSections();

}  // namespace digest
