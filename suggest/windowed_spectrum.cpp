// How strong the frequencies of a picture are.
#include "windowed_spectrum.h"

#include <filt/fft.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <vector>

#include "internal/poll.h"

namespace {

constexpr long kLargestSide = 2048;

std::vector<double> blackmanHarris(long length) {
    std::vector<double> window;
    for (long i = 0; i < length; ++i) {
        const double t =
            2 * std::numbers::pi * (static_cast<double>(i) + 0.5) / static_cast<double>(length);
        window.push_back(0.35875 - 0.48829 * std::cos(t) + 0.14128 * std::cos(2 * t) -
                         0.01168 * std::cos(3 * t));
    }
    return window;
}

// One axis, in pieces as long as a plane; neighbours overlap by half at least.
struct Pieces {
    long length, count, last;

    Pieces(long picture, long side)
        : length(std::min(picture, side)),
          count(1 + (2 * (picture - length) + length - 1) / length),
          last(picture - length) {}

    long begin(long number) const { return count == 1 ? 0 : last * number / (count - 1); }
};

// One piece after the other, on the middle of nothing: the phases are not looked at.
template <class T>
class PieceSpectrum {
  public:
    PieceSpectrum(const mvPelBuffer_const<T>& picture, long width, long height, long side)
        : picture_(picture),
          across_(blackmanHarris(width)),
          down_(blackmanHarris(height)),
          plane_(side, side) {}

    void addPower(long x, long y, mvPelBuffer<double>& power) {
        fade(x, y, meanFrom(x, y));
        mfForwardFFT(plane_, spectrum_);
        const mvPelBuffer<double> magnitudes = spectrum_.getMagnitudeImage(true);
        for (long v = 0; v < power.height(); ++v) {
            const double* from = magnitudes.pointToRow(v);
            double* to = power.pointToRow(v);
            for (long u = 0; u < power.width(); ++u) to[u] += from[u] * from[u];
        }
    }

  private:
    // Calls each(pel, weight, x, y) for the pels of a piece.
    template <class Each>
    void visit(long x, long y, Each each) {
        for (std::size_t j = 0; j < down_.size(); ++j) {
            mvi::pollRow(static_cast<long>(j));
            const T* row = picture_.pointToRow(y + static_cast<long>(j)) + x;
            for (std::size_t i = 0; i < across_.size(); ++i) {
                each(static_cast<double>(row[i]), across_[i] * down_[j], i, j);
            }
        }
    }

    // As the window weighs it, so that nothing is left at the zero frequency.
    double meanFrom(long x, long y) {
        double sum = 0, weights = 0;
        visit(x, y, [&](double pel, double weight, std::size_t, std::size_t) {
            sum += weight * pel;
            weights += weight;
        });
        return sum / weights;
    }

    void fade(long x, long y, double mean) {
        visit(x, y, [&](double pel, double weight, std::size_t i, std::size_t j) {
            plane_.pointToRow(static_cast<long>(j))[i] = weight * (pel - mean);
        });
    }

    const mvPelBuffer_const<T>& picture_;
    const std::vector<double> across_, down_;
    mvPelBuffer<double> plane_;
    mvFrequencyBuffer spectrum_;
};

long planeSide(const mv_PelBuffer& picture) {
    const long longer = std::max(picture.width(), picture.height());
    return std::min(kLargestSide,
                    static_cast<long>(std::bit_ceil(static_cast<unsigned long>(longer))));
}

void takeRoots(mvPelBuffer<double>& power, double pieces) {
    for (long y = 0; y < power.height(); ++y) {
        double* row = power.pointToRow(y);
        std::transform(row, row + power.width(), row,
                       [pieces](double sum) { return std::sqrt(sum / pieces); });
    }
}

}  // namespace

template <class T>
mvPelBuffer<double> windowedSpectrum(const mvPelBuffer_const<T>& picture) {
    const long side = planeSide(picture);
    const Pieces across(picture.width(), side), down(picture.height(), side);
    PieceSpectrum<T> pieces(picture, across.length, down.length, side);
    mvPelBuffer<double> power(side, side);
    for (long y = 0; y < down.count; ++y) {
        for (long x = 0; x < across.count; ++x) {
            pieces.addPower(across.begin(x), down.begin(y), power);
        }
    }
    takeRoots(power, static_cast<double>(across.count * down.count));
    return power;
}

long windowedSpectrumPolls(const mv_PelBuffer& picture) {
    const long side = planeSide(picture);
    const Pieces across(picture.width(), side), down(picture.height(), side);
    return across.count * down.count * (down.length / 8 + 3 * side / 16);
}

template mvPelBuffer<double> windowedSpectrum(const mvPelBuffer_const<unsigned char>&);
template mvPelBuffer<double> windowedSpectrum(const mvPelBuffer_const<unsigned short>&);
template mvPelBuffer<double> windowedSpectrum(const mvPelBuffer_const<double>&);
