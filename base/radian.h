// An angle in radians.
#pragma once

#include <base/export.h>

#include <compare>

/// An angle in radians. It keeps the value it was made with: nothing is folded until `norm()` is
/// asked for. Comparisons are those of the plain values, so a NaN is unordered.
class MVBASE_API mvRadian {
  public:
    /// An angle of that many radians, of any size.
    constexpr explicit mvRadian(double radians = 0) noexcept : radians_(radians) {}

    /// The angle in radians, as it was given.
    constexpr double toDouble() const noexcept { return radians_; }

    /// The same direction as a value in [0, 2 pi): never 2 pi itself (a negative angle too small
    /// to be told from a full turn gives 0) and never a negative zero. The full turn is the double
    /// nearest to 2 pi. NaN stays NaN; an infinite angle has no direction and gives NaN.
    [[nodiscard]] mvRadian norm() const noexcept;

    /// The angle the other way round.
    constexpr mvRadian operator-() const noexcept { return mvRadian(-radians_); }

    /// Orders by the plain values: 0 and 2 pi are not equal.
    // NOLINTNEXTLINE(modernize-use-nullptr): reports what the compiler writes.
    friend constexpr auto operator<=>(const mvRadian&, const mvRadian&) = default;

  private:
    double radians_;
};
