// Stream archives: one symmetric exchange that stores or loads by the archive's mode.
#pragma once

#include <base/exception.h>
#include <base/export.h>
#include <base/geometry.h>
#include <base/persistence.h>

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>

namespace mvi {
class ArchiveObjects;
}

/// An archive over a stream that the caller owns, either storing into it or loading from it.
///
/// `ar || value` exchanges one value and returns the archive. When it returns, the bytes of the
/// value, and no more, have gone through the stream. The encoding is the same on every machine:
///
/// | type                  | bytes                                                            |
/// |-----------------------|------------------------------------------------------------------|
/// | unsigned char         | 1                                                                |
/// | bool                  | 1, only 0 and 1                                                  |
/// | long, int             | 4, two's complement, little-endian                               |
/// | unsigned long         | 4, little-endian                                                 |
/// | float                 | 4, IEEE 754 binary32, little-endian                              |
/// | double                | 8, IEEE 754 binary64, little-endian                              |
/// | std::string           | unsigned long length, then the bytes                             |
/// | mvXform<2>            | doubles e00, e01, e10, e11, x, y                                 |
/// | mv2XformCache         | bool set, then the mvXform<2> when set                           |
/// | mvPersistent&         | what its dispatchSerialize exchanges; nothing when it was there  |
/// | mvPersistent*         | 1 byte 0: null                                                   |
/// |                       | 1 byte 1, class name (std::string), the object: a new object     |
/// |                       | 1 byte 2, unsigned long index: an object already in this archive |
///
/// Index i is the i-th object, from 0, that this archive met through `||`, by reference or as a new
/// object by pointer.
///
/// Errors, of every exchange: storing throws BadValue for a number that does not fit its bytes
/// (nothing is written then) and WriteFailed when the stream fails; loading throws Truncated when
/// the bytes end early or the stream fails, and BadValue for bytes that stand for no value. A value
/// that fails to load keeps what it had, a structured one possibly after some of its parts.
/// Failures that a stream reports as std::ios_base::failure become these errors too.
///
/// An archive is used by one thread at a time; several archives may store one object from several
/// threads at once, as long as the object's own dispatchSerialize only reads it.
class MVBASE_API mvArchive {
  public:
    class UnknownVersion;
    class Truncated;
    class BadValue;
    class UnknownClass;
    class WriteFailed;

    /// How deep objects may hold objects, by reference or by pointer; deeper ones throw BadValue.
    static constexpr int maxDepth = 256;

    /// Stores into `out`, or loads from `in`; the stream must outlive the archive. A stream that
    /// goes both ways is passed as the one or the other by a cast.
    explicit mvArchive(std::ostream& out);
    explicit mvArchive(std::istream& in);
    ~mvArchive();
    mvArchive(const mvArchive&) = delete;
    mvArchive& operator=(const mvArchive&) = delete;

    /// True when `||` writes, false when it reads.
    [[nodiscard]] bool isStoring() const noexcept { return out_ != nullptr; }

    /// Exchanges `size` plain bytes. When the bytes end early, what had arrived is in `data`.
    void bytes(unsigned char* data, std::size_t size);

    /// Exchanges `count` floats one after the other, without a count. Whoever loads an array of a
    /// length that the archive gives lets it grow piece by piece as the floats arrive. When the
    /// bytes end early, some of the values may have been loaded.
    void floats(float* values, std::size_t count);

    /// Loads a pointer record. A new object is owned by `owner` and complete; for null and for an
    /// object that was already there `owner` is empty. Throws BadValue when the archive is storing,
    /// for a tag or an index that stands for nothing, for objects nested too deep and for a
    /// reference to an object that was destroyed meanwhile; UnknownClass for a name that is not
    /// registered.
    mvPersistent* loadPointer(std::unique_ptr<mvPersistent>& owner);

    /// Stores a pointer record. Throws BadValue when the archive is loading or the object is nested
    /// too deep, UnknownClass for a class that is not registered; nothing is written then.
    void storePointer(const mvPersistent* object);

    /// Exchanges an object in place; what `ar || object` does. A const object is only stored.
    void exchangeObject(mvPersistent& object);
    void exchangeObject(const mvPersistent& object);

  private:
    friend class mvPersistent;

    void exchangeContent(mvPersistent& object);
    std::unique_ptr<mvPersistent> loadNew();
    mvPersistent* loadReference();

    std::ostream* out_ = nullptr;
    std::istream* in_ = nullptr;
    std::unique_ptr<mvi::ArchiveObjects> objects_;
    int depth_ = 0;
};

/// A record of a version that the reader does not know.
class MVBASE_API mvArchive::UnknownVersion : public mvException {
  public:
    /// `text` says where the version was met (a source file or a class), null for nothing; it is
    /// copied. `number` is a line number, or 0.
    UnknownVersion(const char* text, long number);
    UnknownVersion(const UnknownVersion&) noexcept = default;
    UnknownVersion& operator=(const UnknownVersion&) noexcept = default;
    ~UnknownVersion() override;
    void suicideAndRethrow() override;

    /// What was given: the text, or null, and the number.
    const char* text() const noexcept { return text_ ? text_->c_str() : nullptr; }
    long number() const noexcept { return number_; }

  protected:
    void message_(std::ostream& out) const override;

  private:
    std::shared_ptr<const std::string> text_;
    long number_;
};

/// The bytes ended before the value did, or the stream failed while loading.
class MVBASE_API mvArchive::Truncated : public mvExceptionWithString {
  public:
    /// With a message that says what happened.
    explicit Truncated(const char* message = "The archive ends early.");
    Truncated(const Truncated&) noexcept = default;
    Truncated& operator=(const Truncated&) noexcept = default;
    ~Truncated() override;
    void suicideAndRethrow() override;
};

/// A value that cannot be stored, or bytes that stand for no value.
class MVBASE_API mvArchive::BadValue : public mvExceptionWithString {
  public:
    /// With a message that says what happened.
    explicit BadValue(const char* message = "A value of the archive is not valid.");
    BadValue(const BadValue&) noexcept = default;
    BadValue& operator=(const BadValue&) noexcept = default;
    ~BadValue() override;
    void suicideAndRethrow() override;
};

/// The class of an object is not registered.
class MVBASE_API mvArchive::UnknownClass : public mvExceptionWithString {
  public:
    /// With a message that says what happened.
    explicit UnknownClass(const char* message = "A class of the archive is not registered.");
    UnknownClass(const UnknownClass&) noexcept = default;
    UnknownClass& operator=(const UnknownClass&) noexcept = default;
    ~UnknownClass() override;
    void suicideAndRethrow() override;
};

/// The stream failed while storing.
class MVBASE_API mvArchive::WriteFailed : public mvExceptionWithString {
  public:
    /// With a message that says what happened.
    explicit WriteFailed(const char* message = "The archive could not be written.");
    WriteFailed(const WriteFailed&) noexcept = default;
    WriteFailed& operator=(const WriteFailed&) noexcept = default;
    ~WriteFailed() override;
    void suicideAndRethrow() override;
};

/// The exchange of one value, as the table at mvArchive lays it out.
MVBASE_API mvArchive& operator||(mvArchive& ar, unsigned char& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, bool& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, int& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, long& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, unsigned long& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, float& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, double& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, std::string& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, mvXform<2>& value);
MVBASE_API mvArchive& operator||(mvArchive& ar, mv2XformCache& value);

/// Exchanges an object in place. A second exchange of the same object with the same archive does
/// nothing, both ways, as far as its class keeps the visited bookkeeping; after one that failed,
/// all parts of the object are exchanged anew. Throws BadValue for objects nested too deep, and
/// what the object's dispatchSerialize throws.
MVBASE_API mvArchive& operator||(mvArchive& ar, mvPersistent& object);

/// Stores an object that must not change. Throws BadValue when the archive is loading; further
/// errors as above.
MVBASE_API mvArchive& operator||(mvArchive& ar, const mvPersistent& object);

/// Exchanges an object by pointer. Loading makes a new object, which the caller owns from then on;
/// or gives null; or gives an object that this archive has met before, which belongs to whoever
/// owned it. `mfLoad` distinguishes these and is the one to use for bytes that are not trusted.
/// When loading throws, nothing is left over and `object` keeps what it had. Errors as in
/// mvArchive::loadPointer and mvArchive::storePointer.
MVBASE_API mvArchive& operator||(mvArchive& ar, mvPersistent*& object);

/// The same for a pointer to a derived class; loading an object of another class throws
/// mvArchive::BadValue.
template <std::derived_from<mvPersistent> T>
mvArchive& operator||(mvArchive& ar, T*& object) {
    if (ar.isStoring()) {
        ar.storePointer(object);
        return ar;
    }
    std::unique_ptr<mvPersistent> owner;
    mvPersistent* loaded = ar.loadPointer(owner);
    T* typed = dynamic_cast<T*>(loaded);
    if (loaded && !typed) {
        throw mvArchive::BadValue("The archive holds an object of another class.");
    }
    static_cast<void>(owner.release());
    object = typed;
    return ar;
}

/// Stores an object by pointer, so that `mfLoad` makes one of its class. Errors as in
/// mvArchive::storePointer.
inline void mfStore(mvArchive& ar, const mvPersistent& object) {
    ar.storePointer(&object);
}

/// Loads an object that was stored by pointer: a new one, or null. Throws mvArchive::BadValue for a
/// reference to an object that this archive met before (it has an owner) and for an object that is
/// no T; further errors as in mvArchive::loadPointer.
template <std::derived_from<mvPersistent> T>
std::unique_ptr<T> mfLoad(mvArchive& ar) {
    std::unique_ptr<mvPersistent> owner;
    mvPersistent* loaded = ar.loadPointer(owner);
    if (!loaded) return nullptr;
    if (!owner) throw mvArchive::BadValue("The archive refers to an object that has an owner.");
    T* typed = dynamic_cast<T*>(loaded);
    if (!typed) throw mvArchive::BadValue("The archive holds an object of another class.");
    static_cast<void>(owner.release());
    return std::unique_ptr<T>(typed);
}
