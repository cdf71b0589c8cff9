// What the library's objects and the model's have to say of each other.
#pragma once

#include <string>

#include "campaigns/model/library.h"
#include "campaigns/model/state.h"

namespace model {

/// The first difference, or an empty text. What the model leaves open it then takes over from the
/// library, if it is of the kinds that are allowed.
std::string compare(Library& library, World& world);

}  // namespace model
