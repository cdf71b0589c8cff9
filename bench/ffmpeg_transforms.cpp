// FFmpeg's one-dimensional transforms, put together to two dimensions, as peers.
extern "C" {
#include <libavutil/tx.h>
}

#include <algorithm>
#include <stdexcept>

#include "transforms.h"
#include "transpose.h"

namespace bench {
namespace {

// One line after the other, from one place to another, both aligned to cache lines.
class Lines {
  public:
    Lines(AVTXType type, long length) {
        const float scale = 1;
        AVTXContext* context = nullptr;
        if (av_tx_init(&context, &transform_, type, 0, static_cast<int>(length), &scale, 0) != 0) {
            throw std::runtime_error("FFmpeg has no transform of this length");
        }
        context_ = {context, [](AVTXContext* c) { av_tx_uninit(&c); }};
        stride_ = type == AV_TX_FLOAT_FFT ? sizeof(AVComplexFloat) : sizeof(float);
    }

    void run(float* from, float* to) const { transform_(context_.get(), to, from, stride_); }

  private:
    std::shared_ptr<AVTXContext> context_;
    av_tx_fn transform_ = nullptr;
    std::ptrdiff_t stride_;
};

// All columns of a plane: as many as a cache line holds are turned, transformed and turned back.
class Columns {
  public:
    explicit Columns(Size plane)
        : plane_(plane),
          lines_(AV_TX_FLOAT_FFT, plane.height),
          pitch_(plane.height + kAtOnce),
          turned_(2 * kAtOnce * pitch_),
          transformed_(turned_.size()) {}

    void run(float* plane) const {
        for (long x = 0; x < plane_.width; x += kAtOnce) {
            const long count = std::min(kAtOnce, plane_.width - x);
            transpose(plane + 2 * x, plane_.width, turned_.data(), pitch_, plane_.height, count);
            for (long i = 0; i < count; ++i) {
                lines_.run(turned_.data() + 2 * i * pitch_, transformed_.data() + 2 * i * pitch_);
            }
            transpose(transformed_.data(), pitch_, plane + 2 * x, plane_.width, count,
                      plane_.height);
        }
    }

  private:
    static constexpr long kAtOnce = 8;

    Size plane_;
    Lines lines_;
    long pitch_;
    AlignedFloats turned_, transformed_;
};

// In place each row goes through a place of its own, since the transforms are fastest that way.
class Complex : public Peer {
  public:
    Complex(Size size, bool inPlace)
        : Peer("ffmpeg"),
          size_(size),
          in_(2 * size.count()),
          out_(inPlace ? in_ : AlignedFloats(in_.size())),
          row_(inPlace ? 2 * size.width : 0),
          rows_(AV_TX_FLOAT_FFT, size.width),
          columns_(size) {}

    void load(const Values& input) override { std::copy(input.begin(), input.end(), in_.data()); }
    void run() override {
        for (long y = 0; y < size_.height; ++y) {
            float* const from = in_.data() + 2 * y * size_.width;
            if (row_.size() == 0) {
                rows_.run(from, out_.data() + 2 * y * size_.width);
            } else {
                rows_.run(from, row_.data());
                std::copy_n(row_.data(), row_.size(), from);
            }
        }
        columns_.run(out_.data());
    }
    Values result() const override { return {out_.data(), out_.data() + out_.size()}; }

  private:
    Size size_;
    AlignedFloats in_, out_, row_;
    Lines rows_;
    Columns columns_;
};

// Rows of the half plane are not aligned, so the transforms write to a place that is.
class Real : public Peer {
  public:
    explicit Real(Size size)
        : Peer("ffmpeg"),
          size_(size),
          image_(size.count()),
          half_((size.width + 2) * size.height),
          row_(size.width + 64),
          rows_(AV_TX_FLOAT_RDFT, size.width),
          columns_({size.width / 2 + 1, size.height}) {}

    void load(const Values& input) override {
        std::copy(input.begin(), input.end(), image_.data());
    }
    void run() override {
        for (long y = 0; y < size_.height; ++y) {
            rows_.run(image_.data() + y * size_.width, row_.data());
            std::copy_n(row_.data(), size_.width + 2, half_.data() + y * (size_.width + 2));
        }
        columns_.run(half_.data());
    }
    Values result() const override { return {half_.data(), half_.data() + half_.size()}; }

  private:
    Size size_;
    AlignedFloats image_, half_, row_;
    Lines rows_;
    Columns columns_;
};

}  // namespace

std::unique_ptr<Peer> ffmpegComplex(Size size) {
    return std::make_unique<Complex>(size, true);
}

std::unique_ptr<Peer> ffmpegComplexCopy(Size size) {
    return std::make_unique<Complex>(size, false);
}

std::unique_ptr<Peer> ffmpegReal(Size size) {
    return std::make_unique<Real>(size);
}

}  // namespace bench
