// The registry of persistent classes: which class an archive makes for a name.
#pragma once

#include <base/export.h>

#include <string>
#include <typeinfo>
#include <vector>

class mvPersistent;

/// Enters a class in the registry for as long as it lives. One static object for each persistent
/// class, initialised with the class's type and a function that makes a default object of it on
/// the heap:
///
///     mv_Instantiator Lens::sExemplar(typeid(Lens), &Lens::make);
///
/// The name of the class in archives is its qualified C++ name, such as
/// `mvFrequencyDefs::BadCoord`. Where the compiler offers no readable names, it is
/// std::type_info::name() without a leading "class " or "struct ". A class that is entered twice is
/// made by the first entry that is left. Entering, leaving and looking up are safe from several
/// threads. Running out of memory throws std::bad_alloc.
class MVBASE_API mv_Instantiator {
  public:
    /// Enters the class of `type`, whose objects `make` creates on the heap.
    mv_Instantiator(const std::type_info& type, mvPersistent* (*make)());
    /// Takes the entry out again, so that a library that is unloaded leaves no factory behind.
    ~mv_Instantiator();

    mv_Instantiator(const mv_Instantiator&) = delete;
    mv_Instantiator& operator=(const mv_Instantiator&) = delete;
};

/// The names of all registered classes, in the order in which they were registered.
MVBASE_API std::vector<std::string> mfRegisteredClasses();
