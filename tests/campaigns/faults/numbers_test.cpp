// What NaNs, infinities, denormals, zeros of both signs and the largest numbers give, as pels, as
// coefficients and as parameters.
#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "reference/fft/map_image.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/spectra.h"
#include "support/thrown.h"

namespace {

using Byte = unsigned char;
using Word = unsigned short;
using Limits = std::numeric_limits<double>;

constexpr double kNaN = Limits::quiet_NaN();
constexpr double kInfinity = Limits::infinity();
constexpr double kLargest = Limits::max();
constexpr double kDenormal = Limits::denorm_min();

// Equal bits, any NaN for a NaN.
testing::AssertionResult same(double expected, double actual) {
    if (std::isnan(expected) && std::isnan(actual)) return testing::AssertionSuccess();
    return support::sameBits<double>({&expected, 1}, {&actual, 1}, 1);
}

std::string thrownBy(const std::function<void()>& call) {
    try {
        return support::thrownBy(call);
    } catch (const std::length_error&) {
        return "length_error";
    }
}

// --- A pel on its way into a plane of one element, where the transform changes nothing.

struct ForwardCase {
    double pel, coefficient;
};

TEST(Numbers, OfDoublePelsAreRoundedToFloat) {
    const ForwardCase cases[] = {
        {kNaN, kNaN},
        {kInfinity, kInfinity},
        {-kInfinity, -kInfinity},
        {kLargest, kInfinity},
        {-kLargest, -kInfinity},
        {kDenormal, 0.0},
        {-kDenormal, -0.0},
        {-0.0, -0.0},
        {1e-45, std::numeric_limits<float>::denorm_min()},
        {0.1, 0.1F},
    };
    for (const ForwardCase& c : cases) {
        mvPelBuffer<double> image(1, 1);
        *image.pointToOffset() = c.pel;
        const mvFrequencyBuffer complex(image, image);
        EXPECT_TRUE(same(c.coefficient, complex.getReal(0, 0, true))) << c.pel;
        EXPECT_TRUE(same(c.coefficient, complex.getImaginary(0, 0, true))) << c.pel;
        mvFrequencyBuffer written(1, 1);
        written.put(0, 0, {c.pel, c.pel}, false);
        EXPECT_TRUE(same(c.coefficient, written.getReal(0, 0, true))) << c.pel;
        mvFrequencyBuffer spectrum;
        mfForwardFFT<double>(image, image, spectrum);
        EXPECT_TRUE(same(c.coefficient, spectrum.getReal(0, 0, true))) << c.pel;
        EXPECT_TRUE(same(c.coefficient, spectrum.getImaginary(0, 0, true))) << c.pel;
    }
}

// --- A coefficient on its way out of such a plane.

struct InverseCase {
    double re, im;
    Byte byte;
    Word word;
    double magnitude;
    double angle;
    Byte quadrant;
};

TEST(Numbers, OfCoefficientsBecomePelsOfTheTable) {
    const double pi = static_cast<double>(std::atan2(0.0F, -1.0F));
    const double quarter = static_cast<double>(std::atan2(1.0F, 1.0F));
    const InverseCase cases[] = {
        {kNaN, 1, 0, 0, kNaN, kNaN, 0},
        {-1, kNaN, 0, 0, kNaN, kNaN, 1},
        {kInfinity, 0, 255, 65535, kInfinity, 0, 0},
        {-kInfinity, 0, 255, 65535, kInfinity, pi, 1},
        {kInfinity, kInfinity, 255, 65535, kInfinity, quarter, 0},
        {1e30, 0, 255, 65535, kInfinity, 0, 0},
        {1e-30, 0, 0, 0, 0, 0, 0},
        {-0.0, 0, 0, 0, 0, pi, 0},
        {-0.0, -0.0, 0, 0, 0, -pi, 0},
        {0.5, 0, 1, 1, 0.5, 0, 0},
        {static_cast<double>(std::nextafter(0.5F, 0.0F)), 0, 0, 0,
         static_cast<double>(std::nextafter(0.5F, 0.0F)), 0, 0},
        {-254.5, 0, 255, 255, 254.5, pi, 1},
        {3e9, 0, 255, 65535, 3e9, 0, 0},
    };
    for (const InverseCase& c : cases) {
        mvFrequencyBuffer buffer(1, 1);
        buffer.put(0, 0, {c.re, c.im}, false);
        mvPelBuffer<Byte> byte, quadrant;
        mvPelBuffer<Word> word;
        mvPelBuffer<double> magnitude, angle;
        mfInverseFFTQuadrant<Byte>(buffer, byte, quadrant, false, false);
        mfInverseFFT<Word>(buffer, word, false, false);
        mfInverseFFTAngle<double>(buffer, magnitude, angle, false, false);
        EXPECT_EQ(byte.pel(0, 0), c.byte) << c.re << ", " << c.im;
        EXPECT_EQ(word.pel(0, 0), c.word) << c.re << ", " << c.im;
        EXPECT_EQ(quadrant.pel(0, 0), c.quadrant) << c.re << ", " << c.im;
        EXPECT_TRUE(same(c.magnitude, magnitude.pel(0, 0))) << c.re << ", " << c.im;
        EXPECT_TRUE(same(c.angle, angle.pel(0, 0))) << c.re << ", " << c.im;
    }
}

TEST(Numbers, ThatAreNotFiniteRescaleToZero) {
    for (const double value : {kNaN, kInfinity, -kInfinity, 1e30}) {
        mvFrequencyBuffer buffer(1, 1);
        buffer.put(0, 0, {value, 0}, false);
        mvPelBuffer<Byte> byte;
        mvPelBuffer<Word> word;
        mfInverseFFT<Byte>(buffer, byte, true, false);
        mfInverseFFT<Word>(buffer, word, true, false);
        EXPECT_EQ(byte.pel(0, 0), 0) << value;
        EXPECT_EQ(word.pel(0, 0), 0) << value;
    }
}

// --- Parameters of filters.

enum class P { kFrequency, kSigma, kPlateau, kAngle };

struct ParameterCase {
    P parameter;
    double value;
    const char* ring;  // what building throws
    const char* lobe;
};

constexpr const char* kBadFrequency = "InvalidArgument: Frequency must be between 0.0 and 0.5.";
constexpr const char* kBadSigma = "InvalidArgument: Sigma must be positive.";
constexpr const char* kBadSigmas = "InvalidArgument: Sigma values must be positive.";
constexpr const char* kBadPlateau = "InvalidArgument: Plateau cannot be negative.";
constexpr const char* kBadPlateaus = "InvalidArgument: Plateau values cannot be negative.";
constexpr const char* kGood = "nothing";
constexpr const char* kTooLarge = "length_error";

const ParameterCase kParameterCases[] = {
    {P::kFrequency, kNaN, kBadFrequency, kBadFrequency},
    {P::kFrequency, kInfinity, kBadFrequency, kBadFrequency},
    {P::kFrequency, -kInfinity, kBadFrequency, kBadFrequency},
    {P::kFrequency, kLargest, kBadFrequency, kBadFrequency},
    {P::kFrequency, -kDenormal, kBadFrequency, kBadFrequency},
    {P::kFrequency, -0.0, kGood, kGood},
    {P::kFrequency, kDenormal, kGood, kGood},
    {P::kFrequency, 0.5, kGood, kGood},
    {P::kSigma, kNaN, kBadSigma, kTooLarge},
    {P::kSigma, kInfinity, kTooLarge, kTooLarge},
    {P::kSigma, -kInfinity, kBadSigma, kBadSigmas},
    {P::kSigma, kLargest, kTooLarge, kTooLarge},
    {P::kSigma, 0.0, kBadSigma, kBadSigmas},
    {P::kSigma, -0.0, kBadSigma, kBadSigmas},
    {P::kSigma, -kDenormal, kBadSigma, kBadSigmas},
    {P::kSigma, kDenormal, kGood, kGood},
    {P::kPlateau, kNaN, kBadPlateau, kTooLarge},
    {P::kPlateau, kInfinity, kTooLarge, kTooLarge},
    {P::kPlateau, -kInfinity, kBadPlateau, kBadPlateaus},
    {P::kPlateau, kLargest, kTooLarge, kTooLarge},
    {P::kPlateau, -0.0, kGood, kGood},
    {P::kPlateau, -kDenormal, kBadPlateau, kBadPlateaus},
    {P::kPlateau, kDenormal, kGood, kGood},
    {P::kAngle, kNaN, kGood, kTooLarge},
    {P::kAngle, kInfinity, kGood, kTooLarge},
    {P::kAngle, kLargest, kGood, kGood},
    {P::kAngle, -0.0, kGood, kGood},
    {P::kAngle, kDenormal, kGood, kGood},
};

template <class F>
F built(const ParameterCase& c) {
    const auto valueOf = [&](P parameter, double otherwise) {
        return c.parameter == parameter ? c.value : otherwise;
    };
    const double sigma = valueOf(P::kSigma, 0.05), plateau = valueOf(P::kPlateau, 0.02);
    const double frequency = valueOf(P::kFrequency, 0.2), angle = valueOf(P::kAngle, 0.3);
    const mvPair<long> size(16, 8);
    if constexpr (std::is_base_of_v<mvRingFilter, F>) {
        return F(sigma, plateau, frequency, size, 1);
    } else {
        return F({sigma, sigma}, {plateau, plateau}, mvRadian(angle), frequency, size, 1);
    }
}

template <class F>
class ParameterNumbers : public testing::Test {};

using AllFilters = testing::Types<mvFrequencyFilterBandPass, mvFrequencyFilterBandReject,
                                  mvFrequencyFilterGabor, mvFrequencyFilterGaborReject>;
TYPED_TEST_SUITE(ParameterNumbers, AllFilters, );

TYPED_TEST(ParameterNumbers, AreTakenOrRefusedAsTheTableSays) {
    for (const ParameterCase& c : kParameterCases) {
        const bool ring = std::is_base_of_v<mvRingFilter, TypeParam>;
        EXPECT_EQ(thrownBy([&] { built<TypeParam>(c); }), ring ? c.ring : c.lobe)
            << static_cast<int>(c.parameter) << ": " << c.value;
    }
}

TYPED_TEST(ParameterNumbers, ThatAreTakenFilterAnyPlane) {
    for (const ParameterCase& c : kParameterCases) {
        TypeParam filter;
        if (thrownBy([&] { filter = built<TypeParam>(c); }) != kGood) continue;
        mvFrequencyBuffer buffer = support::bufferOf(support::specialPlane(16, 8, 5, true));
        mvFrequencyBuffer target;
        EXPECT_EQ(thrownBy([&] { filter.apply(buffer, target); }), kGood) << c.value;
        EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), kGood) << c.value;
        mvPelBuffer<Byte> pels;
        EXPECT_EQ(thrownBy([&] { mfInverseFFT<Byte>(buffer, pels, true, true); }), kGood);
    }
}

TYPED_TEST(ParameterNumbers, OfTheRadiusAreHeldTo32Bits) {
    TypeParam filter = built<TypeParam>({P::kAngle, 0.0, kGood, kGood});
    mvPair<long> size(16, 8);
    const long largest = std::numeric_limits<long>::max();
    EXPECT_EQ(thrownBy([&] {
                  if constexpr (std::is_base_of_v<mvRingFilter, TypeParam>) {
                      filter.set(0.05, 0.02, 0.2, size, largest);
                  } else {
                      filter.set({0.05, 0.05}, {0.02, 0.02}, mvRadian(0.3), 0.2, size, largest);
                  }
              }),
              kGood);
    long radius = 0;
    if constexpr (requires { filter.dcRemovalRadius(); }) {
        radius = filter.dcRemovalRadius();
    } else {
        radius = filter.dcProtectionRadius();
    }
    EXPECT_EQ(radius, std::numeric_limits<std::int32_t>::max());
}

// --- Parameters of the map image.

TEST(Numbers, OfMapsGiveTheBytesOfTheDefinition) {
    const std::vector<double> values = {kNaN,      kInfinity,  -kInfinity, kLargest, -kLargest,
                                        kDenormal, -kDenormal, 0.0,        -0.0,     1.0,
                                        -1.0,      255.0,      256.0,      1e19,     -1e19};
    reference::Image<double> image(static_cast<long>(values.size()), 1);
    image.pels = values;
    const mvPelBuffer<double> src = support::pelBufferOf(image);
    for (const auto mapping :
         {reference::Mapping::clip, reference::Mapping::range, reference::Mapping::angle}) {
        for (const double low : values) {
            for (const double high : values) {
                const auto bytes = mfFrequencyMapImage(
                    src, static_cast<mvFrequencyDefs::FrequencyMapping>(mapping), low, high);
                EXPECT_EQ(support::imageOf(bytes).pels,
                          reference::mapImage(values, mapping, low, high))
                    << "mapping " << static_cast<int>(mapping) << ", " << low << " to " << high;
            }
        }
    }
}

}  // namespace
