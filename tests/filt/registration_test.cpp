// The registered classes, and records of pointers to their objects.
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using archive::Record;

TEST(Registry, HoldsElevenClassesInOrder) {
    std::vector<std::string> ours;
    for (const std::string& name : mfRegisteredClasses()) {
        if (name.starts_with("mvFrequency")) ours.push_back(name);
    }
    const std::vector<std::string> expected = {"mvFrequencyDefs::InvalidArgument",
                                               "mvFrequencyDefs::Uninitialized",
                                               "mvFrequencyDefs::InvalidSize",
                                               "mvFrequencyDefs::UnboundWindow",
                                               "mvFrequencyDefs::InvalidBuffer",
                                               "mvFrequencyDefs::BadCoord",
                                               "mvFrequencyFilterGabor",
                                               "mvFrequencyFilterGaborReject",
                                               "mvFrequencyFilterBandPass",
                                               "mvFrequencyFilterBandReject",
                                               "mvFrequencyFilterImage"};
    EXPECT_EQ(ours, expected);
}

TEST(Registry, MakesDefaultObjects) {
    for (const std::string& name : mfRegisteredClasses()) {
        if (!name.starts_with("mvFrequencyFilter")) continue;
        // Version, base version and a truncated rest: the object is made, and then given up.
        archive::Loading loading(Record().u8(1).text(name).u8(0).u8(0).bytes());
        EXPECT_EQ(archive::loadingThrows([&] { mfLoad<mvPersistent>(loading); }), "Truncated");
    }
}

TEST(Registry, ErrorsIsNotRegistered) {
    archive::Loading loading(Record().u8(1).text("mvFrequencyDefs::Errors").u8(0).bytes());
    EXPECT_EQ(archive::loadingThrows([&] { mfLoad<mvPersistent>(loading); }), "UnknownClass");
}

template <class Kind>
struct FilterPointer : testing::Test {};
TYPED_TEST_SUITE(FilterPointer, archive::ParametricFilters);

TYPED_TEST(FilterPointer, ComesBackAsItself) {
    using F = typename TypeParam::Filter;
    const Record object = typename TypeParam::Fields().record();
    const std::string bytes = Record().u8(1).text(TypeParam::kName).then(object).bytes();
    archive::Loading loading(bytes);
    const std::unique_ptr<mvFrequencyFilter> filter = mfLoad<mvFrequencyFilter>(loading);
    const mvFrequencyFilter& loaded = *filter;
    ASSERT_EQ(typeid(loaded), typeid(F));
    EXPECT_EQ(loading.rest(), 0U);
    mvPersistent* pointer = filter.get();
    EXPECT_EQ(archive::hex(archive::stored(pointer)), archive::hex(bytes));
}

TEST(ImageFilterPointer, ComesBackAsItself) {
    mvFrequencyFilterImage filter(support::bufferOf(support::randomPlane(4, 2, 1)));
    mvPersistent* pointer = &filter;
    archive::Loading loading(archive::stored(pointer));
    const auto loaded = mfLoad<mvFrequencyFilterImage>(loading);
    EXPECT_TRUE(*loaded == filter);
}

TEST(Registry, ASecondPointerIsAReference) {
    mvFrequencyFilterBandPass filter;
    archive::load(archive::RingRecord().record().bytes(), filter);
    mvPersistent* pointer = &filter;
    EXPECT_EQ(archive::hex(archive::stored(pointer, pointer)),
              archive::hex(Record()
                               .u8(1)
                               .text("mvFrequencyFilterBandPass")
                               .then(archive::RingRecord().record())
                               .u8(2)
                               .u32(0)
                               .bytes()));
}

TEST(Registry, APointerAfterTheObjectItselfIsAReference) {
    mvFrequencyFilterGabor filter;
    archive::load(archive::LobeRecord().record().bytes(), filter);
    mvFrequencyFilter* pointer = &filter;
    EXPECT_EQ(archive::hex(archive::stored(filter, pointer)),
              archive::hex(archive::LobeRecord().record().u8(2).u32(0).bytes()));
}

TEST(Registry, AnObjectOfAnotherClassIsRefused) {
    archive::Loading loading(Record()
                                 .u8(1)
                                 .text("mvFrequencyFilterBandPass")
                                 .then(archive::RingRecord().record())
                                 .bytes());
    EXPECT_EQ(archive::loadingThrows([&] { mfLoad<mvFrequencyFilterGabor>(loading); }), "BadValue");
}

}  // namespace
