// Persistent objects: identity, visited bookkeeping and watchers.
#include <base/archive.h>
#include <base/internal/archive_objects.h>
#include <base/persistence.h>

#include <utility>

mvPersistent::~mvPersistent() {
    delete identity_.load(std::memory_order_acquire);
}

void mvPersistent::watch(mvPersistent& object, std::function<void()> callback) {
    if (!callback) {
        object.watcher_.reset();
        return;
    }
    object.watcher_ = std::make_shared<const std::function<void()>>(std::move(callback));
}

void mvPersistent::dispatchSerialize(mvArchive&) {}

void mvPersistent::reInit() {}

void mvPersistent::loadSimple(mvArchive&) {}

void mvPersistent::mutating_() {
    // A copy keeps it alive while it runs: it may put another watcher in its own place.
    const auto watcher = watcher_;
    if (watcher) (*watcher)();
}

bool mvPersistent::haveVisited(mvArchive& ar, const mvPersistent* object, std::size_t size) {
    return object && ar.objects_->visited(object->identity(), size);
}

void mvPersistent::setVisited(mvArchive& ar, const mvPersistent* object, std::size_t size) {
    if (object) ar.objects_->visit(object->identity(), size);
}

const mvPersistent::Identity& mvPersistent::identity() const {
    const Identity* known = identity_.load(std::memory_order_acquire);
    if (known) return *known;
    auto fresh = std::make_unique<const Identity>(std::make_shared<char>());
    if (identity_.compare_exchange_strong(known, fresh.get(), std::memory_order_acq_rel)) {
        known = fresh.release();
    }
    return *known;
}

mvRepBase::~mvRepBase() = default;
