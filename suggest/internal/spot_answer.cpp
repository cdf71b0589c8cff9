// What a filter makes of the middle of a spot.
#include "spot_answer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

// The transform of exp(-x^2 / (2 r^2)).
double lineSpectrum(double frequency, double radius) {
    const double t = kPi * radius * frequency;
    return std::sqrt(2 * kPi) * radius * std::exp(-2 * t * t);
}

double flank(double distance, double sigma, double plateau) {
    const double beyond = std::max(std::abs(distance) - plateau, 0.0) / sigma;
    return std::exp(-beyond * beyond / 2);
}

// Sums a smooth function by the middles of `count` steps.
template <class Function>
double integral(double from, double to, Function function) {
    constexpr int kCount = 192;
    const double step = (to - from) / kCount;
    double sum = 0;
    for (int i = 0; i < kCount; ++i) sum += function(from + (i + 0.5) * step);
    return sum * step;
}

bool isRing(const mvFilterStep& step) {
    return step.kind == mvFilterKind::bandPass;
}

double gain(const mvFilterStep& step, double u, double v) {
    if (isRing(step)) return flank(std::hypot(u, v) - step.frequency, step.sigma, step.plateau);
    return flank(u - step.frequency, step.sigma, step.plateau) *
           flank(v, step.sigmaAcross, step.plateauAcross);
}

double spectrum(const mvi::Bump& bump, double u, double v) {
    return lineSpectrum(u, bump.across) * lineSpectrum(v, bump.along);
}

double ringIntegral(const mvFilterStep& step, double radius) {
    const double reach = step.plateau + 4 * step.sigma;
    const double from = std::max(step.frequency - reach, 0.0);
    const double to = std::min(step.frequency + reach, std::min(0.5, from + 2 / radius));
    return integral(from, to, [&](double f) {
        return 2 * kPi * f * flank(f - step.frequency, step.sigma, step.plateau) *
               lineSpectrum(f, radius) * lineSpectrum(0, radius);
    });
}

double lobeIntegral(const mvFilterStep& step, const mvi::Bump& bump) {
    const double along = step.plateau + 4 * step.sigma, across = 4 * step.sigmaAcross;
    const double u = integral(step.frequency - along, step.frequency + along, [&](double f) {
        return flank(f - step.frequency, step.sigma, step.plateau) * lineSpectrum(f, bump.across);
    });
    const double v = integral(-across, across, [&](double f) {
        return flank(f, step.sigmaAcross, step.plateauAcross) * lineSpectrum(f, bump.along);
    });
    return u * v;
}

// What the square around DC takes away.
double squareSum(const mvFilterStep& step, const mvi::Bump& bump, mvPair<long> plane) {
    const auto width = static_cast<double>(plane.x), height = static_cast<double>(plane.y);
    const double turn = step.degrees * kPi / 180;
    double sum = 0;
    for (long y = 1 - step.dcRadius; y < step.dcRadius; ++y) {
        for (long x = 1 - step.dcRadius; x < step.dcRadius; ++x) {
            const double fx = static_cast<double>(x) / width, fy = static_cast<double>(y) / height;
            const double u = fx * std::cos(turn) + fy * std::sin(turn);
            const double v = fy * std::cos(turn) - fx * std::sin(turn);
            sum += gain(step, u, v) * spectrum(bump, u, v);
        }
    }
    return sum / (width * height);
}

}  // namespace

double mvi::spotAnswer(const mvFilterStep& step, const Bump& bump, mvPair<long> plane) {
    const double whole = isRing(step) ? ringIntegral(step, bump.across) : lobeIntegral(step, bump);
    return whole - squareSum(step, bump, plane);
}

mvPelBuffer<double> mvi::laidBump(const Bump& bump, double degrees, mvPair<long> size) {
    constexpr long kStep = 32;
    mvPelBuffer<double> image(size.x, size.y);
    const long x0 = size.x / 2 / kStep * kStep, y0 = size.y / 2 / kStep * kStep;
    const double turn = degrees * kPi / 180;
    for (long y = 0; y < size.y; ++y) {
        double* row = image.pointToRow(y);
        for (long x = 0; x < size.x; ++x) {
            const auto dx = static_cast<double>(x - x0), dy = static_cast<double>(y - y0);
            const double u = (dx * std::cos(turn) + dy * std::sin(turn)) / bump.across;
            const double v = (dy * std::cos(turn) - dx * std::sin(turn)) / bump.along;
            row[x] = std::exp(-(u * u + v * v) / 2);
        }
    }
    return image;
}
