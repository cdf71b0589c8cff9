// Vectors and matrices of the plane.
#include <base/exception.h>
#include <base/matrix.h>
#include <internal/bit_cast.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace {

std::uint64_t bits(double value) {
    return mvi::bitCast<std::uint64_t>(value);
}

void expectNear(const mvMatrix<2>& a, const mvMatrix<2>& b) {
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column) {
            EXPECT_NEAR(a.element(row, column), b.element(row, column), 1e-14);
        }
    }
}

TEST(Vector, IsZeroByDefaultAndComparesItsElements) {
    EXPECT_EQ(mvVector<2>(), mvVector<2>(0, 0));
    EXPECT_NE(mvVector<2>(1, 2), mvVector<2>(2, 1));
    EXPECT_EQ(mvVector<2>(1, 2).x(), 1);
    EXPECT_EQ(mvVector<2>(1, 2).y(), 2);
}

TEST(Matrix, IsTheIdentityByDefault) {
    EXPECT_EQ(mvMatrix<2>(), mvMatrix<2>(1, 0, 0, 1));
}

TEST(Matrix, HasElementsByRowAndColumn) {
    const mvMatrix<2> m(1, 2, 3, 4);
    EXPECT_EQ(m.element(0, 0), 1);
    EXPECT_EQ(m.element(0, 1), 2);
    EXPECT_EQ(m.element(1, 0), 3);
    EXPECT_EQ(m.element(1, 1), 4);
}

TEST(Matrix, RefusesElementsThatItHasNot) {
    const mvMatrix<2> m;
    const int places[][2] = {{-1, 0}, {0, -1}, {2, 0}, {0, 2}};
    for (const auto& place : places) EXPECT_THROW(m.element(place[0], place[1]), mvException);
}

TEST(Matrix, OfARotationHoldsTheRuntimesSinesAndCosines) {
    for (const double r : {0.0, -0.0, 1.0, -2.5, std::numbers::pi / 2, std::numbers::pi, 1e6}) {
        const mvMatrix<2> m(1.0, 1.0, mvRadian(0), mvRadian(r));
        EXPECT_EQ(bits(m.element(0, 0)), bits(std::cos(r))) << r;
        EXPECT_EQ(bits(m.element(0, 1)), bits(-std::sin(r))) << r;
        EXPECT_EQ(bits(m.element(1, 0)), bits(std::sin(r))) << r;
        EXPECT_EQ(bits(m.element(1, 1)), bits(std::cos(r))) << r;
    }
}

TEST(Matrix, OfARotationTurnsTheXAxisByTheAngle) {
    const mvVector<2> v = mvMatrix<2>(1, 1, mvRadian(0), mvRadian(0.25)) * mvVector<2>(1, 0);
    EXPECT_EQ(v, mvVector<2>(std::cos(0.25), std::sin(0.25)));
}

TEST(Matrix, OfScalesStretchesTheAxes) {
    EXPECT_EQ(mvMatrix<2>(3, 0.5, mvRadian(0), mvRadian(0)), mvMatrix<2>(3, 0, 0, 0.5));
}

TEST(Matrix, OfASkewTurnsTheYAxisFurther) {
    const double skew = 0.3, rotation = 0.2;
    const mvMatrix<2> m(2, 5, mvRadian(skew), mvRadian(rotation));
    expectNear(m, mvMatrix<2>(2 * std::cos(0.2), -5 * std::sin(0.5), 2 * std::sin(0.2),
                              5 * std::cos(0.5)));
}

TEST(Matrix, MultipliesVectorsRowByRow) {
    EXPECT_EQ(mvMatrix<2>(1, 2, 3, 4) * mvVector<2>(10, 100), mvVector<2>(210, 430));
}

TEST(Matrix, RoundsEachProductByItself) {
    const double a = 1 + std::ldexp(1.0, -30);
    const mvVector<2> v = mvMatrix<2>(a, -1, 0, 0) * mvVector<2>(a, a * a);
    EXPECT_EQ(v.x(), 0) << "a fused multiply-add would leave the rounding error of the product";
}

TEST(Matrix, MultipliesMatrices) {
    EXPECT_EQ(mvMatrix<2>(1, 2, 3, 4) * mvMatrix<2>(5, 6, 7, 8), mvMatrix<2>(19, 22, 43, 50));
}

TEST(Matrix, IsUndoneByItsInverse) {
    const mvMatrix<2> cases[] = {{1, 2, 3, 4}, {0, 1, 1, 0}, {0, -2, 5, 3}, {1e-3, 1, 1, 1}};
    for (const mvMatrix<2>& m : cases) {
        expectNear(m * m.inverse(), mvMatrix<2>());
        expectNear(m.inverse() * m, mvMatrix<2>());
    }
    EXPECT_EQ(mvMatrix<2>(2, 0, 0, 4).inverse(), mvMatrix<2>(0.5, 0, 0, 0.25));
    EXPECT_EQ(mvMatrix<2>(0, 2, 4, 0).inverse(), mvMatrix<2>(0, 0.25, 0.5, 0));
}

TEST(Matrix, InvertsVeryLargeAndVerySmallScales) {
    EXPECT_EQ(mvMatrix<2>(0x1p600, 0, 0, 0x1p700).inverse(), mvMatrix<2>(0x1p-600, 0, 0, 0x1p-700));
    EXPECT_EQ(mvMatrix<2>(0x1p-600, 0, 0, 0x1p-700).inverse(), mvMatrix<2>(0x1p600, 0, 0, 0x1p700));
}

TEST(Matrix, WithoutAnInverseIsRefused) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const mvMatrix<2> cases[] = {{0, 0, 0, 0},         {1, 2, 2, 4},     {0, 1, 0, 1},
                                 {1, 1, 0, 0},         {1, 0, 0, NAN},   {NAN, 0, 0, 1},
                                 {kInfinity, 0, 0, 1}, {5e-324, 0, 0, 1}};
    for (const mvMatrix<2>& m : cases) EXPECT_THROW(m.inverse(), mvException);
}

}  // namespace
