// The image filter: any frequency buffer as a filter.
#include <memory>
#include <typeinfo>

#include "reference/fft/arithmetic.h"
#include "support/filter_cases.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"
#include "support/spectra.h"

namespace {

using support::randomPlane;
using support::thrownBy;
using Filter = mvFrequencyFilterImage;

mvFrequencyBuffer image(int width, int height, unsigned seed) {
    return support::bufferOf(support::someSpectrum(randomPlane(width, height, seed)));
}

TEST(ImageFilter, ADefaultOneIsEmpty) {
    Filter filter;
    EXPECT_FALSE(filter.isInitialized());
    EXPECT_EQ(thrownBy([&] { filter.supportWidth(); }), support::kNoData);
    EXPECT_EQ(thrownBy([&] { filter.supportHeight(); }), support::kNoData);
    EXPECT_TRUE(filter == Filter());
}

TEST(ImageFilter, HoldsACopyOfTheImage) {
    mvFrequencyBuffer kernel = image(256, 128, 1);
    Filter filter(kernel);
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_EQ(filter.supportWidth(), 256);
    EXPECT_EQ(filter.supportHeight(), 128);
    const Filter same(kernel);
    kernel.put(0, 0, {100.0, 0.0}, false);
    EXPECT_TRUE(filter == same);
    EXPECT_FALSE(filter == Filter(kernel));
}

TEST(ImageFilter, GivesItsImageBack) {
    const mvFrequencyBuffer kernel = image(8, 4, 1);
    const Filter filter(kernel);
    EXPECT_TRUE(filter.image() == kernel);
    EXPECT_NE(&filter.image(), &kernel);
    EXPECT_FALSE(Filter().image().hasData());
}

TEST(ImageFilter, HasAResponseWhileItHasAnImage) {
    Filter filter;
    EXPECT_FALSE(filter.hasResponse());
    filter.setImage(image(8, 4, 1));
    EXPECT_TRUE(static_cast<const mvFrequencyFilter&>(filter).hasResponse());
    const Filter taker(std::move(filter));
    EXPECT_FALSE(filter.hasResponse());
    EXPECT_TRUE(taker.hasResponse());
}

TEST(ImageFilter, RefusesAnImageWithoutDataAndKeepsItsOwn) {
    EXPECT_EQ(thrownBy([] { Filter filter((mvFrequencyBuffer())); }), support::kNoData);
    Filter filter(image(8, 4, 1));
    const Filter before(filter);
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    EXPECT_EQ(thrownBy([&] { filter.setImage(mvFrequencyBuffer()); }), support::kNoData);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(filter == before);
}

TEST(ImageFilter, SetImageTellsTheWatcherBeforeItChanges) {
    Filter filter(image(8, 4, 1));
    const Filter before(filter);
    int calls = 0;
    mvPersistent::watch(filter, [&] {
        if (++calls == 1) {
            EXPECT_TRUE(filter == before);
        }
    });
    filter.setImage(image(16, 4, 2));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(filter.supportWidth(), 16);
    filter.setImage(image(16, 4, 2));
    EXPECT_EQ(calls, 2);
}

TEST(ImageFilter, AssignmentsTellTheWatcherFirst) {
    cases::expectAssignmentsTellTheWatcherFirst(Filter(image(8, 4, 1)), Filter(image(16, 4, 2)));
}

TEST(ImageFilter, CopiesClonesAndAssigns) {
    Filter filter(image(8, 4, 1));
    Filter copy(filter);
    EXPECT_TRUE(copy == filter);
    EXPECT_TRUE(copy.isInitialized());
    const std::unique_ptr<mvFrequencyFilter> clone(filter.clone());
    const mvFrequencyFilter& cloned = *clone;
    EXPECT_EQ(typeid(cloned), typeid(Filter));
    EXPECT_TRUE(dynamic_cast<const Filter&>(cloned) == filter);
    Filter assigned;
    EXPECT_EQ(&(assigned = filter), &assigned);
    EXPECT_TRUE(assigned == filter);
    const std::unique_ptr<mvFrequencyFilter> empty(Filter().clone());
    EXPECT_FALSE(empty->isInitialized());
    EXPECT_NE(dynamic_cast<Filter*>(empty.get()), nullptr);
}

TEST(ImageFilter, AssignmentToItselfDoesNothing) {
    cases::expectAssignmentToItselfDoesNothing(Filter(image(8, 4, 1)));
}

TEST(ImageFilter, AssignmentFromAnEmptyOneClearsTheFlagToo) {
    Filter filter(image(8, 4, 1));
    filter = Filter();
    EXPECT_FALSE(filter.isInitialized());
    EXPECT_TRUE(filter == Filter());
    EXPECT_EQ(thrownBy([&] { filter.supportWidth(); }), support::kNoData);
}

TEST(ImageFilter, MovingLeavesNoImage) {
    static_assert(std::is_nothrow_move_constructible_v<Filter>);
    Filter filter(image(8, 4, 1));
    const Filter moved(std::move(filter));
    EXPECT_TRUE(moved == Filter(image(8, 4, 1)));
    EXPECT_EQ(thrownBy([&] { filter.supportWidth(); }), support::kNoData);
}

TEST(ImageFilter, MultipliesElementByElement) {
    unsigned seed = 0;
    for (const auto& [w, h] : support::paddedSizes(support::kSanitized ? 1L << 10 : 1L << 14)) {
        const auto kernel = support::someSpectrum(randomPlane(w, h, ++seed));
        auto target = support::someSpectrum(randomPlane(w, h, ++seed));
        mvFrequencyBuffer buffer = support::bufferOf(target);
        Filter(support::bufferOf(kernel)).apply(buffer);
        target.plane = reference::product(kernel.plane, target.plane);
        target.masked = false;
        target.maskedMiny = target.maskedMaxy = 0;
        EXPECT_TRUE(support::sameSpectrum(target, buffer)) << w << " x " << h;
    }
}

TEST(ImageFilter, RepairsNoInfinitiesOrNaNs) {
    const auto kernel = support::specialPlane(32, 32, 1, true);
    const auto plane = support::specialPlane(32, 32, 2, true);
    mvFrequencyBuffer buffer = support::bufferOf(plane);
    Filter(support::bufferOf(kernel)).apply(buffer);
    EXPECT_TRUE(
        support::samePlane(reference::product(kernel, plane), support::planeOf(buffer), true));
}

TEST(ImageFilter, TheDestinationBecomesTheSourceAndThenTheProduct) {
    const auto kernel = support::someSpectrum(randomPlane(16, 8, 1));
    auto src = support::someSpectrum(randomPlane(16, 8, 2));
    src.x = 77;
    src.imageWidth = 11;
    const mvFrequencyBuffer source = support::bufferOf(src);
    for (mvFrequencyBuffer dst :
         {mvFrequencyBuffer(), mvFrequencyBuffer(100, 2), image(16, 8, 3)}) {
        Filter(support::bufferOf(kernel)).apply(source, dst);
        auto expected = src;
        expected.plane = reference::product(kernel.plane, src.plane);
        expected.masked = false;
        expected.maskedMiny = expected.maskedMaxy = 0;
        EXPECT_TRUE(support::sameSpectrum(expected, dst));
        EXPECT_EQ(mvi::BufferAccess::xform(dst), mvi::BufferAccess::xform(source));
        EXPECT_TRUE(support::sameSpectrum(src, source));
    }
}

TEST(ImageFilter, SourceAndDestinationMayBeOne) {
    const Filter filter(image(16, 8, 1));
    mvFrequencyBuffer buffer = image(16, 8, 2);
    mvFrequencyBuffer same(buffer);
    filter.apply(buffer);
    filter.apply(same, same);
    EXPECT_TRUE(buffer == same);
}

TEST(ImageFilter, OnesChangeTheBandAlone) {
    const Filter filter(support::bufferOf(support::constantPlane(16, 8, {1.0F, 0.0F})));
    auto spectrum = support::someSpectrum(randomPlane(16, 8, 2));
    mvFrequencyBuffer buffer = support::bufferOf(spectrum);
    filter.apply(buffer);
    spectrum.masked = false;
    spectrum.maskedMiny = spectrum.maskedMaxy = 0;
    EXPECT_TRUE(support::sameSpectrum(spectrum, buffer));
}

TEST(ImageFilter, ApplyAsksForDataThenImageThenSizeThenInverse) {
    const Filter built(image(16, 8, 1));
    const Filter empty;
    reference::Spectrum spent = support::someSpectrum(randomPlane(16, 8, 2));
    spent.inverseComputed = true;
    reference::Spectrum spentWide = support::someSpectrum(randomPlane(32, 8, 2));
    spentWide.inverseComputed = true;
    const Filter spentImage(support::bufferOf(spent));
    struct Case {
        const Filter& filter;
        mvFrequencyBuffer buffer;
        const char* thrown;
    };
    for (Case c : {Case{empty, mvFrequencyBuffer(), support::kNoData},
                   Case{built, mvFrequencyBuffer(), support::kNoData},
                   Case{empty, image(32, 8, 3), support::kNoData},
                   Case{built, image(32, 8, 3), cases::kOtherSize},
                   Case{built, image(16, 4, 3), cases::kOtherSize},
                   Case{built, support::bufferOf(spentWide), cases::kOtherSize},
                   Case{built, support::bufferOf(spent), support::kSpent},
                   Case{spentImage, image(16, 8, 3), support::kSpent}}) {
        const mvFrequencyBuffer before(c.buffer);
        EXPECT_EQ(thrownBy([&] { c.filter.apply(c.buffer); }), c.thrown);
        EXPECT_EQ(thrownBy([&] { c.filter.apply(c.buffer, c.buffer); }), c.thrown);
        EXPECT_TRUE(c.buffer == before);
    }
}

TEST(ImageFilter, ARefusalBeforeTheCopyLeavesTheDestination) {
    const mvFrequencyBuffer before = image(4, 4, 9);
    mvFrequencyBuffer dst(before);
    const Filter built(image(16, 8, 1));
    EXPECT_EQ(thrownBy([&] { built.apply(mvFrequencyBuffer(), dst); }), support::kNoData);
    EXPECT_EQ(thrownBy([&] { built.apply(image(8, 8, 2), dst); }), cases::kOtherSize);
    EXPECT_TRUE(dst == before);
}

TEST(ImageFilter, ASpentSourceIsFoundAfterTheCopy) {
    const Filter built(image(16, 8, 1));
    reference::Spectrum spent = support::someSpectrum(randomPlane(16, 8, 2));
    spent.inverseComputed = true;
    mvFrequencyBuffer dst;
    EXPECT_EQ(thrownBy([&] { built.apply(support::bufferOf(spent), dst); }), support::kSpent);
    EXPECT_TRUE(support::sameSpectrum(spent, dst));
}

}  // namespace
