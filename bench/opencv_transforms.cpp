// OpenCV's transforms as peers.
#include <opencv2/core.hpp>

#include <algorithm>

#include "transforms.h"

namespace bench {
namespace {

class Complex : public Peer {
  public:
    Complex(Size size, bool inPlace)
        : Peer("opencv"),
          in_(static_cast<int>(size.height), static_cast<int>(size.width), CV_32FC2),
          out_(inPlace ? in_ : cv::Mat(in_.size(), in_.type())) {}

    void load(const Values& input) override {
        std::copy(input.begin(), input.end(), in_.ptr<float>());
    }
    void run() override { cv::dft(in_, out_); }
    Values result() const override {
        return {out_.ptr<float>(), out_.ptr<float>() + 2 * out_.total()};
    }

  private:
    cv::Mat in_, out_;
};

class Real : public Peer {
  public:
    explicit Real(Size size)
        : Peer("opencv"),
          image_(static_cast<int>(size.height), static_cast<int>(size.width), CV_32F) {}

    void load(const Values& input) override {
        std::copy(input.begin(), input.end(), image_.ptr<float>());
    }
    void run() override { cv::dft(image_, packed_); }

    Values result() const override {
        Values half;
        for (int y = 0; y < packed_.rows; ++y) {
            pushEdge(half, y, 0);
            const float* const row = packed_.ptr<float>(y);
            half.insert(half.end(), row + 1, row + packed_.cols - 1);
            pushEdge(half, y, packed_.cols - 1);
        }
        return half;
    }

  private:
    // The columns 0 and W/2 of a real image's spectrum are packed downwards: the real values of the
    // first and the middle row stand at the ends, pairs of real and imaginary parts between them.
    void pushEdge(Values& half, int y, int column) const {
        const int rows = packed_.rows;
        const int v = std::min(y, rows - y);
        const bool isReal = y == 0 || 2 * y == rows;
        const int at = y == 0 ? 0 : 2 * v - 1;
        const float imaginary = isReal ? 0.0f : packed_.at<float>(at + 1, column);
        half.push_back(packed_.at<float>(at, column));
        half.push_back(y == v ? imaginary : -imaginary);
    }

    cv::Mat image_, packed_;
};

}  // namespace

std::unique_ptr<Peer> opencvComplex(Size size) {
    return std::make_unique<Complex>(size, true);
}

std::unique_ptr<Peer> opencvComplexCopy(Size size) {
    return std::make_unique<Complex>(size, false);
}

std::unique_ptr<Peer> opencvReal(Size size) {
    return std::make_unique<Real>(size);
}

}  // namespace bench
