// The objects that one archive has met.
#pragma once

#include <base/persistence.h>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace mvi {

/// The objects that one archive has met, under their identities: an identity outlives its object
/// here as a weak pointer, so that it is never mistaken for that of a later object.
class ArchiveObjects {
  public:
    using Identity = std::shared_ptr<const void>;

    bool visited(const Identity& identity, std::size_t size) const;
    void visit(const Identity& identity, std::size_t size);

    /// Forgets what was visited of an object, after an exchange that failed.
    void forgetVisits(const Identity& identity);

    /// Gives the object the next index, if it has none.
    void enter(const Identity& identity, mvPersistent& object);

    std::optional<unsigned long> index(const Identity& identity) const;

    /// The object of an index; null when there was none or it was destroyed.
    mvPersistent* object(unsigned long index) const;

  private:
    using Weak = std::weak_ptr<const void>;
    struct Entry {
        std::optional<unsigned long> index;
        std::vector<std::size_t> visitedSizes;
    };
    struct Numbered {
        Weak identity;
        mvPersistent* object;
    };

    std::map<Weak, Entry, std::owner_less<>> entries_;
    std::vector<Numbered> numbered_;
};

}  // namespace mvi
