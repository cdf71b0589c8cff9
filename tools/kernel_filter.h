// Filters given as a picture.
#pragma once

#include <filt/freqfilt.h>

#include <memory>
#include <string>
#include <utility>

#include "picture_file.h"

/// A convolution whose weights are the pels of a picture, divided by their sum so that the mean
/// grey level stays. Pel (width / 2, height / 2), rounded down, is the kernel's centre.
class Kernel {
  public:
    /// Throws what readPicture throws.
    explicit Kernel(const std::string& path, long maxPixels = ReadOptions::kMaxPixels)
        : Kernel(path, readPicture(path, {Channels::grey, maxPixels})) {}

    /// The weights are there already; the name is for messages.
    Kernel(std::string name, Picture weights)
        : path_(std::move(name)), picture_(std::move(weights)) {}

    /// The smallest plane that takes the kernel, if any does.
    mvPair<long> leastPlane() const;

    /// The filter for planes of a padded size. Throws a Failure for a kernel that is larger than
    /// `size` or black all over.
    std::unique_ptr<mvFrequencyFilter> filter(mvPair<long> size) const;

  private:
    std::string path_;
    Picture picture_;
};
