// The base of every object that can be written to an archive and read back.
#pragma once

#include <base/export.h>
#include <base/registry.h>  // IWYU pragma: export

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>

class mvArchive;

/// An object that archives know. A class that derives from it overrides `dispatchSerialize`:
///
///     void Lens::dispatchSerialize(mvArchive& ar) {
///         if (haveVisited(ar, this, sizeof(Lens))) return;
///         unsigned char version = 0;
///         ar || version || focus_;
///         setVisited(ar, this, sizeof(Lens));
///     }
///
/// Each object has an identity of its own, which dies with it. Copies, moves and assignments carry
/// over neither the identity nor the tracking flag nor the watcher: the target keeps what it had.
/// Derive virtually where an object could otherwise hold two such parts.
class MVBASE_API mvPersistent {
  public:
    mvPersistent() noexcept = default;
    mvPersistent(const mvPersistent&) noexcept {}
    mvPersistent& operator=(const mvPersistent&) noexcept { return *this; }
    virtual ~mvPersistent();

    /// Installs `callback` as the watcher of `object` and sets the tracking flag. The object calls
    /// it before each change that its class announces; the class lists these. One object has one
    /// watcher: a new one replaces the former, an empty one removes it and clears the flag. A
    /// callback that throws keeps the change from being made. It may call `watch` for the object it
    /// watches, but not change it.
    static void watch(mvPersistent& object, std::function<void()> callback);

  protected:
    /// Exchanges what the object holds with the archive, storing or loading by its mode. This part
    /// holds nothing.
    virtual void dispatchSerialize(mvArchive& ar);

    /// A hook for classes that can bring themselves back to their default state. Does nothing here
    /// and is not called by the base library.
    virtual void reInit();

    /// A hook for classes that can also be loaded from a simpler record. Does nothing here and is
    /// not called by the base library.
    virtual void loadSimple(mvArchive& ar);

    /// To be called by an object before it changes: calls the watcher, if the tracking flag is set.
    void mutating_();

    /// The tracking flag: true while the object has a watcher.
    bool tracking_() const noexcept { return watcher_ != nullptr; }

    /// True when `setVisited` was called for this archive, this very object and this size. The size
    /// stands for a part of the object: pass that of the class whose function runs. An object at
    /// the address of a destroyed one is another object. Null is never visited.
    static bool haveVisited(mvArchive& ar, const mvPersistent* object, std::size_t size);

    /// Notes the part of that size of `object` as handled in this archive. Null is ignored.
    static void setVisited(mvArchive& ar, const mvPersistent* object, std::size_t size);

  private:
    friend class mvArchive;
    using Identity = std::shared_ptr<const void>;

    // Made on the first demand, so that objects that meet no archive (and exceptions, which must
    // not fail to be copied) never allocate. Safe from several threads.
    const Identity& identity() const;

    mutable std::atomic<const Identity*> identity_{nullptr};
    std::shared_ptr<const std::function<void()>> watcher_;
};

/// The root of classes that are used through a pointer to a common base.
class MVBASE_API mvRepBase {
  public:
    mvRepBase() = default;
    mvRepBase(const mvRepBase&) = default;
    mvRepBase& operator=(const mvRepBase&) = default;
    virtual ~mvRepBase();
};
