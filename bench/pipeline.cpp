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

template <class Filter>
std::shared_ptr<const mvFrequencyFilter> ring(double sigma, double plateau, double frequency,
                                              Size size) {
    return std::make_shared<Filter>(sigma, plateau, frequency,
                                    mvPair<long>(size.width, size.height), 1);
}

template <class Filter>
std::shared_ptr<const mvFrequencyFilter> lobe(Size size) {
    return std::make_shared<Filter>(mvPair<double>(0.02, 0.01), mvPair<double>(0.0, 0.0),
                                    mvRadian(0.4), 0.2, mvPair<long>(size.width, size.height), 1);
}

std::shared_ptr<const mvFrequencyFilter> filterOf(FilterKind kind, Size size) {
    switch (kind) {
        case FilterKind::NarrowRing:
            return ring<mvFrequencyFilterBandPass>(0.012, 0, 0.03, size);
        case FilterKind::StandardRing:
            return ring<mvFrequencyFilterBandPass>(0.02, 0.01, 0.06, size);
        case FilterKind::WideRing:
            return ring<mvFrequencyFilterBandPass>(0.02, 0.05, 0.12, size);
        case FilterKind::RingEverywhere:
            return ring<mvFrequencyFilterBandPass>(0.2, 0.1, 0.3, size);
        case FilterKind::RingReject:
            return ring<mvFrequencyFilterBandReject>(0.02, 0.01, 0.06, size);
        case FilterKind::Gabor:
            return lobe<mvFrequencyFilterGabor>(size);
        case FilterKind::GaborReject:
            return lobe<mvFrequencyFilterGaborReject>(size);
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
class Mvfreq : public PelPeer<T> {
  public:
    Mvfreq(std::string name, const Pipeline& work)
        : PelPeer<T>(std::move(name), work.image),
          filter_(work.filter),
          image_(work.image.width, work.image.height) {}

    T* inputRow(long y) override { return image_.pointToRow(y); }
    const T* resultRow(long y) const override { return result_.pointToRow(y); }

  protected:
    std::shared_ptr<const mvFrequencyFilter> filter_;
    mvPelBuffer<T> image_, result_;
};

// The result is written into the same image each time, as in a loop over frames; the peers pad with
// zeros, so this library does.
template <class T>
class OneCall : public Mvfreq<T> {
  public:
    OneCall(std::string name, const Pipeline& work, mvPair<long> margin, int threads)
        : Mvfreq<T>(std::move(name), work) {
        options_.border = mvBorder::zero;
        options_.margin = margin;
        options_.threads = threads;
    }

    void run() override { mfFilterImage<T>(this->image_, *this->filter_, this->result_, options_); }

  private:
    mvFilterImageOptions options_;
};

// A result that is bound costs a copy. The spectrum is kept: nothing but the result is written.
template <class T>
class ThreeCalls : public Mvfreq<T> {
  public:
    explicit ThreeCalls(const Pipeline& work) : Mvfreq<T>("mvfreq-three-calls", work) {}

    void prepare() override { this->result_ = {}; }
    void run() override {
        mfForwardFFT<T>(this->image_, spectrum_);
        this->filter_->apply(spectrum_);
        mfInverseFFT<T>(spectrum_, this->result_, false, false);
    }

  private:
    mvFrequencyBuffer spectrum_;
};

}  // namespace

Pipeline::Pipeline(FilterKind filterKind, Size imageSize)
    : Pipeline(filterKind, imageSize, {paddedSide(imageSize.width), paddedSide(imageSize.height)}) {
}

Pipeline::Pipeline(FilterKind filterKind, Size imageSize, Size plane)
    : kind(filterKind), image(imageSize), padded(plane), filter(filterOf(filterKind, padded)) {
    mvFrequencyBuffer ones = planeOfOnes(padded);
    filter->apply(ones);
    for (long y = 0; y < padded.height; ++y) {
        bool hasData = false;
        for (long x = 0; x < padded.width; ++x) {
            const mvPair<double> value = ones.get(x, y, false);
            response.emplace_back(static_cast<float>(value.x), static_cast<float>(value.y));
            hasData = hasData || response.back() != std::complex<float>();
        }
        rowHasData.push_back(hasData);
    }
}

std::optional<Pipeline::Columns> Pipeline::columnsOfLeftHalf() const {
    const auto isReached = [&](long x) {
        for (long y = 0; y < padded.height; ++y) {
            if (at(x, y) != std::complex<float>()) return true;
        }
        return false;
    };
    long first = 0, end = padded.width / 2 + 1;
    while (first + 1 < end && !isReached(first)) ++first;
    while (end - 1 > first && !isReached(end - 1)) --end;
    for (long x = padded.width / 2 + 1; !leavesReals() && x < padded.width; ++x) {
        if (isReached(x)) return std::nullopt;
    }
    return Columns{first, end - first};
}

const char* nameOf(FilterKind kind) {
    switch (kind) {
        case FilterKind::NarrowRing:
            return "narrow ring";
        case FilterKind::StandardRing:
            return "standard ring";
        case FilterKind::WideRing:
            return "wide ring";
        case FilterKind::RingEverywhere:
            return "ring everywhere";
        case FilterKind::RingReject:
            return "ring reject";
        case FilterKind::Gabor:
            return "gabor";
        case FilterKind::GaborReject:
            return "gabor reject";
        default:
            return "image";
    }
}

template <class T>
std::unique_ptr<PelPeer<T>> mvfreqOneCall(const Pipeline& work) {
    return std::make_unique<OneCall<T>>("mvfreq-one-call", work, mvPair<long>(-1, -1), 1);
}

std::unique_ptr<PelPeer<unsigned char>> mvfreqOfTiles(std::string name, const Pipeline& work,
                                                      long margin, int threads) {
    return std::make_unique<OneCall<unsigned char>>(std::move(name), work,
                                                    mvPair<long>(margin, margin), threads);
}

template std::unique_ptr<PelPeer<unsigned char>> mvfreqOneCall(const Pipeline&);
template std::unique_ptr<PelPeer<unsigned short>> mvfreqOneCall(const Pipeline&);

template <class T>
std::unique_ptr<PelPeer<T>> mvfreqThreeCalls(const Pipeline& work) {
    return std::make_unique<ThreeCalls<T>>(work);
}

template std::unique_ptr<PelPeer<unsigned char>> mvfreqThreeCalls(const Pipeline&);
template std::unique_ptr<PelPeer<unsigned short>> mvfreqThreeCalls(const Pipeline&);

}  // namespace bench
