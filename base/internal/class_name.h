// The readable name of a class.
#pragma once

#include <string>
#include <typeinfo>

/// The qualified C++ name of a type, such as `mvFrequencyDefs::BadCoord`.
std::string mv_className(const std::type_info& type);
