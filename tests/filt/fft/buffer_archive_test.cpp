// The record of a frequency buffer: bytes, versions, round trips, failed loads.
#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/random_planes.h"
#include "support/spectra.h"
#include "support/thrown.h"
#include "support/use.h"

namespace {

using archive::Record;

// Fields 2 to 9 of a buffer of 2 x 1 elements.
Record head(unsigned version) {
    return Record().u8(version).i32(2).i32(1).i32(2).i32(1).i32(1).i32(-3).i32(9).flag(true);
}

Record matrix() {
    return Record().f64(2).f64(0.5).f64(-0.25).f64(3).f64(7).f64(-9);
}

Record tail() {
    return Record().integerPair(-4, 70000).flag(true).floats({1.5F, -2.0F, 0.0F, 4.0F});
}

mvFrequencyBuffer sample() {
    reference::Spectrum spectrum;
    spectrum.plane = reference::Plane(2, 1);
    spectrum.plane.elements = {{1.5F, -2.0F}, {0.0F, 4.0F}};
    spectrum.imageWidth = 2;
    spectrum.imageHeight = 1;
    spectrum.x = -4;
    spectrum.y = 70000;
    spectrum.masked = true;
    spectrum.maskedMiny = -3;
    spectrum.maskedMaxy = 9;
    spectrum.inverseComputed = true;
    return support::bufferOf(spectrum);
}

TEST(BufferRecord, HasTheseBytes) {
    mvFrequencyBuffer buffer = sample();
    const Record expected = head(1).flag(true).then(matrix()).then(tail());
    EXPECT_EQ(archive::hex(archive::stored(buffer)), archive::hex(expected.bytes()));
}

TEST(BufferRecord, OfAConstBufferIsTheSame) {
    mvFrequencyBuffer buffer = sample();
    const mvFrequencyBuffer constant = sample();
    EXPECT_EQ(archive::stored(constant), archive::stored(buffer));
}

TEST(BufferRecord, IsNotLoadedIntoAConstBuffer) {
    const mvFrequencyBuffer constant = sample();
    support::Loading loading(archive::stored(constant));
    const std::size_t size = loading.rest();
    EXPECT_THROW(loading.archive() || constant, mvArchive::BadValue);
    EXPECT_EQ(loading.rest(), size);
    EXPECT_TRUE(constant == sample());
}

TEST(BufferRecord, LoadsEveryField) {
    mvFrequencyBuffer buffer;
    archive::load(head(1).flag(true).then(matrix()).then(tail()).bytes(), buffer);
    EXPECT_TRUE(buffer == sample());
    EXPECT_TRUE(support::sameSpectrum(support::spectrumOf(sample()), buffer));
    EXPECT_EQ(mvi::BufferAccess::xform(buffer), support::someXformCache());
}

TEST(BufferRecord, VersionZeroCarriesTheTransformItself) {
    mvFrequencyBuffer buffer;
    archive::load(head(0).then(matrix()).then(tail()).bytes(), buffer);
    EXPECT_TRUE(buffer == sample());
    EXPECT_EQ(mvi::BufferAccess::xform(buffer), support::someXformCache());
    EXPECT_EQ(archive::stored(buffer), head(1).flag(true).then(matrix()).then(tail()).bytes());
}

TEST(BufferRecord, OfABufferWithoutData) {
    mvFrequencyBuffer buffer;
    const std::string bytes = archive::stored(buffer);
    // Version, seven longs, inverse flag, no transform, offset, no data, no floats.
    ASSERT_EQ(bytes.size(), 1U + 28 + 1 + 1 + 9 + 1 + 5);
    EXPECT_EQ(bytes[0], 1);
    EXPECT_EQ(archive::hex(std::string_view(bytes).substr(30)),
              archive::hex(Record().flag(false).integerPair(0, 0).flag(false).floats({}).bytes()));
    mvFrequencyBuffer again(8, 8);
    archive::load(bytes, again);
    EXPECT_TRUE(again == buffer);
    EXPECT_EQ(support::thrownBy([&] { again.width(); }), support::kNoData);
    EXPECT_EQ(archive::stored(again), bytes);
}

TEST(BufferRecord, WithoutDataWhateverTheSizesAre) {
    mvFrequencyBuffer buffer(8, 8);
    archive::load(head(1).flag(false).integerPair(1, 2).flag(false).floats({}).bytes(), buffer);
    EXPECT_EQ(support::thrownBy([&] { buffer.width(); }), support::kNoData);
    EXPECT_TRUE(buffer == mvFrequencyBuffer());
}

TEST(BufferRecord, RoundTripsKeepBitsAndBytes) {
    for (const auto& [w, h] : {std::pair(1, 1), std::pair(4, 16), std::pair(128, 64)}) {
        for (const bool masked : {false, true}) {
            reference::Spectrum spectrum =
                support::someSpectrum(support::specialPlane(w, h, 3, true));
            spectrum.masked = masked;
            spectrum.inverseComputed = !masked;
            mvFrequencyBuffer buffer = support::bufferOf(spectrum);
            const std::string bytes = archive::stored(buffer);
            mvFrequencyBuffer again(2, 2);
            archive::load(bytes, again);
            EXPECT_TRUE(again == buffer);
            EXPECT_TRUE(support::sameSpectrum(spectrum, again));
            EXPECT_EQ(mvi::BufferAccess::xform(again), mvi::BufferAccess::xform(buffer));
            EXPECT_EQ(archive::stored(again), bytes);
        }
    }
}

TEST(BufferRecord, UnknownVersionsAreRefusedBeforeAnyField) {
    for (const unsigned version : {2U, 3U, 255U}) {
        mvFrequencyBuffer buffer = sample();
        EXPECT_EQ(archive::loadingThrows(Record().u8(version).bytes(), buffer),
                  archive::kUnknownBuffer);
        EXPECT_TRUE(buffer == sample());
        EXPECT_EQ(mvi::BufferAccess::xform(buffer), support::someXformCache());
    }
}

TEST(BufferRecord, UnknownVersionsOfTheRoutinesAreRefused) {
    const Record front = head(1).flag(false);
    mvFrequencyBuffer buffer;
    EXPECT_EQ(archive::loadingThrows(Record(front).u8(1).i32(0).i32(0).bytes(), buffer),
              archive::kUnknownRoutine);
    const Record beforeFloats = Record(front).integerPair(0, 0).flag(true);
    for (const unsigned version : {1U, 255U}) {
        EXPECT_EQ(archive::loadingThrows(Record(beforeFloats).u8(version).u32(0).bytes(), buffer),
                  archive::kUnknownRoutine);
    }
}

TEST(BufferRecord, AFailedLoadLeavesABufferThatCanBeUsed) {
    const std::string good = head(1).flag(true).then(matrix()).then(tail()).bytes();
    for (std::size_t length = 0; length < good.size(); ++length) {
        mvFrequencyBuffer buffer(8, 8);
        EXPECT_EQ(archive::loadingThrows(good.substr(0, length), buffer), "Truncated") << length;
        archive::use(buffer);
        mvFrequencyBuffer copy(buffer);
        archive::load(good, buffer);
        EXPECT_TRUE(buffer == sample());
        copy = buffer;
        EXPECT_TRUE(copy == sample());
    }
}

TEST(BufferRecord, LoadedFlagsAreTakenAsTheyStand) {
    mvFrequencyBuffer buffer;
    archive::load(Record()
                      .u8(1)
                      .i32(2)
                      .i32(1)
                      .i32(-7)
                      .i32(90)
                      .i32(-5)
                      .i32(12)
                      .i32(-12)
                      .flag(false)
                      .flag(false)
                      .then(tail())
                      .bytes(),
                  buffer);
    EXPECT_EQ(mvi::BufferAccess::imageWidth(buffer), -7);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(buffer), 90);
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), -5);
    EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), 12);
    EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), -12);
    EXPECT_EQ(buffer.get(1, 0, false), mvPair(0.0, 4.0));
}

}  // namespace
