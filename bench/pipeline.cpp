// The filters of the pipelines, and this library as a peer.
#include "pipeline.h"

#include <algorithm>
#include <bit>

namespace bench {
namespace {

long paddedSide(long side) {
    return static_cast<long>(std::bit_ceil(static_cast<unsigned long>(side)));
}

// A small blur off centre, so that its spectrum is not real.
mvFrequencyBuffer kernelSpectrum(Size size) {
    mvPelBuffer<double> kernel(size.width, size.height);
    for (long y = 0; y < 5; ++y) {
        for (long x = 0; x < 5; ++x) kernel.pointToRow(y)[x] = static_cast<double>(x + 2 * y) / 150;
    }
    mvFrequencyBuffer spectrum;
    mfForwardFFT(kernel, spectrum);
    return spectrum;
}

std::shared_ptr<const mvFrequencyFilter> filterOf(FilterKind kind, Size size) {
    const mvPair<long> support(size.width, size.height);
    switch (kind) {
        case FilterKind::BandPass:
            return std::make_shared<mvFrequencyFilterBandPass>(0.02, 0.05, 0.12, support, 1);
        case FilterKind::Gabor:
            return std::make_shared<mvFrequencyFilterGabor>(mvPair<double>(0.02, 0.01),
                                                            mvPair<double>(0.0, 0.0), mvRadian(0.4),
                                                            0.2, support, 1);
        default:
            return std::make_shared<mvFrequencyFilterImage>(kernelSpectrum(size));
    }
}

mvFrequencyBuffer planeOfOnes(Size size) {
    mvFrequencyBuffer ones(size.width, size.height);
    for (long y = 0; y < size.height; ++y) {
        for (long x = 0; x < size.width; ++x) ones.put(x, y, {1.0, 0.0}, false);
    }
    return ones;
}

template <class T>
class Mvfreq : public Peer {
  public:
    explicit Mvfreq(const Pipeline& work)
        : Peer("mvfreq"), filter_(work.filter), image_(work.image.width, work.image.height) {}

    void load(const Values& input) override {
        result_ = {};
        for (long y = 0; y < image_.height(); ++y) {
            const float* const row = input.data() + y * image_.width();
            std::transform(row, row + image_.width(), image_.pointToRow(y),
                           [](float pel) { return static_cast<T>(pel); });
        }
    }
    void run() override {
        mfForwardFFT<T>(image_, spectrum_);
        filter_->apply(spectrum_);
        mfInverseFFT<T>(spectrum_, result_, false, true);
    }
    Values result() const override {
        Values pels;
        for (long y = 0; y < result_.height(); ++y) {
            pels.insert(pels.end(), result_.pointToRow(y), result_.pointToRow(y) + result_.width());
        }
        return pels;
    }

  private:
    std::shared_ptr<const mvFrequencyFilter> filter_;
    mvPelBuffer<T> image_, result_;
    mvFrequencyBuffer spectrum_;
};

}  // namespace

Pipeline::Pipeline(FilterKind filterKind, Size imageSize)
    : kind(filterKind),
      image(imageSize),
      padded{paddedSide(imageSize.width), paddedSide(imageSize.height)},
      filter(filterOf(filterKind, padded)) {
    mvFrequencyBuffer plane = planeOfOnes(padded);
    filter->apply(plane);
    for (long y = 0; y < padded.height; ++y) {
        bool hasData = false;
        for (long x = 0; x < padded.width; ++x) {
            const mvPair<double> value = plane.get(x, y, false);
            response.emplace_back(static_cast<float>(value.x), static_cast<float>(value.y));
            hasData = hasData || response.back() != std::complex<float>();
        }
        rowHasData.push_back(hasData);
    }
}

const char* nameOf(FilterKind kind) {
    switch (kind) {
        case FilterKind::BandPass:
            return "band-pass";
        case FilterKind::Gabor:
            return "gabor";
        default:
            return "image";
    }
}

template <class T>
std::unique_ptr<Peer> mvfreqPipeline(const Pipeline& work) {
    return std::make_unique<Mvfreq<T>>(work);
}

template std::unique_ptr<Peer> mvfreqPipeline<unsigned char>(const Pipeline&);
template std::unique_ptr<Peer> mvfreqPipeline<unsigned short>(const Pipeline&);

}  // namespace bench
