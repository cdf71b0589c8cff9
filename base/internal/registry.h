// What archives ask the registry of persistent classes.
#pragma once

#include <base/persistence.h>

#include <memory>
#include <string>
#include <typeinfo>

namespace mvi {

/// The registered name of a class; throws mvArchive::UnknownClass when it is not registered.
std::string registeredName(const std::type_info& type);

/// A new default object of the class registered under `name`; throws mvArchive::UnknownClass when
/// there is none, and std::bad_alloc when its factory returns null.
std::unique_ptr<mvPersistent> makeRegistered(const std::string& name);

}  // namespace mvi
