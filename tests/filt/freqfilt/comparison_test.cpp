// The filters against their literal definition, bit by bit, in every form of `apply`.
#include <numbers>
#include <span>

#include "reference/freqfilt/access.h"
#include "support/filter_cases.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"
#include "support/spectra.h"

namespace {

using reference::Spectrum;

template <class Case>
struct FilterComparison : testing::Test {};
TYPED_TEST_SUITE(FilterComparison, cases::AllFilters);

struct Size {
    long width, height;
    /// Every n-th row of the table of parameters is enough.
    std::size_t stride;
};

std::vector<Size> sizes() {
    std::vector<Size> all = {{1, 1, 1},   {1, 2, 1},   {2, 1, 1},  {1, 64, 1},  {64, 1, 1},
                             {2, 2, 1},   {4, 32, 1},  {32, 4, 1}, {16, 16, 1}, {64, 32, 3},
                             {32, 64, 3}, {2, 256, 5}, {256, 2, 5}};
    if (!support::kSanitized) {
        all.insert(all.end(), {{128, 128, 7},
                               {256, 64, 7},
                               {64, 256, 7},
                               {512, 1024, 61},
                               {1024, 512, 53},
                               {1024, 1, 11},
                               {1, 1024, 11}});
    }
    return all;
}

std::vector<long> radii(const Size& size) {
    return {0, 1, 2, size.width / 2, size.width / 2 + 1, size.height / 2 + 1, 5000};
}

std::vector<reference::RingParameters> table(const Size& size, const reference::RingParameters&) {
    std::vector<reference::RingParameters> all;
    const std::vector<long> radius = radii(size);
    for (const double sigma : {0.0005, 0.013, 0.05, 0.4}) {
        for (const double plateau : {0.0, 0.021, 0.3}) {
            for (const double frequency : {0.0, 0.07, 0.25, 0.499, 0.5}) {
                all.push_back({sigma, plateau, frequency, size.width, size.height,
                               radius[all.size() % radius.size()]});
            }
        }
    }
    return all;
}

std::vector<reference::LobeParameters> table(const Size& size, const reference::LobeParameters&) {
    using std::numbers::pi;
    const std::vector<double> angles = {0.0,        0.3, pi / 4, pi / 2, 2.0,
                                        3 * pi / 4, pi,  -2.5,   4.0,    -pi / 2,
                                        3 * pi / 2, 5.5, 2 * pi, -0.1,   100.0};
    std::vector<reference::LobeParameters> all;
    const std::vector<long> radius = radii(size);
    for (const mvPair<double> sigma :
         {mvPair(0.01, 0.01), mvPair(0.0005, 0.06), mvPair(0.2, 0.03)}) {
        for (const mvPair<double> plateau :
             {mvPair(0.0, 0.0), mvPair(0.06, 0.01), mvPair(0.0, 0.2)}) {
            for (const double frequency : {0.0, 0.13, 0.37, 0.5}) {
                for (const double angle : angles) {
                    all.push_back({sigma.x, sigma.y, plateau.x, plateau.y, angle, frequency,
                                   size.width, size.height, radius[all.size() % radius.size()]});
                }
            }
        }
    }
    return all;
}

std::vector<float> gains(const reference::Ring& ring) {
    return {ring.profile.begin(), ring.profile.end() - 3};
}

std::vector<float> gains(const reference::Lobe& lobe) {
    return lobe.response;
}

template <class Case, class Check>
void forEachFilter(Check check) {
    for (const Size& size : sizes()) {
        const auto all = table(size, typename Case::Parameters());
        for (std::size_t i = 0; i < all.size(); i += size.stride) {
            SCOPED_TRACE(testing::Message()
                         << size.width << " x " << size.height << ", row " << i << " of the table");
            auto filter = Case::make(all[i]);
            check(filter, Case::describe(all[i]));
            if (testing::Test::HasFailure()) return;
        }
    }
}

// What the definition throws, in the words of the library.
template <class Call>
std::string referenceThrows(Call call) {
    try {
        call();
    } catch (const reference::OutOfBounds&) {
        return support::kOutOfBounds;
    } catch (const reference::AlreadyInverted&) {
        return support::kSpent;
    }
    return "nothing";
}

template <class Case, class Filter, class Definition>
void compareInPlace(const Filter& filter, const Definition& definition, Spectrum spectrum) {
    mvFrequencyBuffer buffer = support::bufferOf(spectrum);
    EXPECT_EQ(support::thrownBy([&] { filter.apply(buffer); }),
              referenceThrows([&] { Case::apply(definition, spectrum); }));
    EXPECT_TRUE(support::sameSpectrum(spectrum, buffer));
}

template <class Case, class Filter, class Definition>
void compareCopy(const Filter& filter, const Definition& definition, const Spectrum& src,
                 Spectrum dst) {
    const mvFrequencyBuffer source = support::bufferOf(src);
    mvFrequencyBuffer target = support::bufferOf(dst);
    const std::string thrown = referenceThrows([&] { Case::apply(definition, src, dst); });
    EXPECT_EQ(support::thrownBy([&] { filter.apply(source, target); }), thrown);
    EXPECT_TRUE(support::sameSpectrum(src, source)) << "the source";
    if (!dst.plane.elements.empty()) {
        EXPECT_TRUE(support::sameSpectrum(dst, target));
    }
}

template <class Case, class Filter, class Definition>
void compareOntoItself(const Filter& filter, const Definition& definition, Spectrum spectrum) {
    mvFrequencyBuffer buffer = support::bufferOf(spectrum);
    EXPECT_EQ(support::thrownBy([&] { filter.apply(buffer, buffer); }),
              referenceThrows([&] { Case::apply(definition, spectrum, spectrum); }));
    EXPECT_TRUE(support::sameSpectrum(spectrum, buffer));
}

template <class Definition>
Spectrum randomSpectrum(const Definition& definition, unsigned seed) {
    return support::someSpectrum(support::randomPlane(
        static_cast<int>(definition.given.width), static_cast<int>(definition.given.height), seed));
}

TYPED_TEST(FilterComparison, Gains) {
    using Open = cases::Open<typename TypeParam::Filter>;
    forEachFilter<TypeParam>([](auto& filter, const auto& definition) {
        const std::vector<float> expected = gains(definition);
        ASSERT_EQ(filter.supportWidth(), definition.supportWidth);
        const Open open(filter);
        EXPECT_TRUE(support::sameBits<float>(expected, {open.data(), expected.size()},
                                             static_cast<std::size_t>(definition.supportWidth),
                                             true));
    });
}

TYPED_TEST(FilterComparison, InPlace) {
    unsigned seed = 0;
    forEachFilter<TypeParam>([&](const auto& filter, const auto& definition) {
        compareInPlace<TypeParam>(filter, definition, randomSpectrum(definition, ++seed));
    });
}

TYPED_TEST(FilterComparison, IntoAnotherBuffer) {
    unsigned seed = 0;
    forEachFilter<TypeParam>([&](const auto& filter, const auto& definition) {
        const Spectrum src = randomSpectrum(definition, ++seed);
        Spectrum dst = randomSpectrum(definition, ++seed);
        dst.x = 9;
        dst.inverseComputed = true;
        compareCopy<TypeParam>(filter, definition, src, dst);
    });
}

TYPED_TEST(FilterComparison, IntoABufferOfAnotherSizeOrNone) {
    unsigned seed = 0;
    forEachFilter<TypeParam>([&](const auto& filter, const auto& definition) {
        const Spectrum src = randomSpectrum(definition, ++seed);
        compareCopy<TypeParam>(filter, definition, src,
                               support::someSpectrum(support::randomPlane(8, 4, ++seed)));
        compareCopy<TypeParam>(filter, definition, src,
                               support::someSpectrum(support::randomPlane(128, 2, ++seed)));
        compareCopy<TypeParam>(filter, definition, src, Spectrum());
    });
}

TYPED_TEST(FilterComparison, OntoItself) {
    unsigned seed = 0;
    forEachFilter<TypeParam>([&](const auto& filter, const auto& definition) {
        compareOntoItself<TypeParam>(filter, definition, randomSpectrum(definition, ++seed));
    });
}

TYPED_TEST(FilterComparison, OverwrittenByAnInverse) {
    unsigned seed = 0;
    forEachFilter<TypeParam>([&](const auto& filter, const auto& definition) {
        Spectrum spent = randomSpectrum(definition, ++seed);
        spent.inverseComputed = true;
        compareInPlace<TypeParam>(filter, definition, spent);
        compareCopy<TypeParam>(filter, definition, spent, randomSpectrum(definition, ++seed));
        compareOntoItself<TypeParam>(filter, definition, spent);
    });
}

TYPED_TEST(FilterComparison, SignedZerosInfinitiesAndNaNs) {
    unsigned seed = 0;
    forEachFilter<TypeParam>([&](const auto& filter, const auto& definition) {
        const auto w = static_cast<int>(definition.given.width);
        const auto h = static_cast<int>(definition.given.height);
        for (const bool infinite : {false, true}) {
            const Spectrum src =
                support::someSpectrum(support::specialPlane(w, h, ++seed, infinite));
            compareInPlace<TypeParam>(filter, definition, src);
            compareCopy<TypeParam>(filter, definition, src, Spectrum());
        }
    });
}

TYPED_TEST(FilterComparison, RebuiltByASetter) {
    unsigned seed = 0;
    for (const auto& parameter : TypeParam::allParameters()) {
        SCOPED_TRACE(parameter.name);
        auto p = TypeParam::parameters();
        auto filter = TypeParam::make(p);
        parameter.change(p);
        parameter.set(filter, p);
        const auto definition = TypeParam::describe(p);
        compareInPlace<TypeParam>(filter, definition, randomSpectrum(definition, ++seed));
    }
}

}  // namespace
