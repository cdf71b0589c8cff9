// What all pipelines on FFTW share: the pels, and how they become floats and floats pels. The
// bounds of the loops that write pels are local, since bytes might overlap anything that is a
// member.
#pragma once

#include <cmath>
#include <limits>

#include "pipeline.h"

namespace bench {

template <class T>
class FftwPels : public PelPeer<T> {
  public:
    FftwPels(const std::string& form, const Pipeline& work, std::shared_ptr<const Fftw> build)
        : PelPeer<T>(build->name() + form, work.image),
          padded_(work.padded),
          build_(std::move(build)),
          pels_(static_cast<std::size_t>(work.image.count())),
          out_(pels_.size()) {}

    T* inputRow(long y) override { return pels_.data() + y * this->image().width; }
    const T* resultRow(long y) const override { return out_.data() + y * this->image().width; }

  protected:
    /// Row y of the image, and zeros up to the plane's width.
    void readRow(long y, float* to) const {
        const long width = this->image().width;
        const T* const from = pels_.data() + y * width;
        for (long x = 0; x < width; ++x) to[x] = from[x];
        std::fill(to + width, to + padded_.width, 0.0f);
    }

    void writeReals(long y, const float* from) {
        const long width = this->image().width;
        T* const to = out_.data() + y * width;
        for (long x = 0; x < width; ++x) to[x] = pelOf(std::abs(from[x]));
    }

    /// Elements are `step` floats apart, their imaginary parts `imaginary` floats behind.
    template <long step>
    void writeMagnitudes(long y, const float* from, long imaginary) {
        const long width = this->image().width;
        T* const to = out_.data() + y * width;
        for (long x = 0; x < width; ++x) {
            const float re = from[step * x], im = from[step * x + imaginary];
            to[x] = pelOf(std::sqrt(re * re + im * im));
        }
    }

    static float scaleOf(Size padded) { return 1.0f / static_cast<float>(padded.count()); }

    Size padded_;
    std::shared_ptr<const Fftw> build_;

  private:
    static T pelOf(float magnitude) {
        constexpr float full = std::numeric_limits<T>::max();
        return static_cast<T>(static_cast<int>(std::min(magnitude + 0.5f, full)));
    }

    std::vector<T> pels_, out_;
};

/// values *= gains, elements of both interleaved; real gains are one float an element.
inline void multiply(float* values, const float* gains, long elements, bool realGains) {
    if (realGains) {
        for (long i = 0; i < elements; ++i) {
            values[2 * i] *= gains[i];
            values[2 * i + 1] *= gains[i];
        }
        return;
    }
    for (long i = 0; i < 2 * elements; i += 2) {
        const float re = values[i], im = values[i + 1];
        values[i] = re * gains[i] - im * gains[i + 1];
        values[i + 1] = re * gains[i + 1] + im * gains[i];
    }
}

}  // namespace bench
