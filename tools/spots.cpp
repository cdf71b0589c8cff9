// What stands out in the result of a filter.
#include "spots.h"

#include <algorithm>
#include <tuple>

#include "attention.h"

namespace {

constexpr long kReach = 4;  // of a pel to the next one of its spot: a gap of three pels

// Pels that are taken are below all thresholds.
constexpr double kTaken = -1;

// A spot from its first pel on.
class Growth {
  public:
    Growth(mvPelBuffer<double>& strengths, double least) : strengths_(strengths), least_(least) {}

    Spot from(long x, long y) {
        spot_ = {x, y, x, y, 1, 1, 0, 0};
        take(x, y);
        while (!open_.empty()) {
            const mvPair<long> at = open_.back();
            open_.pop_back();
            takeAround(at.x, at.y);
        }
        return spot_;
    }

  private:
    void takeAround(long x, long y) {
        const long top = std::max(y - kReach, 0L), left = std::max(x - kReach, 0L);
        const long bottom = std::min(y + kReach + 1, strengths_.height());
        const long right = std::min(x + kReach + 1, strengths_.width());
        for (long v = top; v < bottom; ++v) {
            const double* row = strengths_.pointToRow(v);
            for (long u = left; u < right; ++u) {
                if (row[u] > least_) take(u, v);
            }
        }
    }

    void take(long x, long y) {
        double& strength = strengths_.pointToRow(y)[x];
        if (std::tuple(-strength, y, x) < std::tuple(-spot_.strength, spot_.y, spot_.x)) {
            spot_.strength = strength;
            spot_.x = x;
            spot_.y = y;
        }
        strength = kTaken;
        ++spot_.pels;
        enclose(x, y);
        open_.emplace_back(x, y);
    }

    void enclose(long x, long y) {
        const long right = std::max(spot_.left + spot_.width, x + 1);
        const long bottom = std::max(spot_.top + spot_.height, y + 1);
        spot_.left = std::min(spot_.left, x);
        spot_.top = std::min(spot_.top, y);
        spot_.width = right - spot_.left;
        spot_.height = bottom - spot_.top;
    }

    mvPelBuffer<double>& strengths_;
    const double least_;
    Spot spot_{};
    std::vector<mvPair<long>> open_;
};

bool isStronger(const Spot& a, const Spot& b) {
    return std::tuple(-a.strength, a.y, a.x) < std::tuple(-b.strength, b.y, b.x);
}

}  // namespace

std::vector<Spot> findSpots(mvPelBuffer<double>& strengths, double threshold) {
    std::vector<Spot> spots;
    Growth growth(strengths, threshold / 2);
    for (long y = 0; y < strengths.height(); ++y) {
        checkInterrupted();
        const double* row = strengths.pointToRow(y);
        for (long x = 0; x < strengths.width(); ++x) {
            if (row[x] > threshold) spots.push_back(growth.from(x, y));
        }
    }
    std::sort(spots.begin(), spots.end(), isStronger);
    return spots;
}
