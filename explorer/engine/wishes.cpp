// What the page wishes, of JavaScript's values.
#include "wishes.h"

#include <string>

using emscripten::val;

namespace {

// The kinds of filters count as in mvFilterKind; this one is behind them.
constexpr int kConvolution = 4;

FilterSettings settingsOf(const val& from) {
    const int kind = from["kind"].as<int>();
    if (kind == kConvolution) return {.isConvolution = true};
    const auto number = [&](const char* name) { return from[name].as<double>(); };
    return {.step = {.kind = static_cast<mvFilterKind>(kind),
                     .frequency = number("frequency"),
                     .sigma = number("sigma"),
                     .plateau = number("plateau"),
                     .degrees = number("angle"),
                     .sigmaAcross = number("sigmaAcross"),
                     .plateauAcross = number("plateauAcross"),
                     .dcRadius = from["dcRadius"].as<long>(),
                     .bothSides = from["bothSides"].as<bool>()}};
}

}  // namespace

std::vector<FilterSettings> filtersOf(const val& settings) {
    std::vector<FilterSettings> filters;
    for (const val& each : emscripten::vecFromJSArray<val>(settings["filters"])) {
        filters.push_back(settingsOf(each));
    }
    return filters;
}

ResultWish wishOf(const val& from) {
    ResultWish wish;
    if (from["border"].as<std::string>() == "zero") wish.border = mvBorder::zero;
    if (!from["rescale"].isNull()) wish.percent = from["rescale"].as<double>();
    wish.withSign = from["signed"].as<bool>();
    return wish;
}
