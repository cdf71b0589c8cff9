// The band of rows that the Gabor filter marks: inverting with it gives the bits of inverting
// without it.
#include <numbers>

#include "support/filter_cases.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"
#include "support/spectra.h"

namespace {

struct Lobe {
    double angle, frequency;
    long radius;
};

std::vector<Lobe> lobes() {
    using std::numbers::pi;
    return {{0.0, 0.25, 0}, {pi / 2, 0.25, 0}, {-pi / 2, 0.5, 0}, {pi / 2, 0.5, 1},
            {2.5, 0.31, 0}, {-0.7, 0.1, 1},    {0.3, 0.0, 2}};
}

mvFrequencyBuffer filtered(const Lobe& lobe, int width, int height) {
    const mvFrequencyFilterGabor filter({0.02, 0.03}, {0, 0.01}, mvRadian(lobe.angle),
                                        lobe.frequency, {width, height},
                                        std::min({lobe.radius, width / 2L, height / 2L}));
    mvFrequencyBuffer buffer = support::bufferOf(support::randomPlane(width, height, 11));
    filter.apply(buffer);
    return buffer;
}

template <class Check>
void forEachPair(Check check) {
    std::vector<std::pair<int, int>> sizes = {{2, 2},  {4, 4},   {8, 8},    {8, 16},
                                              {16, 8}, {64, 64}, {32, 128}, {128, 32}};
    if (!support::kSanitized) sizes.insert(sizes.end(), {{256, 256}, {1024, 512}, {512, 512}});
    for (const auto& [w, h] : sizes) {
        for (const Lobe& lobe : lobes()) {
            SCOPED_TRACE(testing::Message() << w << " x " << h << ", angle " << lobe.angle
                                            << ", frequency " << lobe.frequency);
            const mvFrequencyBuffer banded = filtered(lobe, w, h);
            mvFrequencyBuffer plain(banded);
            ASSERT_EQ(mvi::BufferAccess::masked(banded), 1);
            support::BufferProbe::maskFrequencyBuffer(plain, false, 0, 0);
            check(banded, plain);
        }
    }
}

// A zero may come out with another sign where nothing but zeros was summed.
bool isAllZero(const mvFrequencyBuffer& buffer) {
    return buffer == mvFrequencyBuffer(buffer.width(), buffer.height());
}

TEST(RowBand, InverseIntoABuffer) {
    forEachPair([](const mvFrequencyBuffer& banded, const mvFrequencyBuffer& plain) {
        mvFrequencyBuffer a;
        mvFrequencyBuffer b;
        mfInverseFFT(banded, a);
        mfInverseFFT(plain, b);
        EXPECT_TRUE(a == b);
        if (!isAllZero(b)) {
            EXPECT_TRUE(support::samePlane(support::planeOf(b), support::planeOf(a)));
        }
    });
}

// The sum of what two lobes leave of one image, and the same plane in a buffer without a band.
struct SumOfTwoLobes {
    SumOfTwoLobes(int width, int height) : plain(width, height) {
        const Lobe right{0.0, 0.25, 0}, down{std::numbers::pi / 2, 0.25, 0};
        mfFrequencyAdd(filtered(right, width, height), filtered(down, width, height), sum);
        support::setPlane(plain, support::planeOf(sum));
    }
    mvFrequencyBuffer sum, plain;
};

mvPelBuffer<double> magnitudes(const mvFrequencyBuffer& spectrum) {
    mvPelBuffer<double> image;
    mfInverseFFT(spectrum, image, false);
    return image;
}

TEST(RowBand, OfASumIsThatOfOneLobeUntilItIsCleared) {
    for (const auto& [w, h] : {std::pair(64, 64), std::pair(128, 32), std::pair(32, 128)}) {
        SumOfTwoLobes lobes(w, h);
        const auto expected = support::imageOf(magnitudes(lobes.plain));
        EXPECT_TRUE(lobes.sum.band().has_value());
        EXPECT_FALSE(support::sameImage(expected, support::imageOf(magnitudes(lobes.sum))));
        lobes.sum.clearBand();
        EXPECT_TRUE(support::sameImage(expected, support::imageOf(magnitudes(lobes.sum))));
    }
}

TEST(RowBand, InverseIntoImages) {
    forEachPair([](const mvFrequencyBuffer& banded, const mvFrequencyBuffer& plain) {
        mvPelBuffer<double> a;
        mvPelBuffer<double> b;
        mfInverseFFT(banded, a, false);
        mfInverseFFT(plain, b, false);
        EXPECT_TRUE(support::sameImage(support::imageOf(b), support::imageOf(a)));
    });
}

}  // namespace
