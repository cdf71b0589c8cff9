// Proposed filters as a picture.
#include "proposal_plot.h"

#include <suggest/rounding.h>
#include <suggest/windowed_spectrum.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "attention.h"
#include "axes.h"
#include "logarithmic_pels.h"
#include "tiny_font.h"

namespace {

using Canvas = mvPelBuffer<unsigned char>;

constexpr unsigned char kWhite = 255, kBlack = 0;
constexpr long kLeft = 60, kTop = 12, kWidth = 512, kHeight = 256, kBottom = 40;

// A logarithmic axis over so many pels.
struct LogAxis {
    double low, high;
    long pels;

    double position(double value) const {
        return static_cast<double>(pels) * std::log(value / low) / std::log(high / low);
    }
};

void fill(const Canvas& canvas, long x, long y, long width, long height, unsigned char value) {
    Canvas part = canvas.window(x, y, width, height);
    mfPelSet_U8(part, value);
}

void dot(const Canvas& canvas, double x, double y, long half, unsigned char value) {
    const long u = mfNearestLong(x), v = mfNearestLong(y);
    for (long j = std::max(v - half, 0l); j <= std::min(v + half, canvas.height() - 1); ++j) {
        for (long i = std::max(u - half, 0l); i <= std::min(u + half, canvas.width() - 1); ++i) {
            canvas.pointToRow(j)[i] = value;
        }
    }
}

// The curve of the grey levels.
class Curve {
  public:
    explicit Curve(const std::vector<mvSuggestion>& filters)
        : filters_(filters), canvas_(kLeft + kWidth + 24, kTop + kHeight + kBottom) {
        const auto [least, most] = std::minmax_element(
            filters.begin(), filters.end(),
            [](const mvSuggestion& a, const mvSuggestion& b) { return a.levels < b.levels; });
        radii_ = {filters.front().radius / 1.2, filters.back().radius * 1.2, kWidth};
        levels_ = {least->levels / 1.3, most->levels * 1.3, kHeight};
    }

    Canvas draw() const {
        fill(canvas_, 0, 0, canvas_.width(), canvas_.height(), kWhite);
        for (const long edge : {kTop, kTop + kHeight}) {
            fill(canvas_, kLeft, edge, kWidth, 1, kBlack);
        }
        for (const long edge : {kLeft, kLeft + kWidth}) {
            fill(canvas_, edge, kTop, 1, kHeight, kBlack);
        }
        drawRadii();
        drawLevels();
        for (std::size_t at = 0; at < filters_.size(); ++at) drawPoint(at);
        return canvas_;
    }

  private:
    double x(double radius) const { return static_cast<double>(kLeft) + radii_.position(radius); }
    double y(double levels) const {
        return static_cast<double>(kTop + kHeight) - levels_.position(levels);
    }

    void drawPoint(std::size_t at) const {
        const mvSuggestion& here = filters_[at];
        dot(canvas_, x(here.radius), y(here.levels), 3, kBlack);
        if (at + 1 == filters_.size()) return;
        const mvSuggestion& next = filters_[at + 1];
        for (int i = 0; i < kWidth; ++i) {
            const double t = static_cast<double>(i) / kWidth;
            dot(canvas_, std::lerp(x(here.radius), x(next.radius), t),
                std::lerp(y(here.levels), y(next.levels), t), 0, kBlack);
        }
    }

    void drawRadii() const {
        for (const mvSuggestion& each : filters_) {
            const long at = mfNearestLong(x(each.radius));
            fill(canvas_, at, kTop + kHeight, 1, 5, kBlack);
            const std::string number = mfNumberText(each.radius);
            writeText(canvas_, number, at - textWidth(number, 1) / 2, kTop + kHeight + 8, 1);
        }
        writeLine("radius in pels", kTop + kHeight + 24);
    }

    // 1, 2, 5, 10, ...
    void drawLevels() const {
        writeText(canvas_, "grey", 4, kTop, 1);
        writeText(canvas_, "levels", 4, kTop + 12, 1);
        for (int power = -3; power < 6; ++power) {
            for (const double digit : {1, 2, 5}) {
                drawLevel(mfRoundedNumber(digit * std::pow(10.0, power)));
            }
        }
    }

    void drawLevel(double levels) const {
        if (levels < levels_.low || levels > levels_.high) return;
        const long at = mfNearestLong(y(levels));
        fill(canvas_, kLeft - 5, at, 5, 1, kBlack);
        const std::string number = mfNumberText(levels);
        if (at > kTop + 24) {
            writeText(canvas_, number, kLeft - 8 - textWidth(number, 1), at - 3, 1);
        }
    }

    void writeLine(const char* text, long row) const {
        writeText(canvas_, text, kLeft + (kWidth - textWidth(text, 1)) / 2, row, 1);
    }

    const std::vector<mvSuggestion>& filters_;
    LogAxis radii_{}, levels_{};
    Canvas canvas_;
};

// Dots all the way round a ring, or where a lobe is.
void mark(const Canvas& spectrum, const mvFilterStep& step) {
    const double middle = static_cast<double>(spectrum.width()) / 2;
    const double length = step.frequency * static_cast<double>(spectrum.width());
    const bool isLobe = step.kind != mvFilterKind::bandPass;
    const int dots = std::clamp(static_cast<int>(length), 12, 720);
    for (int i = 0; i < dots; ++i) {
        const double turn = 2 * std::numbers::pi * i / dots;
        const double angle = isLobe ? step.degrees * std::numbers::pi / 180 : turn;
        const double around = isLobe ? step.sigma * static_cast<double>(spectrum.width()) : 0;
        dot(spectrum, middle + length * std::cos(angle) + around * std::cos(turn),
            middle + length * std::sin(angle) + around * std::sin(turn), spectrum.width() / 1024,
            i % 2 == 0 ? kWhite : kBlack);
    }
}

Canvas spectrumWith(const mvPelBuffer<double>& picture, const std::vector<mvSuggestion>& filters) {
    beginStage("transforming", windowedSpectrumPolls(picture));
    const Canvas shown = logarithmicPels(windowedSpectrum(picture));
    for (const mvSuggestion& each : filters) {
        for (const mvFilterStep& step : mfSingleSteps(each.steps)) mark(shown, step);
    }
    const auto side = static_cast<double>(shown.width());
    return withAxes(shown, {side, side});
}

Canvas below(const Canvas& upper, const Canvas& lower) {
    Canvas both(std::max(upper.width(), lower.width()), upper.height() + lower.height());
    fill(both, 0, 0, both.width(), both.height(), kWhite);
    Canvas first = both.window(0, 0, upper.width(), upper.height());
    Canvas second = both.window(0, upper.height(), lower.width(), lower.height());
    for (Canvas* part : {&first, &second}) part->offset(0, 0);
    mfPelCopy(upper, first);
    mfPelCopy(lower, second);
    return both;
}

}  // namespace

mvPelBuffer<unsigned char> proposalPlot(const mvPelBuffer<double>& picture,
                                        const std::vector<mvSuggestion>& filters) {
    const Canvas spectrum = spectrumWith(picture, filters);
    return filters.empty() ? spectrum : below(Curve(filters).draw(), spectrum);
}
