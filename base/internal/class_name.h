// The readable name of a class.
#pragma once

#include <string>
#include <typeinfo>

namespace mvi {

/// The qualified C++ name of a type, such as `mvFrequencyDefs::BadCoord`.
std::string className(const std::type_info& type);

}  // namespace mvi
