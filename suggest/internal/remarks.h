// What should be known besides the proposals.
#pragma once

#include <string>
#include <vector>

#include "../suggest.h"

namespace mvi {

/// Sentences on what was found: radii that were left out, spots that cannot be seen, pictures that
/// are nothing but noise.
std::vector<std::string> remarksOn(const std::vector<mvSuggestion>& found,
                                   const mvSuggestOptions& options);

}  // namespace mvi
