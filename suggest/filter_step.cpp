// One filter as numbers: what a proposal consists of.
#include "filter_step.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <locale>
#include <numbers>
#include <sstream>
#include <utility>

#include "rounding.h"

namespace {

constexpr int kDigits = 3;

// The places behind the point that three significant digits take.
int placesOf(double value) {
    if (value == 0) return 0;
    const int whole = static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1;
    return std::clamp(kDigits - whole, 0, 12);
}

bool isRing(mvFilterKind kind) {
    return kind == mvFilterKind::bandPass || kind == mvFilterKind::bandReject;
}

template <class Filter>
std::unique_ptr<mvFrequencyFilter> ring(const mvFilterStep& step, mvPair<long> plane) {
    return std::make_unique<Filter>(step.sigma, step.plateau, step.frequency, plane, step.dcRadius);
}

template <class Filter>
std::unique_ptr<mvFrequencyFilter> lobe(const mvFilterStep& step, mvPair<long> plane) {
    return std::make_unique<Filter>(mvPair<double>(step.sigma, step.sigmaAcross),
                                    mvPair<double>(step.plateau, step.plateauAcross),
                                    mvRadian(step.degrees * std::numbers::pi / 180), step.frequency,
                                    plane, step.dcRadius);
}

struct Command {
    const char* name;
    std::unique_ptr<mvFrequencyFilter> (*build)(const mvFilterStep& step, mvPair<long> plane);
};

// In the order of the kinds.
constexpr std::array<Command, 4> kCommands{{
    {"bandpass", ring<mvFrequencyFilterBandPass>},
    {"bandreject", ring<mvFrequencyFilterBandReject>},
    {"gabor", lobe<mvFrequencyFilterGabor>},
    {"gaborreject", lobe<mvFrequencyFilterGaborReject>},
}};

const Command& commandOf(mvFilterKind kind) {
    return kCommands.at(static_cast<std::size_t>(kind));
}

void add(std::vector<std::string>& words, const char* option, double value) {
    words.insert(words.end(), {option, mfNumberText(value)});
}

// A default that is left out is the same filter: no plateau, the same across, no radius.
std::vector<std::string> argumentsOf(const mvFilterStep& step) {
    std::vector<std::string> words{commandOf(step.kind).name};
    add(words, "--frequency", step.frequency);
    const bool isLobe = !isRing(step.kind);
    if (isLobe) add(words, "--angle", step.degrees);
    add(words, "--sigma", step.sigma);
    if (isLobe && step.sigmaAcross != step.sigma) add(words, "--sigma-across", step.sigmaAcross);
    if (step.plateau != 0) add(words, "--plateau", step.plateau);
    if (isLobe && step.plateauAcross != step.plateau) {
        add(words, "--plateau-across", step.plateauAcross);
    }
    if (step.dcRadius != 0) add(words, "--dc-radius", static_cast<double>(step.dcRadius));
    if (step.bothSides) words.emplace_back("--both-sides");
    return words;
}

}  // namespace

double mfRoundedNumber(double value) {
    const double scale = std::pow(10.0, placesOf(value));
    return mfNearest(value * scale) / scale;
}

std::string mfNumberText(double value) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.setf(std::ios::fixed);
    text.precision(placesOf(value));
    text << (value == 0 ? 0.0 : value);  // no minus zero
    std::string digits = text.str();
    if (digits.find('.') == std::string::npos) return digits;
    digits.resize(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return digits;
}

std::vector<mvFilterStep> mfSingleSteps(const std::vector<mvFilterStep>& steps) {
    std::vector<mvFilterStep> single;
    for (mvFilterStep step : steps) {
        const bool hasMirror = std::exchange(step.bothSides, false);
        single.push_back(step);
        if (!hasMirror) continue;
        step.degrees += 180;
        single.push_back(step);
    }
    return single;
}

std::unique_ptr<mvFrequencyFilter> mfBuildFilter(const mvFilterStep& step, mvPair<long> plane) {
    return commandOf(step.kind).build(step, plane);
}

mvFilterChain mfBuildFilters(const std::vector<mvFilterStep>& steps, mvPair<long> plane) {
    mvFilterChain chain;
    for (const mvFilterStep& step : mfSingleSteps(steps)) chain.add(mfBuildFilter(step, plane));
    return chain;
}

mvPair<long> mfFiltersReach(const std::vector<mvFilterStep>& steps) {
    if (steps.empty()) return {};
    std::vector<mvFilterStep> anywhere = steps;
    // A radius above 0 has its room in the plane of the picture, which is not known here.
    for (mvFilterStep& step : anywhere) step.dcRadius = std::min(step.dcRadius, 0l);
    return mfFilterReach(mfBuildFilters(anywhere, {64, 64}).list());
}

std::vector<std::string> mfFilterArguments(const std::vector<mvFilterStep>& steps) {
    std::vector<std::string> words;
    for (const mvFilterStep& step : steps) {
        if (!words.empty()) words.emplace_back("then");
        const std::vector<std::string> more = argumentsOf(step);
        words.insert(words.end(), more.begin(), more.end());
    }
    return words;
}
