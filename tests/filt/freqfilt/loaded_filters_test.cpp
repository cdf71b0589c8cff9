// Filters that no setter makes, only an archive: rings and lobes beside the plane, supports that
// are even or negative, more floats than gains, gains that are no numbers.
#include <algorithm>
#include <limits>
#include <type_traits>

#include "reference/freqfilt/lobe.h"
#include "reference/freqfilt/ring.h"
#include "support/buffer_record.h"
#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/random_planes.h"
#include "support/spectra.h"
#include "support/three_calls.h"

namespace {

using reference::Spectrum;

// Zeros stand behind a profile. A ring of negative radius asks for gains this far behind it.
constexpr std::size_t kBeyondTheProfile = 1 << 14;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// From DC to far beyond the plane, on both sides.
constexpr double kFrequencies[] = {-3.0, -0.4, -0.05, 0.0, 0.3, 0.6, 0.9, 3.0, kNaN};

std::vector<float> someGains(std::size_t count) {
    support::Random random(3);
    std::vector<float> gains(count);
    for (float& gain : gains) gain = random.symmetric();
    return gains;
}

struct Support {
    std::int32_t width, height;
    std::size_t floats;
};

// Of a lobe with an even number of rows the definition asks for one more than there are.
template <class Fields>
std::vector<Support> supports() {
    if constexpr (std::is_same_v<Fields, archive::RingRecord>) {
        return {{3, 32, 96}, {3, 32, 500}, {1, 1, 1},   {3, 7, 21},   {-3, -32, 96},
                {0, 32, 0},  {3, 0, 0},    {3, -32, 0}, {3, -32, 96}, {-3, 32, 700}};
    }
    return {{5, 3, 15}, {3, 5, 15},  {4, 3, 12},   {1, 5, 5},   {0, 3, 0},
            {3, 4, 15}, {3, 2, 100}, {-5, -3, 15}, {-5, 3, 15}, {5, -3, 0}};
}

template <class Fields>
Fields recordOn(mvPair<int> plane, double frequency,
                const Support& support = supports<Fields>().front()) {
    Fields fields;
    fields.frequency = frequency;
    fields.supportWidth = support.width;
    fields.supportHeight = support.height;
    fields.width = plane.x;
    fields.height = plane.y;
    fields.response = someGains(support.floats);
    return fields;
}

reference::Ring definitionOf(const archive::RingRecord& fields) {
    reference::Ring ring;
    ring.given = {fields.sigma, fields.plateau, fields.frequency,
                  fields.width, fields.height,  fields.radius};
    ring.supportWidth = fields.supportWidth;
    ring.supportHeight = fields.supportHeight;
    ring.profile = fields.response;
    ring.profile.resize(kBeyondTheProfile);
    return ring;
}

reference::Lobe definitionOf(const archive::LobeRecord& fields) {
    return {{fields.sigmaX, fields.sigmaY, fields.plateauX, fields.plateauY, fields.angle,
             fields.frequency, fields.width, fields.height, fields.radius},
            fields.supportWidth,
            fields.supportHeight,
            fields.response};
}

// What a filter of this class and this record makes of one spectrum, or of one in another.
template <class... Spectra>
void applyDefinition(const archive::BandPass&, const archive::RingRecord& fields, Spectra&... of) {
    reference::applyBandPass(definitionOf(fields), of...);
}
template <class... Spectra>
void applyDefinition(const archive::BandReject&, const archive::RingRecord& fields,
                     Spectra&... of) {
    reference::applyBandReject(definitionOf(fields), of...);
}
template <class... Spectra>
void applyDefinition(const archive::Gabor&, const archive::LobeRecord& fields, Spectra&... of) {
    reference::applyGabor(definitionOf(fields), of...);
}
template <class... Spectra>
void applyDefinition(const archive::GaborReject&, const archive::LobeRecord& fields,
                     Spectra&... of) {
    reference::applyGaborReject(definitionOf(fields), of...);
}

mvPelBuffer<double> somePicture(mvPair<int> size) {
    return support::pelBufferOf(support::randomImage<double>(size.x, size.y, 5));
}

const std::vector<mvPair<int>> kPlanes = {{16, 16}, {16, 64}, {64, 16}};
const std::vector<mvPair<int>> kPlanesOfNoTransform = {{15, 9}, {6, 21}, {33, 5}, {3, 1}};

template <class Kind>
struct LoadedFilter : testing::Test {
    using Filter = typename Kind::Filter;
    using Fields = typename Kind::Fields;

    template <class Check>
    static void forEach(const std::vector<mvPair<int>>& planes, Check check) {
        for (const mvPair<int> plane : planes) {
            for (const double frequency : kFrequencies) {
                for (const Support& support : supports<Fields>()) {
                    SCOPED_TRACE(testing::Message()
                                 << plane.x << " x " << plane.y << ", frequency " << frequency
                                 << ", support " << support.width << " x " << support.height
                                 << " of " << support.floats);
                    check(recordOn<Fields>(plane, frequency, support), plane);
                }
            }
        }
    }

    static Filter filterOf(const Fields& fields) {
        Filter filter;
        archive::load(fields.record().bytes(), filter);
        return filter;
    }

    // The picture call against the three calls that define it.
    static void expectPictureAsDefined(const Filter& filter, mvPair<int> plane) {
        EXPECT_TRUE(support::isFilteredAsByThreeCalls<double>(somePicture(plane), filter));
    }
};
TYPED_TEST_SUITE(LoadedFilter, archive::ParametricFilters);

TYPED_TEST(LoadedFilter, ActsAsItsRecordSays) {
    this->forEach(kPlanes, [&](const auto& fields, mvPair<int> plane) {
        Spectrum expected = support::someSpectrum(support::randomPlane(plane.x, plane.y, 7));
        mvFrequencyBuffer buffer = support::bufferOf(expected);
        applyDefinition(TypeParam(), fields, expected);
        this->filterOf(fields).apply(buffer);
        EXPECT_TRUE(support::sameSpectrum(expected, buffer));
    });
}

TYPED_TEST(LoadedFilter, ActsAsItsRecordSaysOnACopy) {
    this->forEach(kPlanes, [&](const auto& fields, mvPair<int> plane) {
        const Spectrum source = support::someSpectrum(support::randomPlane(plane.x, plane.y, 7));
        Spectrum expected;
        mvFrequencyBuffer copy;
        applyDefinition(TypeParam(), fields, source, expected);
        this->filterOf(fields).apply(support::bufferOf(source), copy);
        EXPECT_TRUE(support::sameSpectrum(expected, copy));
    });
}

TYPED_TEST(LoadedFilter, ActsAsItsRecordSaysOnAPlaneThatNoTransformTakes) {
    this->forEach(kPlanesOfNoTransform, [&](const auto& fields, mvPair<int> plane) {
        Spectrum expected;
        expected.plane = support::randomPlane(plane.x, plane.y, 7);
        const float* const floats = expected.plane.floats();
        mvFrequencyBuffer buffer = support::loaded(
            support::BufferRecord{.width = plane.x,
                                  .height = plane.y,
                                  .floats = {floats, floats + expected.plane.floatCount()}});
        applyDefinition(TypeParam(), fields, expected);
        this->filterOf(fields).apply(buffer);
        EXPECT_TRUE(support::samePlane(expected.plane, support::planeOf(buffer), true));
    });
}

TYPED_TEST(LoadedFilter, FiltersPicturesAsTheThreeCalls) {
    this->forEach(kPlanes, [&](const auto& fields, mvPair<int> plane) {
        this->expectPictureAsDefined(this->filterOf(fields), plane);
    });
}

TYPED_TEST(LoadedFilter, WithAGainThatIsNoNumberFiltersPicturesAsTheThreeCalls) {
    const mvPair<int> plane(16, 16);
    auto fields = recordOn<typename TypeParam::Fields>(plane, 0.2);
    fields.response[2] = kNaN;
    this->expectPictureAsDefined(this->filterOf(fields), plane);
}

TYPED_TEST(LoadedFilter, WithNoNumbersBehindItsGainsFiltersPicturesAsTheThreeCalls) {
    this->forEach(kPlanes, [&](auto fields, mvPair<int> plane) {
        const long gains = std::max(fields.supportWidth * fields.supportHeight, 0);
        std::fill(fields.response.begin() + gains, fields.response.end(), kNaN);
        this->expectPictureAsDefined(this->filterOf(fields), plane);
    });
}

// The definition asks for a third row of gains. Where there is none, all is left as outside.
TEST(LoadedLobe, LeavesARowThatItHoldsNoGainsFor) {
    const mvPair<int> plane(16, 16);
    auto fields = recordOn<archive::LobeRecord>(plane, 0.2, {3, 2, 6});
    mvFrequencyFilterGaborReject filter;
    archive::load(fields.record().bytes(), filter);
    Spectrum expected = support::someSpectrum(support::randomPlane(plane.x, plane.y, 7));
    mvFrequencyBuffer buffer = support::bufferOf(expected);
    fields.response.resize(9, 1.0F);
    applyDefinition(archive::GaborReject(), fields, expected);
    filter.apply(buffer);
    EXPECT_TRUE(support::sameSpectrum(expected, buffer));
}

TYPED_TEST(LoadedFilter, OfAPlaneWithoutElementsHasNothingToDo) {
    constexpr int kLong = 1 << 27;
    for (const mvPair<int> plane : {mvPair(0, kLong), mvPair(kLong, 0), mvPair(0, 0)}) {
        auto fields = recordOn<typename TypeParam::Fields>(plane, 0.3);
        fields.radius = 0;
        mvFrequencyBuffer buffer =
            support::loaded(support::BufferRecord{.width = plane.x, .height = plane.y});
        this->filterOf(fields).apply(buffer);
        EXPECT_EQ(buffer.width(), plane.x);
        EXPECT_EQ(buffer.height(), plane.y);
    }
}

}  // namespace
