// The pictures that filters are proposed from: what is wrong with them, what is looked at of them.
#include "good_pictures.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "poll.h"

namespace {

using mvi::DoubleView;

constexpr long kLeastSide = 32, kLongestWhole = 2048, kWindow = 1024, kPels = 2048 * 2048;
constexpr double kSidesOfARadius = 8;

// Calls each(pel) for all pels.
template <class Each>
void visit(const std::vector<DoubleView>& pictures, Each each) {
    for (const DoubleView& picture : pictures) {
        for (long y = 0; y < picture.height(); ++y) {
            mvi::pollRow(y);
            const double* row = picture.pointToRow(y);
            std::for_each(row, row + picture.width(), each);
        }
    }
}

struct Levels {
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();
    double pels = 0, black = 0, white = 0;
    bool areFinite = true;
};

Levels levelsOf(const std::vector<DoubleView>& pictures, double white) {
    Levels levels;
    visit(pictures, [&](double pel) {
        levels.areFinite = levels.areFinite && std::isfinite(pel);
        levels.least = std::min(levels.least, pel);
        levels.most = std::max(levels.most, pel);
        levels.pels += 1;
        levels.black += pel <= 0 ? 1 : 0;
        levels.white += pel >= white ? 1 : 0;
    });
    return levels;
}

long shorterSide(const std::vector<DoubleView>& pictures) {
    long side = std::numeric_limits<long>::max();
    for (const DoubleView& picture : pictures) {
        side = std::min({side, picture.width(), picture.height()});
    }
    return side;
}

// One axis of a picture: whole, or some windows of it.
struct Cut {
    long pels, count;

    explicit Cut(long n) : pels(n), count(n <= kLongestWhole ? 1 : 2) {}
    bool isWhole() const { return pels <= kLongestWhole; }
    long length() const { return isWhole() ? pels : kWindow; }
    long begin(long number) const {
        const long room = pels - length();
        return (2 * number + 1) * room / (2 * count);
    }
};

// A web that is long one way has room for more than two windows.
void lengthen(Cut& longer, const Cut& other) {
    if (longer.isWhole() || !other.isWhole()) return;
    longer.count = std::clamp(kPels / (kWindow * other.length()), 2l, longer.pels / kWindow);
}

void addWindows(const DoubleView& picture, std::vector<DoubleView>& windows) {
    Cut across(picture.width()), down(picture.height());
    lengthen(across, down);
    lengthen(down, across);
    for (long y = 0; y < down.count; ++y) {
        for (long x = 0; x < across.count; ++x) {
            windows.push_back(
                picture.window(across.begin(x), down.begin(y), across.length(), down.length()));
        }
    }
}

}  // namespace

std::string mvi::refusalOf(const std::vector<DoubleView>& pictures, double white) {
    if (pictures.empty()) return "There is no picture.";
    if (shorterSide(pictures) < kLeastSide) {
        return "The picture is too small: it takes 32 pels a side to say anything of a surface.";
    }
    const Levels levels = levelsOf(pictures, white);
    if (!levels.areFinite) return "The picture has pels that are no numbers.";
    if (levels.least == levels.most) {
        return "The picture is flat: all its pels are alike, and any filter leaves nothing of it.";
    }
    if (white > 0 && levels.white > levels.pels / 2) {
        return "The picture is overexposed: more than half of its pels are white, so that nothing "
               "can be said of the surface.";
    }
    if (white > 0 && levels.black > levels.pels / 2) {
        return "The picture is underexposed: more than half of its pels are black, so that nothing "
               "can be said of the surface.";
    }
    return "";
}

std::vector<mvi::DoubleView> mvi::lookedAt(const std::vector<DoubleView>& pictures) {
    std::vector<DoubleView> windows;
    for (const DoubleView& picture : pictures) addWindows(picture, windows);
    return windows;
}

std::vector<double> mvi::fittingRadii(const std::vector<DoubleView>& pictures,
                                      const std::vector<double>& radii) {
    const auto side = static_cast<double>(shorterSide(pictures));
    std::vector<double> fitting;
    std::copy_if(radii.begin(), radii.end(), std::back_inserter(fitting),
                 [side](double radius) { return kSidesOfARadius * radius <= side; });
    return fitting;
}
