// The patch of a lobe: its size, its gains and its place.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/patch.h>
#include <filt/freqfilt/internal/support.h>
#include <internal/product.h>

#include <cmath>
#include <utility>
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

    const std::int64_t halfWidth = patch.width() >> 1, halfHeight = patch.height() >> 1;
    float* gain = patch.data();
    for (std::int64_t j = -halfHeight; j <= halfHeight; ++j) {
        const double y = (static_cast<double>(j) - fy) / bins.aspect;
        for (std::int64_t i = -halfWidth; i <= halfWidth; ++i) {
            const mvVector<2> inLobe = turn * mvVector<2>(static_cast<double>(i) - fx, y);
            const double du = std::max(std::abs(inLobe.x()) - bins.plateau.x, 0.0);
            const double dv = std::max(std::abs(inLobe.y()) - bins.plateau.y, 0.0);
            const double falloff = std::exp(product(dv * dv, ky) + product(du * du, kx));
            *gain++ = static_cast<float>(complement ? 1.0 - falloff : falloff);
        }
    }
}

namespace {

// A loaded record may hold more rows than its size says, which the last one then is read from.
std::int64_t rowsHeld(const mvFilterResponse& patch) {
    return patch.width() > 0 ? static_cast<std::int64_t>(patch.floats()) / patch.width() : 0;
}

}  // namespace

PatchPlacement::PatchPlacement(const mvLobeParameters& lobe, const mvFilterResponse& patch)
    : width(lobe.size.x), height(lobe.size.y) {
    const double cosine = std::cos(lobe.angle.toDouble());
    const double sine = std::sin(lobe.angle.toDouble());
    const auto w = static_cast<double>(width), h = static_cast<double>(height);
    const double distance = w * lobe.frequency;
    const std::int64_t column = truncate<std::int32_t>(cosine * distance) + width / 2;
    const std::int64_t row = truncate<std::int32_t>(sine * distance * (h * (1.0 / w))) + height / 2;
    const std::int64_t halfWidth = patch.width() >> 1, halfHeight = patch.height() >> 1;
    colMin = column - halfWidth;
    rowMin = row - halfHeight;
    rowMax = row + halfHeight;
    colEnd = std::min(column + halfWidth, width);
    rowEnd = std::min({rowMax + 1, rowMin + rowsHeld(patch), height});
}

namespace {

// The gains of a lobe in rows of a plane, where DC is column 0.
class LobeRows {
  public:
    LobeRows(const PatchPlacement& at, const mvFilterResponse& patch, float outside,
             std::int64_t dcRadius)
        : at_(at),
          patch_(patch),
          outside_(outside),
          dcRadius_(dcRadius),
          begin_(std::max<std::int64_t>(at.colMin, 0)),
          end_(std::max(at.colEnd, begin_)) {}

    // The first of the columns 0 to W/2 that has a gain, directly or opposite of it, and the end.
    mvPair<long> columns() const {
        const std::int64_t middle = at_.width / 2;
        const std::int64_t first = begin_ - middle, last = end_ - 1 - middle;
        if (begin_ == end_) return {0, 0};
        const std::int64_t least = first > 0 ? first : last < 0 ? -last : 0;
        const std::int64_t most = std::max(std::abs(first), std::abs(last));
        return {static_cast<long>(least), static_cast<long>(most + 1)};
    }

    bool reaches(std::int64_t y) const { return rowOfPatch(y) != nullptr; }

    // Whether all gains of row y are those outside.
    bool isPlain(std::int64_t y) const { return !reaches(y) && !isInSquare(y); }

    void fill(std::int64_t y, std::vector<float>& gains) const {
        std::fill(gains.begin(), gains.end(), outside_);
        if (const float* const patch = rowOfPatch(y)) {
            // What stands left of the middle comes behind the rest of the row.
            const std::int64_t half = at_.width / 2;
            copyRun(patch, begin_, std::min(end_, half), gains, half);
            copyRun(patch, std::max(begin_, half), end_, gains, -half);
        }
        // The square around DC is cleared by a filter that keeps the lobe, and kept by the other.
        if (!isInSquare(y)) return;
        std::fill_n(gains.begin(), dcRadius_, outside_);
        std::fill_n(gains.rbegin(), std::max<std::int64_t>(dcRadius_ - 1, 0), outside_);
    }

  private:
    // The columns begin .. end - 1 of a row of the patch, moved by `shift`.
    void copyRun(const float* patch, std::int64_t begin, std::int64_t end,
                 std::vector<float>& gains, std::int64_t shift) const {
        if (begin >= end) return;
        std::copy_n(patch + (begin - at_.colMin), end - begin, gains.data() + (begin + shift));
    }

    bool isInSquare(std::int64_t y) const { return std::min(y, at_.height - y) < dcRadius_; }

    // Null outside of the patch.
    const float* rowOfPatch(std::int64_t y) const {
        const std::int64_t row = (y + at_.height / 2) % at_.height;
        if (row < at_.rowMin || row >= at_.rowEnd) return nullptr;
        return patch_.data() + (row - at_.rowMin) * patch_.width();
    }

    const PatchPlacement& at_;
    const mvFilterResponse& patch_;
    float outside_;
    std::int64_t dcRadius_, begin_, end_;
};

}  // namespace

SpectrumRowGains spectrumGains(const PatchPlacement& at, const mvFilterResponse& patch,
                               bool keepsOutside, std::int64_t dcRadius) {
    const LobeRows lobe(at, patch, keepsOutside ? 1.0f : kClearedGain, dcRadius);
    const mvPair<long> size(static_cast<long>(at.width), static_cast<long>(at.height));
    const mvPair<long> columns = keepsOutside ? mvPair<long>(0, size.x / 2 + 1) : lobe.columns();
    SpectrumRowGains result(size, columns.x, columns.y);
    std::vector<float> gains(static_cast<std::size_t>(size.x));
    bool isPlain = false;
    for (long y = 0; y < size.y && columns.x < columns.y; ++y) {
        if (!keepsOutside && !lobe.reaches(y)) continue;
        const bool wasPlain = std::exchange(isPlain, lobe.isPlain(y));
        if (wasPlain && isPlain) {
            result.repeat(y);
        } else {
            lobe.fill(y, gains);
            result.enter(y, gains);
        }
    }
    return result;
}

}  // namespace mvi
