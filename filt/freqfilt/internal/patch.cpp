// The patch of a lobe: its size, its gains and its place.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/patch.h>
#include <filt/freqfilt/internal/support.h>
#include <internal/product.h>

#include <cmath>
#include <vector>

namespace mvi {

namespace {

// A lobe in bins along x; distances along y come into the same unit by the aspect factor.
struct LobeInBins {
    explicit LobeInBins(const mvLobeParameters& lobe)
        : width(static_cast<double>(lobe.size.x)),
          height(static_cast<double>(lobe.size.y)),
          aspect(height / width),
          sigma(width * lobe.sigma.x, width * lobe.sigma.y),
          plateau(product(width, lobe.plateau.x), product(width, lobe.plateau.y)),
          cosine(std::cos(lobe.angle.toDouble())),
          sine(std::sin(lobe.angle.toDouble())) {}

    double width, height, aspect;
    mvPair<double> sigma, plateau;
    double cosine, sine;
};

// How far the lobe's centre lies beyond the whole bin below it.
double subBin(double centre) {
    return centre - std::trunc(centre);
}

}  // namespace

mvPair<std::int32_t> lobeSupport(const mvLobeParameters& lobe) {
    const LobeInBins bins(lobe);
    const double c = std::abs(bins.cosine), s = std::abs(bins.sine);
    const mvPair<double> sigma = bins.sigma, plateau = bins.plateau;
    const double width = product(8.0, std::max(c * sigma.x, s * sigma.y)) +
                         product(2.0, std::max(c * plateau.x, s * plateau.y)) +
                         product(0.05, bins.width);
    const double height = product(2.0 * std::max(c * plateau.y, s * plateau.x), bins.aspect) +
                          product(8.0 * std::max(c * sigma.y, s * sigma.x), bins.aspect) +
                          product(0.05, bins.height);
    return {oddSide(width), oddSide(height)};
}

void fillLobePatch(const mvLobeParameters& lobe, bool complement, mvFilterResponse& patch) {
    const LobeInBins bins(lobe);
    const double distance = bins.width * lobe.frequency;
    const double fx =
        subBin(product(bins.cosine, distance) + static_cast<double>(lobe.size.x >> 1));
    const double fy =
        subBin(product(bins.sine * distance, bins.aspect) + static_cast<double>(lobe.size.y >> 1));
    const double kx = 1.0 / (-2.0 * bins.sigma.x * bins.sigma.x);
    const double ky = 1.0 / (-2.0 * bins.sigma.y * bins.sigma.y);
    const mvXform<2> turn(mvMatrix<2>(1.0, 1.0, mvRadian(0.0), -lobe.angle), mvVector<2>(0.0, 0.0));

    const long halfWidth = patch.width() >> 1, halfHeight = patch.height() >> 1;
    float* gain = patch.data();
    for (long j = -halfHeight; j <= halfHeight; ++j) {
        const double y = (static_cast<double>(j) - fy) / bins.aspect;
        for (long i = -halfWidth; i <= halfWidth; ++i) {
            const mvVector<2> inLobe = turn * mvVector<2>(static_cast<double>(i) - fx, y);
            const double du = std::max(std::abs(inLobe.x()) - bins.plateau.x, 0.0);
            const double dv = std::max(std::abs(inLobe.y()) - bins.plateau.y, 0.0);
            const double falloff = std::exp(product(dv * dv, ky) + product(du * du, kx));
            *gain++ = static_cast<float>(complement ? 1.0 - falloff : falloff);
        }
    }
}

PatchPlacement::PatchPlacement(const mvLobeParameters& lobe, const mvFilterResponse& patch)
    : width(lobe.size.x), height(lobe.size.y) {
    const double cosine = std::cos(lobe.angle.toDouble());
    const double sine = std::sin(lobe.angle.toDouble());
    const auto w = static_cast<double>(width), h = static_cast<double>(height);
    const double distance = w * lobe.frequency;
    const long column = truncate<std::int32_t>(cosine * distance) + width / 2;
    const long row = truncate<std::int32_t>(sine * distance * (h * (1.0 / w))) + height / 2;
    const long halfWidth = patch.width() >> 1, halfHeight = patch.height() >> 1;
    colMin = column - halfWidth;
    colMax = column + halfWidth;
    rowMin = row - halfHeight;
    rowMax = row + halfHeight;
}

namespace {

// The gains of a lobe on half a plane, row by row.
class HalfPlaneOfLobe {
  public:
    HalfPlaneOfLobe(const PatchPlacement& at, const mvFilterResponse& patch, bool keepsOutside,
                    long dcRadius)
        : at_(at),
          patch_(patch),
          outside_(keepsOutside ? 1.0f : kClearedGain),
          dcRadius_(dcRadius),
          middle_(at.width / 2),
          begin_(std::max(at.colMin, 0L)),
          end_(std::max(at.colEnd(patch), begin_)) {}

    // How many columns from 0 on have a gain, directly or mirrored.
    long columns() const {
        if (outside_ == outside_ || begin_ == 0) return middle_ + 1;
        if (begin_ == end_) return 1;
        return std::max(end_ - 1 - middle_, middle_ - begin_) + 1;
    }

    // The gains of row y of the plane: column x stands at middle + x, and column W/2 at 0.
    void direct(long y, std::vector<float>& gains) const {
        const float* const patch = clearAndFind(y, gains);
        if (patch != nullptr) {
            for (long c = std::max(begin_, middle_); c < end_; ++c) {
                at(gains, c - middle_) = patch[c - at_.colMin];
            }
            if (begin_ == 0 && end_ > 0) gains.back() = patch[-at_.colMin];
        }
        protect(y, gains, 0);
    }

    // Those of the elements (W - x, H - y), which stand at middle - x.
    void mirrored(long y, std::vector<float>& gains) const {
        const float* const patch = clearAndFind(y == 0 ? 0 : at_.height - y, gains);
        if (patch != nullptr) {
            const long last = std::min(end_, middle_);
            for (long c = std::max(begin_, 1L); c < last; ++c) {
                at(gains, middle_ - c) = patch[c - at_.colMin];
            }
        }
        protect(y, gains, 1);
        if (outside_ == outside_) return;
        gains.front() = kClearedGain;
        if (static_cast<long>(gains.size()) > middle_) gains.back() = kClearedGain;
    }

  private:
    static float& at(std::vector<float>& gains, long i) {
        return gains[static_cast<std::size_t>(i)];
    }

    // The row of the patch that lies on row y of the plane; null outside of it.
    const float* clearAndFind(long y, std::vector<float>& gains) const {
        std::fill(gains.begin(), gains.end(), outside_);
        const long row = (y + at_.height / 2) % at_.height;
        if (row < at_.rowMin || row >= at_.rowEnd(patch_)) return nullptr;
        return patch_.data() + (row - at_.rowMin) * patch_.width();
    }

    // The square around DC is cleared by a filter that keeps the lobe, and kept by the other one.
    void protect(long y, std::vector<float>& gains, long first) const {
        if (std::min(y, at_.height - y) >= dcRadius_) return;
        const long end = std::min(dcRadius_, static_cast<long>(gains.size()));
        for (long x = first; x < end; ++x) at(gains, x) = outside_;
    }

    const PatchPlacement& at_;
    const mvFilterResponse& patch_;
    float outside_;
    long dcRadius_, middle_, begin_, end_;
};

}  // namespace

SpectrumGains spectrumGains(const PatchPlacement& at, const mvFilterResponse& patch,
                            bool keepsOutside, long dcRadius) {
    const HalfPlaneOfLobe lobe(at, patch, keepsOutside, dcRadius);
    SpectrumGains result({at.width, at.height}, lobe.columns());
    std::vector<float> direct(static_cast<std::size_t>(lobe.columns())), mirrored(direct);
    for (long y = 0; y < at.height; ++y) {
        lobe.direct(y, direct);
        lobe.mirrored(y, mirrored);
        result.enterBoth(y, direct, mirrored);
    }
    result.finish();
    return result;
}

}  // namespace mvi
