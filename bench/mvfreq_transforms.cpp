// This library's transforms as peers.
#include <filt/fft.h>
#include <filt/fft/internal/buffer_access.h>

#include <algorithm>
#include <utility>

#include "transforms.h"

namespace bench {
namespace {

class Complex : public Peer {
  public:
    Complex(Size size, const mvi::KernelPath& path)
        : Peer(std::string("mvfreq-") + path.name),
          size_(size),
          path_(path),
          plane_(2 * size.count()) {}

    void load(const Values& input) override {
        std::copy(input.begin(), input.end(), plane_.data());
    }
    void run() override {
        mf_FFT2D(plane_.data(), {size_.width, size_.height}, 1, 0, static_cast<int>(size_.height),
                 path_);
    }
    Values result() const override { return {plane_.data(), plane_.data() + plane_.size()}; }

  private:
    Size size_;
    const mvi::KernelPath& path_;
    AlignedFloats plane_;
};

// Two buffers, as an application has them.
class ComplexCopy : public Peer {
  public:
    explicit ComplexCopy(Size size) : Peer("mvfreq"), src_(size.width, size.height) {}

    void load(const Values& input) override {
        std::copy(input.begin(), input.end(), mvi::BufferAccess::data(src_));
    }
    void run() override { mfForwardFFT(src_, dst_); }
    Values result() const override {
        const float* const plane = mvi::BufferAccess::data(dst_);
        return {plane, plane + mvi::BufferAccess::floats(dst_)};
    }

  private:
    mvFrequencyBuffer src_, dst_;
};

class Real : public Peer {
  public:
    Real(Size size, const mvi::KernelPath& path)
        : Peer(std::string("mvfreq-") + path.name),
          size_(size),
          path_(path),
          plane_(2 * size.count()) {}

    void load(const Values& input) override {
        for (long y = 0; y < size_.height; ++y) {
            std::copy_n(input.data() + y * size_.width, size_.width, row(y));
        }
    }
    void run() override {
        mf_RealFFT2D(plane_.data(), {size_.width, size_.height}, 1, 0,
                     static_cast<int>(size_.height), path_);
    }
    Values result() const override {
        Values half;
        for (long y = 0; y < size_.height; ++y) {
            half.insert(half.end(), row(y), row(y) + size_.width + 2);
        }
        return half;
    }

  private:
    float* row(long y) const { return plane_.data() + 2 * size_.width * y; }

    Size size_;
    const mvi::KernelPath& path_;
    AlignedFloats plane_;
};

// Rows outside the band come cleared, as a filter leaves them.
class BandedInverse : public Peer {
  public:
    BandedInverse(std::string name, Size size, long rowLow, long rowHigh)
        : Peer(std::move(name)),
          size_(size),
          low_(static_cast<int>(rowLow)),
          high_(static_cast<int>(rowHigh)),
          plane_(2 * size.count()) {}

    void load(const Values& input) override {
        std::copy(input.begin(), input.end(), plane_.data());
    }
    void run() override { mf_FFT2D(plane_.data(), {size_.width, size_.height}, -1, low_, high_); }
    Values result() const override { return {plane_.data(), plane_.data() + plane_.size()}; }

  private:
    Size size_;
    int low_, high_;
    AlignedFloats plane_;
};

}  // namespace

std::unique_ptr<Peer> mvfreqInverse(std::string name, Size size, long rowLow, long rowHigh) {
    return std::make_unique<BandedInverse>(std::move(name), size, rowLow, rowHigh);
}

std::unique_ptr<Peer> mvfreqComplex(Size size, const mvi::KernelPath& path) {
    return std::make_unique<Complex>(size, path);
}

std::unique_ptr<Peer> mvfreqComplexCopy(Size size) {
    return std::make_unique<ComplexCopy>(size);
}

std::unique_ptr<Peer> mvfreqReal(Size size, const mvi::KernelPath& path) {
    return std::make_unique<Real>(size, path);
}

}  // namespace bench
