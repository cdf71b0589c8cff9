// The filter classes as type parameters of tests, and the versions that their records may not have.
#pragma once

#include <gtest/gtest.h>

#include "support/filter_records.h"

namespace archive {

struct BandPass {
    using Filter = mvFrequencyFilterBandPass;
    using Fields = RingRecord;
    static constexpr const char* kName = "mvFrequencyFilterBandPass";
    static constexpr const char* kUnknown = "UnknownVersion filt/freqfilt 1765";
};

struct BandReject {
    using Filter = mvFrequencyFilterBandReject;
    using Fields = RingRecord;
    static constexpr const char* kName = "mvFrequencyFilterBandReject";
    static constexpr const char* kUnknown = "UnknownVersion filt/freqfilt 2389";
};

struct Gabor {
    using Filter = mvFrequencyFilterGabor;
    using Fields = LobeRecord;
    static constexpr const char* kName = "mvFrequencyFilterGabor";
    static constexpr const char* kUnknown = "UnknownVersion filt/freqfilt 371";
};

struct GaborReject {
    using Filter = mvFrequencyFilterGaborReject;
    using Fields = LobeRecord;
    static constexpr const char* kName = "mvFrequencyFilterGaborReject";
    static constexpr const char* kUnknown = "UnknownVersion filt/freqfilt 1095";
};

using ParametricFilters = testing::Types<BandPass, BandReject, Gabor, GaborReject>;

inline constexpr const char* kUnknownBase = "UnknownVersion filt/freqfilt 136";
inline constexpr const char* kUnknownBuffer = "UnknownVersion filt/fft 572";
inline constexpr const char* kUnknownImageFilter = "UnknownVersion filt/freqfilt 2846";
inline constexpr const char* kUnknownRoutine = "UnknownVersion null 0";

}  // namespace archive
