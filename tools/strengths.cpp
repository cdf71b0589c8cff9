// How far the pels of a result stand out.
#include "strengths.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "attention.h"
#include "median.h"

namespace {

constexpr double kNormalSpread = 1.4826;  // of a normal distribution, in median distances
constexpr double kLeastSpread = 0.001;

using Values = mvPelBuffer<double>;

// How much larger than that of all pels the spreads of an axis' lines are, from the inside to both
// edges. What a wave leaves there swings and grows: of lines further inside, the largest counts.
template <class DistancesOf>
std::vector<double> edgeSpreads(long lines, long reach, double all, DistancesOf distancesOf) {
    std::vector<double> more(static_cast<std::size_t>(lines)), distances;
    double most[] = {0, 0};
    for (long line = std::min(reach, lines / 4); line-- > 0;) {
        checkInterrupted();
        const long ends[] = {line, lines - 1 - line};
        for (int end = 0; end < 2; ++end) {
            distancesOf(ends[end], distances);
            most[end] = std::max(most[end], kNormalSpread * median(distances) - all);
            more[static_cast<std::size_t>(ends[end])] = most[end];
        }
    }
    return more;
}

std::vector<double> rowSpreads(const Values& values, long reach, double middle, double all) {
    return edgeSpreads(values.height(), reach, all, [&](long y, std::vector<double>& distances) {
        const double* row = values.pointToRow(y);
        distances.assign(row, row + values.width());
        for (double& each : distances) each = std::abs(each - middle);
    });
}

std::vector<double> columnSpreads(const Values& values, long reach, double middle, double all) {
    return edgeSpreads(values.width(), reach, all, [&](long x, std::vector<double>& distances) {
        distances.clear();
        for (long y = 0; y < values.height(); ++y) {
            distances.push_back(std::abs(values.pointToRow(y)[x] - middle));
        }
    });
}

}  // namespace

void toStrengths(Values& values, mvPair<long> reach) {
    const double middle = median(values);
    const double spread = std::max(kNormalSpread * medianDistance(values, middle), kLeastSpread);
    const std::vector<double> down = rowSpreads(values, reach.y, middle, spread);
    const std::vector<double> across = columnSpreads(values, reach.x, middle, spread);
    for (long y = 0; y < values.height(); ++y) {
        double* row = values.pointToRow(y);
        const double ofRow = spread + down[static_cast<std::size_t>(y)];
        std::transform(
            row, row + values.width(), across.begin(), row,
            [=](double value, double more) { return std::abs(value - middle) / (ofRow + more); });
    }
}
