// The error classes of the library and the scope that holds them.
#pragma once

#include <filt/export.h>
#include <filt/platform.h>

/// Scope of the library's error classes and of the display mappings. It has no state.
class MVFREQ_API mvFrequencyDefs {
  public:
    class Errors;
    class InvalidArgument;
    class Uninitialized;
    class InvalidSize;
    class UnboundWindow;
    class InvalidBuffer;
    class BadCoord;

    /// How mfFrequencyMapImage turns doubles into bytes.
    enum FrequencyMapping : int {
        eMapClip = 0,       ///< clip to 0 .. 255
        eMapAutoScale = 1,  ///< linear, by the image's own range
        eMapRange = 2,      ///< linear, by the caller's range
        eMapLog = 3,        ///< logarithmic, by the image's own range
        eMapAngle = 4       ///< radians times 255 / (2 pi)
    };
};

/// What every error of the library is: a persistent exception with a number and, mostly, a text.
class MVFREQ_API mvFrequencyDefs::Errors : public mvExceptionWithString {
  public:
    Errors(const Errors&) = default;
    Errors(Errors&&) = default;
    Errors& operator=(const Errors&) = default;
    Errors& operator=(Errors&&) = default;
    ~Errors() override;

    /// The number of the error's class, from 0x10006300 on.
    long errorNumber() const override = 0;

    /// Deletes this object, which must live on the heap, and throws a copy of it as its own class.
    void suicideAndRethrow() override = 0;

  protected:
    /// Keeps a copy of `message`, or none for null.
    explicit Errors(const char* message);

    void dispatchSerialize(mvArchive& ar) override;
    /// Exchanges the part of this class.
    void serialize_(mvArchive& ar, unsigned char version);
};

// What the leaves have in common but cannot inherit, since each names its own class.
#define MVFREQ_ERROR_MEMBERS(Leaf)                         \
  public:                                                  \
    Leaf() : Leaf(nullptr) {}                              \
    explicit Leaf(const char* message);                    \
    Leaf(const Leaf&) = default;                           \
    Leaf(Leaf&&) = default;                                \
    Leaf& operator=(const Leaf&) = default;                \
    Leaf& operator=(Leaf&&) = default;                     \
    ~Leaf() override;                                      \
    long errorNumber() const override;                     \
    void suicideAndRethrow() override;                     \
                                                           \
  protected:                                               \
    void dispatchSerialize(mvArchive& ar) override;        \
    void serialize_(mvArchive& ar, unsigned char version); \
                                                           \
  private:                                                 \
    static mvPersistent* make();                           \
    static mv_Instantiator sExemplar;

/// A parameter out of its range. Number 0x10006300.
class MVFREQ_API mvFrequencyDefs::InvalidArgument : public mvFrequencyDefs::Errors {
    MVFREQ_ERROR_MEMBERS(InvalidArgument)
};

/// A buffer without data, or a filter without response. Number 0x10006301.
class MVFREQ_API mvFrequencyDefs::Uninitialized : public mvFrequencyDefs::Errors {
    MVFREQ_ERROR_MEMBERS(Uninitialized)
};

/// A size that is not supported, or sizes that do not match. Number 0x10006302.
class MVFREQ_API mvFrequencyDefs::InvalidSize : public mvFrequencyDefs::Errors {
    MVFREQ_ERROR_MEMBERS(InvalidSize)
};

/// A pel buffer that is not bound to pels; thrown without a text. Number 0x10006303.
class MVFREQ_API mvFrequencyDefs::UnboundWindow : public mvFrequencyDefs::Errors {
    MVFREQ_ERROR_MEMBERS(UnboundWindow)
};

/// Frequency data asked of a buffer that an inverse transform has overwritten. Number 0x10006304.
class MVFREQ_API mvFrequencyDefs::InvalidBuffer : public mvFrequencyDefs::Errors {
    MVFREQ_ERROR_MEMBERS(InvalidBuffer)
};

/// Coordinates outside the plane. Number 0x10006305.
class MVFREQ_API mvFrequencyDefs::BadCoord : public mvFrequencyDefs::Errors {
    MVFREQ_ERROR_MEMBERS(BadCoord)
};

#undef MVFREQ_ERROR_MEMBERS
