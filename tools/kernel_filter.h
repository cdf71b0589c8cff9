// Filters given as a picture.
#pragma once

#include <filt/freqfilt.h>

#include <memory>
#include <string>

/// The filter that convolves with the picture in `path`, its weights divided by their sum so that
/// the mean grey level stays. Pel (width / 2, height / 2), rounded down, is the kernel's centre.
///
/// Throws a Failure for a kernel that is larger than `size` or black all over.
std::unique_ptr<mvFrequencyFilter> kernelFilter(const std::string& path, mvPair<long> size);
