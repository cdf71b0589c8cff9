// Products that are rounded before anything is added to them.
#include <internal/product.h>

#include <gtest/gtest.h>

#include <vector>

using mvi::product;

namespace {

// Values that a compiler does not know, so that it computes with them at run time.
template <class T>
T unknown(T value) {
    volatile T kept = value;
    return kept;
}

struct Complex {
    float re, im;
};

Complex rounded(Complex a, Complex b) {
    return {unknown(a.re * b.re) - unknown(a.im * b.im),
            unknown(a.re * b.im) + unknown(a.im * b.re)};
}

// Factors whose products have more digits than a float.
std::vector<Complex> numbers(float step) {
    std::vector<Complex> result;
    for (int i = 0; i < 64; ++i) {
        const float value = static_cast<float>(i) * step + 1.0f;
        result.push_back({value, 1.0f / value});
    }
    return result;
}

}  // namespace

TEST(Product, IsOneOfConstants) {
    static_assert(product(3.0f, 0.5f) == 1.5f);
    static_assert(product(3.0, -0.5) == -1.5);
}

// The exact square of 1 + e is 1 + 2 e + e e, and e e is what rounding takes away.
TEST(Product, OfFloatsIsRoundedBeforeItIsAddedTo) {
    const float factor = unknown(1 + 0x1p-12f), square = unknown(1 + 0x1p-11f);
    EXPECT_EQ(product(factor, factor) - square, 0.0f);
    EXPECT_EQ(square - product(factor, factor), 0.0f);
}

TEST(Product, OfDoublesIsRoundedBeforeItIsAddedTo) {
    const double factor = unknown(1 + 0x1p-27), square = unknown(1 + 0x1p-26);
    EXPECT_EQ(product(factor, factor) - square, 0.0);
    EXPECT_EQ(square - product(factor, factor), 0.0);
}

// Sums that alternate with differences are what compilers have fused in loops.
TEST(Product, IsRoundedInLoopsOverComplexNumbers) {
    const std::vector<Complex> a = numbers(0x1p-12f), b = numbers(0x1p-5f);
    std::vector<Complex> result(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        result[i] = {product(a[i].re, b[i].re) - product(a[i].im, b[i].im),
                     product(a[i].re, b[i].im) + product(a[i].im, b[i].re)};
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(result[i].re, rounded(a[i], b[i]).re) << i;
        EXPECT_EQ(result[i].im, rounded(a[i], b[i]).im) << i;
    }
}
