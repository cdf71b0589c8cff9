// Places of a spectrum that stand out of their surroundings.
#include "spectrum_peaks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "../rounding.h"
#include "../windowed_spectrum.h"
#include "poll.h"

namespace {

using mvi::DoubleImage;
using mvi::DoubleView;
using mvi::SpectrumPeak;

// White noise and the edges of things stand out by less.
constexpr double kLeastDecibels = 20;

// Weaker waves are made by the rounding of pels and sums, or by the window.
constexpr double kLeastPart = 1e-4;

// Half the width of a line, in bins of a picture as large as its plane.
constexpr double kLine = 4;

// What a window of Blackman and Harris leaves of a wave at its middle.
constexpr double kWindowMean = 0.35875;

double decibels(double naturalLogarithm) {
    return 10 * naturalLogarithm / std::numbers::ln10;
}

// The logarithms of the powers, and quick sums over rectangles of them.
class LogPower {
  public:
    explicit LogPower(const DoubleImage& magnitudes)
        : values_(magnitudes.width(), magnitudes.height()),
          sums_(magnitudes.width() + 1, magnitudes.height() + 1) {
        const double least = 1e-9 * mvi::largestSize(magnitudes) + 1e-300;
        for (long y = 0; y < side(); ++y) {
            mvi::pollRow(y);
            fillRow(magnitudes.pointToRow(y), y, least);
        }
    }

    long side() const { return values_.width(); }
    double at(long x, long y) const { return values_.pointToRow(y)[x]; }

    // The mean around a place, without the place itself.
    double around(long x, long y, long inner, long outer) const {
        const Sum hole = sum(x, y, inner), all = sum(x, y, outer);
        return (all.value - hole.value) / (all.count - hole.count);
    }

    // No other place within a line's width is higher.
    bool isTop(long x, long y) const {
        for (long v = y - 1; v <= y + 1; ++v) {
            for (long u = x - 1; u <= x + 1; ++u) {
                if (at(u, v) > at(x, y)) return false;
            }
        }
        return true;
    }

  private:
    struct Sum {
        double value, count;
    };

    void fillRow(const double* magnitudes, long y, double least) {
        double* to = values_.pointToRow(y);
        const double* above = sums_.pointToRow(y);
        double* total = sums_.pointToRow(y + 1);
        double row = 0;
        for (long x = 0; x < side(); ++x) {
            to[x] = 2 * std::log(std::max(magnitudes[x], least));
            row += to[x];
            total[x + 1] = above[x + 1] + row;
        }
    }

    // Over a square, as far as it lies in the plane.
    Sum sum(long x, long y, long half) const {
        const long x0 = std::max(x - half, 0l), x1 = std::min(x + half + 1, side());
        const long y0 = std::max(y - half, 0l), y1 = std::min(y + half + 1, side());
        const double *top = sums_.pointToRow(y0), *bottom = sums_.pointToRow(y1);
        return {bottom[x1] - bottom[x0] - top[x1] + top[x0],
                static_cast<double>((x1 - x0) * (y1 - y0))};
    }

    DoubleImage values_, sums_;
};

// The vertex of a parabola through three values, from -0.5 to 0.5.
double vertex(double left, double middle, double right) {
    const double bend = left - 2 * middle + right;
    return bend < 0 ? std::clamp((left - right) / (2 * bend), -0.5, 0.5) : 0;
}

// One search through a plane.
class Search {
  public:
    explicit Search(const DoubleView& picture)
        : magnitudes_(windowedSpectrum(picture)),
          logs_(magnitudes_),
          pels_(pelsOf(picture.width()) * pelsOf(picture.height())),
          line_(mfNearestLong(kLine * static_cast<double>(logs_.side()) /
                              std::min(pelsOf(picture.width()), pelsOf(picture.height())))),
          least_(kLeastPart * std::max(mvi::largestSize(magnitudes_),
                                       0.01 * pels_ * mvi::largestSize(picture))) {}

    std::vector<SpectrumPeak> find(long most) {
        const long middle = logs_.side() / 2;
        for (long y = 1; y < logs_.side() - 1; ++y) {
            mvi::pollRow(y);
            for (long x = middle; x < logs_.side() - 1; ++x) take(x, y);
        }
        std::stable_sort(found_.begin(), found_.end(), [](const Place& a, const Place& b) {
            return a.peak.amplitude > b.peak.amplitude;
        });
        return separate(most);
    }

  private:
    struct Place {
        long x, y;
        SpectrumPeak peak;
    };

    double pelsOf(long n) const { return static_cast<double>(std::min(n, magnitudes_.width())); }

    // Near DC is the light, which is no wave; lobes reach no further than half a cycle per pixel.
    bool isCounted(long x, long y) const {
        const long u = x - logs_.side() / 2, v = y - logs_.side() / 2;
        const bool isHalf = u > 0 || (u == 0 && v > 0);
        return isHalf && std::max(u, std::abs(v)) > 2 * line_ &&
               std::hypot(u, v) < static_cast<double>(logs_.side()) / 2;
    }

    void take(long x, long y) {
        if (!isCounted(x, y) || !logs_.isTop(x, y)) return;
        if (magnitudes_.pointToRow(y)[x] < least_) return;
        const double above = logs_.at(x, y) - logs_.around(x, y, 2 * line_, 6 * line_);
        if (decibels(above) >= kLeastDecibels) found_.push_back({x, y, peakAt(x, y, above)});
    }

    SpectrumPeak peakAt(long x, long y, double above) const {
        const auto side = static_cast<double>(logs_.side());
        const double middle = logs_.at(x, y);
        const double dx = vertex(logs_.at(x - 1, y), middle, logs_.at(x + 1, y));
        const double dy = vertex(logs_.at(x, y - 1), middle, logs_.at(x, y + 1));
        const double half = side / 2;
        return {(static_cast<double>(x) - half + dx) / side,
                (static_cast<double>(y) - half + dy) / side,
                2 * magnitudes_.pointToRow(y)[x] / (kWindowMean * kWindowMean * pels_),
                decibels(above),
                static_cast<double>(halfWidth(x, y, above)) / side,
                0.15 * static_cast<double>(line_) / side};
    }

    // How far the place reaches until it is halfway down to its surroundings.
    long halfWidth(long x, long y, double above) const {
        const double level = logs_.at(x, y) - above / 2;
        long widest = 1;
        for (const auto [dx, dy] :
             {mvPair<long>(1, 0), mvPair<long>(0, 1), mvPair<long>(1, 1), mvPair<long>(1, -1)}) {
            for (const long sign : {-1l, 1l}) {
                long steps = 1;
                while (steps < 4 * line_ &&
                       isAbove(x + sign * steps * dx, y + sign * steps * dy, level)) {
                    ++steps;
                }
                widest = std::max(widest, steps);
            }
        }
        return widest;
    }

    bool isAbove(long x, long y, double level) const {
        const bool isInside = x >= 0 && y >= 0 && x < logs_.side() && y < logs_.side();
        return isInside && logs_.at(x, y) > level;
    }

    // What lies beside a stronger place is its flank.
    std::vector<SpectrumPeak> separate(long most) const {
        std::vector<Place> kept;
        for (const Place& place : found_) {
            if (static_cast<long>(kept.size()) == most) break;
            const bool isFlank = std::any_of(kept.begin(), kept.end(), [&](const Place& other) {
                return std::max(std::abs(place.x - other.x), std::abs(place.y - other.y)) <=
                       3 * line_;
            });
            if (!isFlank) kept.push_back(place);
        }
        std::vector<SpectrumPeak> peaks(kept.size());
        std::transform(kept.begin(), kept.end(), peaks.begin(),
                       [](const Place& place) { return place.peak; });
        return peaks;
    }

    DoubleImage magnitudes_;
    LogPower logs_;
    double pels_;  // of a piece
    long line_;    // half a line's width in bins
    double least_;
    std::vector<Place> found_;
};

constexpr long kLeastSide = 16;

}  // namespace

std::vector<SpectrumPeak> mvi::spectrumPeaks(const DoubleView& picture, long most) {
    if (std::min(picture.width(), picture.height()) < kLeastSide) return {};
    return Search(picture).find(most);
}
