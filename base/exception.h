// The exception family of the base library.
#pragma once

#include <base/export.h>
#include <base/persistence.h>

#include <iosfwd>
#include <memory>
#include <string>

/// The root of everything the libraries throw on their own account. Copying one never throws.
class MVBASE_API mvException : public mvPersistent {
  public:
    mvException() noexcept = default;
    mvException(const mvException&) noexcept = default;
    mvException& operator=(const mvException&) noexcept = default;
    ~mvException() override;

    /// The number of the exception's class; 0 for a class that has none.
    virtual long errorNumber() const;

    /// Deletes this object, which must live on the heap, and throws a copy of it as its own class.
    /// A class that does not override this is thrown as the nearest base that does.
    virtual void suicideAndRethrow();

  protected:
    friend std::ostream& operator<<(std::ostream& out, const mvException& exception);

    /// What each class's suicideAndRethrow does.
    template <class Exception>
    [[noreturn]] static void deleteAndThrow(const Exception* exception) {
        const Exception copy(*exception);
        delete exception;
        throw copy;
    }

    /// What `<<` writes. Here: the qualified name of the object's class.
    virtual void message_(std::ostream& out) const;
};

// Behind the class: to a compiler for DLLs, a friend takes back what was said of a function before.

/// Writes an exception for people to read: only its message if it has one, else the qualified name
/// of its class.
MVBASE_API std::ostream& operator<<(std::ostream& out, const mvException& exception);

/// An exception with a text, which it keeps for itself: the caller's may vanish. No message (null)
/// and an empty message are two things.
///
/// Archive form: bool has-message; when true the text as an unsigned long length and its bytes.
class MVBASE_API mvExceptionWithString : public mvException {
  public:
    /// Keeps a copy of `message`, or none for null.
    mvExceptionWithString(const char* message = nullptr);
    mvExceptionWithString(const mvExceptionWithString&) noexcept = default;
    mvExceptionWithString& operator=(const mvExceptionWithString&) noexcept = default;
    ~mvExceptionWithString() override;

    /// The text, or null when there is none. It lives as long as this object or a copy of it has
    /// it.
    const char* message() const noexcept { return text_ ? text_->c_str() : nullptr; }

    void suicideAndRethrow() override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;
    void message_(std::ostream& out) const override;

  private:
    std::shared_ptr<const std::string> text_;
};

/// A failing status turned into an exception.
///
/// Archive form: the status as a long.
class MVBASE_API mvStatusException : public mvException {
  public:
    /// Keeps `status` as it is.
    explicit mvStatusException(long status) noexcept : status_(status) {}
    mvStatusException(const mvStatusException&) noexcept = default;
    mvStatusException& operator=(const mvStatusException&) noexcept = default;
    ~mvStatusException() override;

    /// The status that failed.
    long status() const noexcept { return status_; }

    void suicideAndRethrow() override;

  protected:
    void dispatchSerialize(mvArchive& ar) override;
    void message_(std::ostream& out) const override;

  private:
    long status_;
};

/// Throws an mvStatusException for any `status` but 0.
MVBASE_API void mfThrowExceptionOnFailure(long status);
