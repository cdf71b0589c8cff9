// The filters' records, field by field, and which class each belongs to.
#pragma once

#include <filt/freqfilt.h>

#include "support/archive_record.h"

namespace archive {

/// The fields of a ring filter's record in their order.
struct RingRecord {
    unsigned version = 0;
    unsigned baseVersion = 0;
    bool initialized = true;
    std::int32_t supportWidth = 1;
    std::int32_t supportHeight = 32;
    double frequency = 0.25;
    double sigma = 0.02;
    double plateau = 0.01;
    std::int32_t width = 8;
    std::int32_t height = 4;
    std::int32_t radius = 1;
    bool hasResponse = true;
    std::vector<float> response = std::vector<float>(32, 0.5F);

    Record record() const {
        return Record()
            .u8(version)
            .u8(baseVersion)
            .flag(initialized)
            .i32(supportWidth)
            .i32(supportHeight)
            .f64(frequency)
            .f64(sigma)
            .f64(plateau)
            .integerPair(width, height)
            .i32(radius)
            .flag(hasResponse)
            .floats(response);
    }
};

/// The fields of a lobe filter's record in their order.
struct LobeRecord {
    unsigned version = 0;
    unsigned baseVersion = 0;
    bool initialized = true;
    std::int32_t supportWidth = 3;
    std::int32_t supportHeight = 3;
    double angle = 0.75;
    double frequency = 0.25;
    double sigmaX = 0.02;
    double sigmaY = 0.03;
    double plateauX = 0.01;
    double plateauY = 0.0;
    std::int32_t width = 8;
    std::int32_t height = 4;
    std::int32_t radius = 1;
    bool hasResponse = true;
    std::vector<float> response = {0.1F, 0.2F, 0.3F, 0.4F, 1.0F, 0.6F, 0.7F, 0.8F, 0.9F};

    Record record() const {
        return Record()
            .u8(version)
            .u8(baseVersion)
            .flag(initialized)
            .i32(supportWidth)
            .i32(supportHeight)
            .f64(angle)
            .f64(frequency)
            .doublePair(sigmaX, sigmaY)
            .doublePair(plateauX, plateauY)
            .integerPair(width, height)
            .i32(radius)
            .flag(hasResponse)
            .floats(response);
    }
};

}  // namespace archive
