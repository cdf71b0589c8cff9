// Numbers, archive forms and rethrowing of the error classes.
#include <filt/fft/errors.h>
#include <filt/fft/internal/archive_routines.h>
#include <filt/internal/registration.h>

mvFrequencyDefs::Errors::Errors(const char* message) : mvExceptionWithString(message) {
    mvi::keepRegistration();
}
mvFrequencyDefs::Errors::~Errors() = default;

void mvFrequencyDefs::Errors::dispatchSerialize(mvArchive& ar) {
    if (haveVisited(ar, this, sizeof(Errors))) return;
    unsigned char version = 0;
    ar || version;
    serialize_(ar, version);
    setVisited(ar, this, sizeof(Errors));
}

void mvFrequencyDefs::Errors::serialize_(mvArchive& ar, unsigned char version) {
    mvi::requireVersion(version, 0, "mvFrequencyDefs::Errors", 0);
    mvExceptionWithString::dispatchSerialize(ar);
}

// The leaves differ only in name and number.
#define MVFREQ_DEFINE_ERROR(Leaf, number)                                          \
    mvFrequencyDefs::Leaf::Leaf(const char* message) : Errors(message) {}          \
    mvFrequencyDefs::Leaf::~Leaf() = default;                                      \
    long mvFrequencyDefs::Leaf::errorNumber() const {                              \
        return number;                                                             \
    }                                                                              \
    void mvFrequencyDefs::Leaf::suicideAndRethrow() {                              \
        deleteAndThrow(this);                                                      \
    }                                                                              \
    mvPersistent* mvFrequencyDefs::Leaf::make() {                                  \
        return new Leaf;                                                           \
    }                                                                              \
    void mvFrequencyDefs::Leaf::dispatchSerialize(mvArchive& ar) {                 \
        if (haveVisited(ar, this, sizeof(Leaf))) return;                           \
        unsigned char version = 0;                                                 \
        ar || version;                                                             \
        serialize_(ar, version);                                                   \
        setVisited(ar, this, sizeof(Leaf));                                        \
    }                                                                              \
    void mvFrequencyDefs::Leaf::serialize_(mvArchive& ar, unsigned char version) { \
        mvi::requireVersion(version, 0, "mvFrequencyDefs::" #Leaf, 0);             \
        Errors::dispatchSerialize(ar);                                             \
    }

MVFREQ_DEFINE_ERROR(InvalidArgument, 0x10006300)
MVFREQ_DEFINE_ERROR(Uninitialized, 0x10006301)
MVFREQ_DEFINE_ERROR(InvalidSize, 0x10006302)
MVFREQ_DEFINE_ERROR(UnboundWindow, 0x10006303)
MVFREQ_DEFINE_ERROR(InvalidBuffer, 0x10006304)
MVFREQ_DEFINE_ERROR(BadCoord, 0x10006305)

#undef MVFREQ_DEFINE_ERROR
