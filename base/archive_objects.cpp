// Objects in archives, by reference and by pointer.
#include <base/archive.h>
#include <base/internal/archive_objects.h>
#include <base/internal/registry.h>

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace {

enum PointerTag : unsigned char { nullTag = 0, newTag = 1, referenceTag = 2 };

// One more object within an object, for as long as it lives.
class Nesting {
  public:
    explicit Nesting(int& depth) : depth_(depth) {
        if (depth >= mvArchive::maxDepth) {
            throw mvArchive::BadValue("The objects of the archive are nested too deep.");
        }
        ++depth;
    }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

  private:
    int& depth_;
};

// One dispatchSerialize serves both directions and is not const; storing only reads.
mvPersistent& stored(const mvPersistent& object) {
    return const_cast<mvPersistent&>(object);
}

}  // namespace

bool mvi::ArchiveObjects::visited(const Identity& identity, std::size_t size) const {
    const auto found = entries_.find(identity);
    if (found == entries_.end()) return false;
    const auto& sizes = found->second.visitedSizes;
    return std::find(sizes.begin(), sizes.end(), size) != sizes.end();
}

void mvi::ArchiveObjects::visit(const Identity& identity, std::size_t size) {
    if (!visited(identity, size)) entries_[identity].visitedSizes.push_back(size);
}

void mvi::ArchiveObjects::forgetVisits(const Identity& identity) {
    const auto found = entries_.find(identity);
    if (found != entries_.end()) found->second.visitedSizes.clear();
}

void mvi::ArchiveObjects::enter(const Identity& identity, mvPersistent& object) {
    Entry& entry = entries_[identity];
    if (entry.index) return;
    numbered_.push_back({identity, &object});
    entry.index = static_cast<unsigned long>(numbered_.size() - 1);
}

std::optional<unsigned long> mvi::ArchiveObjects::index(const Identity& identity) const {
    const auto found = entries_.find(identity);
    return found == entries_.end() ? std::nullopt : found->second.index;
}

mvPersistent* mvi::ArchiveObjects::object(unsigned long index) const {
    if (index >= numbered_.size() || numbered_[index].identity.expired()) return nullptr;
    return numbered_[index].object;
}

void mvArchive::exchangeObject(mvPersistent& object) {
    const Nesting nesting(depth_);
    exchangeContent(object);
}

void mvArchive::exchangeObject(const mvPersistent& object) {
    if (!isStoring()) throw BadValue("A const object cannot be loaded.");
    exchangeObject(stored(object));
}

void mvArchive::exchangeContent(mvPersistent& object) {
    objects_->enter(object.identity(), object);
    try {
        object.dispatchSerialize(*this);
    } catch (...) {
        objects_->forgetVisits(object.identity());
        throw;
    }
}

void mvArchive::storePointer(const mvPersistent* object) {
    if (!isStoring()) throw BadValue("An archive that is loading cannot store.");
    const auto known = object ? objects_->index(object->identity()) : std::nullopt;
    unsigned char tag = !object ? nullTag : (known ? referenceTag : newTag);
    if (tag == newTag) {
        const Nesting nesting(depth_);
        std::string name = mvi::registeredName(typeid(*object));
        *this || tag || name;
        exchangeContent(stored(*object));
        return;
    }
    *this || tag;
    if (unsigned long index = known.value_or(0); known) *this || index;
}

mvPersistent* mvArchive::loadPointer(std::unique_ptr<mvPersistent>& owner) {
    owner.reset();
    if (isStoring()) throw BadValue("An archive that is storing cannot load.");
    unsigned char tag = nullTag;
    *this || tag;
    switch (tag) {
        case nullTag:
            return nullptr;
        case newTag:
            owner = loadNew();
            return owner.get();
        case referenceTag:
            return loadReference();
        default:
            throw BadValue("A pointer of the archive is neither null nor an object.");
    }
}

std::unique_ptr<mvPersistent> mvArchive::loadNew() {
    const Nesting nesting(depth_);
    std::string name;
    *this || name;
    std::unique_ptr<mvPersistent> object = mvi::makeRegistered(name);
    exchangeContent(*object);
    return object;
}

mvPersistent* mvArchive::loadReference() {
    unsigned long index = 0;
    *this || index;
    mvPersistent* const object = objects_->object(index);
    if (!object) throw BadValue("The archive refers to an object that is not there.");
    return object;
}

mvArchive& operator||(mvArchive& ar, mvPersistent& object) {
    ar.exchangeObject(object);
    return ar;
}

mvArchive& operator||(mvArchive& ar, const mvPersistent& object) {
    ar.exchangeObject(object);
    return ar;
}

mvArchive& operator||(mvArchive& ar, mvPersistent*& object) {
    if (ar.isStoring()) {
        ar.storePointer(object);
        return ar;
    }
    std::unique_ptr<mvPersistent> owner;
    object = ar.loadPointer(owner);
    static_cast<void>(owner.release());
    return ar;
}
