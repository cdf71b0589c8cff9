// Folding an angle into one turn.
#include <base/radian.h>

#include <cmath>
#include <numbers>

mvRadian mvRadian::norm() const noexcept {
    constexpr double kTurn = 2 * std::numbers::pi;
    double folded = std::fmod(radians_, kTurn);
    if (folded < 0) folded += kTurn;
    // The sum rounds to a full turn for tiny negative angles; fmod keeps the sign of a zero.
    if (folded == kTurn || folded == 0) folded = 0;
    return mvRadian(folded);
}
