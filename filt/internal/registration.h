// Ties the registration to the code that needs it.
#pragma once

namespace mvi {

/// Does nothing. A static link takes from the library what is referred to; the constructor that all
/// errors go through refers to this, so that whoever uses the library has its classes registered.
void keepRegistration();

}  // namespace mvi
