// Matrices of the plane.
#include <base/exception.h>
#include <base/matrix.h>
#include <internal/product.h>

#include <cmath>
#include <utility>

using mvi::product;

mvMatrix<2>::mvMatrix(double xScale, double yScale, mvRadian skew, mvRadian rotation) noexcept {
    const double r = rotation.toDouble();
    // Without a skew the second angle is the first one, down to the sign of a zero.
    const double s = skew.toDouble() == 0 ? r : r + skew.toDouble();
    e_[0][0] = xScale * std::cos(r);
    e_[1][0] = xScale * std::sin(r);
    e_[0][1] = yScale * -std::sin(s);
    e_[1][1] = yScale * std::cos(s);
}

double mvMatrix<2>::element(int row, int column) const {
    if (row < 0 || row > 1 || column < 0 || column > 1) {
        throw mvExceptionWithString("A matrix of the plane has rows and columns 0 and 1.");
    }
    return e_[row][column];
}

// Gaussian elimination with the larger element of the first column as the pivot. Of very large or
// very small elements a determinant would overflow.
mvMatrix<2> mvMatrix<2>::inverse() const {
    const int p = std::abs(e_[1][0]) > std::abs(e_[0][0]) ? 1 : 0;
    const double a = e_[p][0], b = e_[p][1], c = e_[1 - p][0], d = e_[1 - p][1];
    const double factor = c / a;
    const double rest = d - product(factor, b);
    double lower[2] = {0 - factor / rest, 1 / rest};
    double upper[2] = {(1 - product(b, lower[0])) / a, (0 - product(b, lower[1])) / a};
    if (p == 1) {
        std::swap(lower[0], lower[1]);
        std::swap(upper[0], upper[1]);
    }
    for (const double e : {a, b, c, d, upper[0], upper[1], lower[0], lower[1]}) {
        if (!std::isfinite(e)) throw mvExceptionWithString("The matrix has no inverse.");
    }
    return {upper[0], upper[1], lower[0], lower[1]};
}

mvMatrix<2> mvMatrix<2>::operator*(const mvMatrix& right) const noexcept {
    const mvVector<2> first = *this * mvVector<2>(right.e_[0][0], right.e_[1][0]);
    const mvVector<2> second = *this * mvVector<2>(right.e_[0][1], right.e_[1][1]);
    return {first.x(), second.x(), first.y(), second.y()};
}

mvVector<2> mvMatrix<2>::operator*(const mvVector<2>& v) const noexcept {
    return {product(e_[0][0], v.x()) + product(e_[0][1], v.y()),
            product(e_[1][0], v.x()) + product(e_[1][1], v.y())};
}
