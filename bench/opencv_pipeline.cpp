// The pipelines as a careful engineer writes them with OpenCV.
#include <opencv2/core.hpp>

#include <algorithm>

#include "pipeline.h"

namespace bench {
namespace {

cv::Size sizeOf(Size size) {
    return cv::Size(static_cast<int>(size.width), static_cast<int>(size.height));
}

cv::Mat complexResponse(const Pipeline& work) {
    cv::Mat response(sizeOf(work.padded), CV_32FC2);
    std::copy(work.response.begin(), work.response.end(),
              reinterpret_cast<std::complex<float>*>(response.ptr<float>()));
    return response;
}

template <class T>
class Pipelined : public PelPeer<T> {
  public:
    explicit Pipelined(const Pipeline& work)
        : PelPeer<T>("opencv", work.image),
          pels_(sizeOf(work.image), kType),
          padded_(cv::Mat::zeros(sizeOf(work.padded), CV_32F)),
          inside_(padded_(cv::Rect(cv::Point(), pels_.size()))) {}

    T* inputRow(long y) override { return pels_.template ptr<T>(static_cast<int>(y)); }
    const T* resultRow(long y) const override { return out_.template ptr<T>(static_cast<int>(y)); }

  protected:
    static constexpr int kType = sizeof(T) == 1 ? CV_8U : CV_16U;

    cv::Mat pels_, padded_, inside_, spectrum_, out_;
};

// A filter that leaves a real image: packed spectra and a real inverse do.
template <class T>
class RealFilter : public Pipelined<T> {
  public:
    explicit RealFilter(const Pipeline& work) : Pipelined<T>(work) {
        cv::Mat kernel;
        cv::dft(complexResponse(work), kernel,
                cv::DFT_INVERSE | cv::DFT_SCALE | cv::DFT_REAL_OUTPUT);
        cv::dft(kernel, response_);
    }

    void run() override {
        this->pels_.convertTo(this->inside_, CV_32F);
        cv::dft(this->padded_, this->spectrum_, 0, this->pels_.rows);
        cv::mulSpectrums(this->spectrum_, response_, this->spectrum_, 0);
        cv::dft(this->spectrum_, space_, cv::DFT_INVERSE | cv::DFT_SCALE | cv::DFT_REAL_OUTPUT,
                this->pels_.rows);
        const cv::Mat result = space_(cv::Rect(cv::Point(), this->pels_.size()));
        magnitude_ = cv::abs(result);
        magnitude_.convertTo(this->out_, this->kType);
    }

  private:
    cv::Mat response_, space_, magnitude_;
};

template <class T>
class LobeFilter : public Pipelined<T> {
  public:
    explicit LobeFilter(const Pipeline& work)
        : Pipelined<T>(work), response_(complexResponse(work)) {}

    void run() override {
        this->pels_.convertTo(this->inside_, CV_32F);
        cv::dft(this->padded_, this->spectrum_, cv::DFT_COMPLEX_OUTPUT, this->pels_.rows);
        cv::mulSpectrums(this->spectrum_, response_, this->spectrum_, 0);
        // A number of rows would count those of the spectrum here, not those of the image.
        cv::dft(this->spectrum_, this->spectrum_, cv::DFT_INVERSE | cv::DFT_SCALE);
        cv::split(this->spectrum_(cv::Rect(cv::Point(), this->pels_.size())), parts_);
        cv::magnitude(parts_[0], parts_[1], magnitude_);
        magnitude_.convertTo(this->out_, this->kType);
    }

  private:
    cv::Mat response_, parts_[2], magnitude_;
};

}  // namespace

template <class T>
std::unique_ptr<PelPeer<T>> opencvPipeline(const Pipeline& work) {
    if (!work.leavesReals()) return std::make_unique<LobeFilter<T>>(work);
    return std::make_unique<RealFilter<T>>(work);
}

template std::unique_ptr<PelPeer<unsigned char>> opencvPipeline(const Pipeline&);
template std::unique_ptr<PelPeer<unsigned short>> opencvPipeline(const Pipeline&);

}  // namespace bench
