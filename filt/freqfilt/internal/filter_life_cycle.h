// The members that every filter defines alike, since each names its own class.
#pragma once

#include <filt/fft/internal/archive_routines.h>

/// Default construction, comparison, cloning and the archive pattern of the class `Filter`, from
/// its `sameAs` and `exchange`. `line` is the number that its version errors carry: a part of the
/// errors that readers of archives know, and no line of any file.
#define MVFREQ_FILTER_LIFE_CYCLE(Filter, line)                                          \
    Filter::Filter() = default;                                                         \
    bool Filter::operator==(const Filter& other) const {                                \
        return sameAs(other);                                                           \
    }                                                                                   \
    mvFrequencyFilter* Filter::clone() const {                                          \
        return new Filter(*this);                                                       \
    }                                                                                   \
    mvPersistent* Filter::make() {                                                      \
        return new Filter;                                                              \
    }                                                                                   \
    void Filter::dispatchSerialize(mvArchive& ar) {                                     \
        serializeOnce(ar, sizeof(Filter),                                               \
                      [&](unsigned char version) { Filter::serialize_(ar, version); }); \
    }                                                                                   \
    void Filter::serialize_(mvArchive& ar, unsigned char version) {                     \
        mvi::requireVersion(version, 0, "filt/freqfilt", line);                         \
        mvFrequencyFilter::dispatchSerialize(ar);                                       \
        exchange(ar);                                                                   \
    }
