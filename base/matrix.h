// Vectors and matrices of the plane.
#pragma once

#include <base/export.h>
#include <base/radian.h>

template <int N>
class mvVector;

template <int N>
class mvMatrix;

/// A column vector (x, y). Zero by default.
template <>
class MVBASE_API mvVector<2> {
  public:
    constexpr mvVector() noexcept = default;
    /// x, then y.
    constexpr mvVector(double x, double y) noexcept : x_(x), y_(y) {}

    /// The elements.
    constexpr double x() const noexcept { return x_; }
    constexpr double y() const noexcept { return y_; }

    /// Equal when both elements are.
    friend constexpr bool operator==(const mvVector&, const mvVector&) = default;

  private:
    double x_ = 0;
    double y_ = 0;
};

/// A 2 by 2 matrix of doubles, element (row, column). The identity by default.
///
/// Products are formed as they are written here, one rounding for each operation, on every build:
/// matrix * vector is (e00 * x + e01 * y, e10 * x + e11 * y), and matrix * matrix is that for each
/// column.
template <>
class MVBASE_API mvMatrix<2> {
  public:
    constexpr mvMatrix() noexcept = default;

    /// The elements row by row.
    constexpr mvMatrix(double e00, double e01, double e10, double e11) noexcept
        : e_{{e00, e01}, {e10, e11}} {}

    /// Scales, then turns: the first column is xScale * (cos r, sin r), the second is
    /// yScale * (-sin(r + skew), cos(r + skew)), where r is the rotation. So (1, 0) goes to
    /// (cos r, sin r) with unit scales, and the elements are then cos r, -sin r, sin r, cos r as
    /// the runtime gives them when the skew is 0.
    mvMatrix(double xScale, double yScale, mvRadian skew, mvRadian rotation) noexcept;

    /// The element of `row` 0 or 1 and `column` 0 or 1; other places throw an
    /// mvExceptionWithString.
    double element(int row, int column) const;

    /// The matrix that undoes this one. One that cannot be undone in finite doubles (singular, or
    /// with elements that are not finite) throws an mvExceptionWithString.
    mvMatrix inverse() const;

    /// The products; (m * right) * v is m * (right * v) up to rounding.
    mvMatrix operator*(const mvMatrix& right) const noexcept;
    mvVector<2> operator*(const mvVector<2>& v) const noexcept;

    /// Equal when all elements are.
    friend constexpr bool operator==(const mvMatrix&, const mvMatrix&) = default;

  private:
    double e_[2][2] = {{1, 0}, {0, 1}};
};
