// What should be known besides the proposals.
#include "remarks.h"

#include <algorithm>
#include <cmath>

namespace {

using Found = std::vector<mvSuggestion>;

bool isFound(const Found& found, double radius) {
    return std::any_of(found.begin(), found.end(),
                       [radius](const mvSuggestion& each) { return each.radius == radius; });
}

// "24, 32 and 48"
std::string listed(const std::vector<double>& numbers) {
    std::string text;
    for (std::size_t at = 0; at < numbers.size(); ++at) {
        if (at > 0) text += at + 1 == numbers.size() ? " and " : ", ";
        text += mfNumberText(numbers[at]);
    }
    return text;
}

void addLeftOut(std::vector<std::string>& remarks, const Found& found,
                const mvSuggestOptions& options) {
    std::vector<double> missing;
    for (const double radius : options.radii) {
        if (!isFound(found, radius)) missing.push_back(radius);
    }
    if (missing.empty()) return;
    remarks.push_back("Left out: radius " + listed(missing) +
                      ". The shorter side of a picture must be eight times the radius.");
}

void addUnseen(std::vector<std::string>& remarks, const Found& found, double white) {
    std::vector<double> unseen;
    for (const mvSuggestion& each : found) {
        if (white > 0 && each.levels > white) unseen.push_back(each.radius);
    }
    if (unseen.empty()) return;
    remarks.push_back("Radius " + listed(unseen) +
                      ": the surface hides spots of this size, there "
                      "are not so many grey levels.");
}

// Behind the best filters for white noise the levels fall as 1 / radius.
bool isNoise(const Found& found) {
    constexpr std::size_t kEnough = 4;
    if (found.size() < kEnough) return false;
    std::vector<double> products;
    for (const mvSuggestion& each : found) products.push_back(each.levels * each.radius);
    const auto [least, most] = std::minmax_element(products.begin(), products.end());
    return *most < 1.3 * *least;
}

}  // namespace

std::vector<std::string> mvi::remarksOn(const Found& found, const mvSuggestOptions& options) {
    std::vector<std::string> remarks;
    addLeftOut(remarks, found, options);
    addUnseen(remarks, found, options.white);
    if (!options.direction && isNoise(found)) {
        remarks.emplace_back(
            "The surface is nothing but noise: these filters average it over the "
            "size of the spot, and no other does better.");
    }
    return remarks;
}
