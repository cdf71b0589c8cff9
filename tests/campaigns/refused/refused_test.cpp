// What must not compile, beside what must.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Byte = unsigned char;

template <class T>
constexpr bool copies =
    std::is_copy_assignable_v<T> || std::is_move_assignable_v<T> || std::is_swappable_v<T>;

// From reads as a To where the types are only alike in what they hold.
template <class To, class From>
constexpr bool takes = std::is_constructible_v<To, From> || std::is_assignable_v<To&, From>;

// A To is made from a From, but only where the program says so.
template <class To, class From>
constexpr bool takesOnlyWhenTold =
    std::is_constructible_v<To, From> && !std::is_convertible_v<From, To>;

template <class T>
constexpr bool clearsItsBand = requires(T& buffer) {
    buffer.clearBand();
};
template <class T>
constexpr bool writesElements = requires(T& buffer) {
    buffer.put(0, 0, {1.0, 2.0}, false);
};
template <class T>
constexpr bool tellsItsState = requires(T& buffer) {
    buffer.hasData();
    buffer.inverseComputed();
    buffer.imageSize();
    buffer.offset();
    buffer.xformCache();
    buffer.band();
};

template <class F>
constexpr bool isSet = requires(F& filter) {
    filter.set(filter.parameters());
};
template <class F>
constexpr bool changes = requires(F& filter) {
    filter.frequency(0.1);
};
template <class F>
constexpr bool tellsItsParameters = requires(F& filter) {
    filter.hasResponse();
    filter.parameters();
};

// Through a base a filter would take the response of another class.
TEST(Refused, FiltersAreNotAssignedThroughTheirBases) {
    EXPECT_FALSE(copies<mvFrequencyFilter>);
    EXPECT_FALSE(copies<mvResponseFilter<mvRingParameters>>);
    EXPECT_FALSE(copies<mvResponseFilter<mvLobeParameters>>);
    EXPECT_FALSE(copies<mvRingFilter>);
    EXPECT_FALSE(copies<mvLobeFilter>);
    EXPECT_TRUE(copies<mvFrequencyFilterBandPass>);
    EXPECT_TRUE(copies<mvFrequencyFilterBandReject>);
    EXPECT_TRUE(copies<mvFrequencyFilterGabor>);
    EXPECT_TRUE(copies<mvFrequencyFilterGaborReject>);
    EXPECT_TRUE(copies<mvFrequencyFilterImage>);
}

TEST(Refused, FiltersDoNotBecomeOneAnother) {
    EXPECT_FALSE((takes<mvFrequencyFilterBandPass, const mvFrequencyFilterBandReject&>));
    EXPECT_FALSE((takes<mvFrequencyFilterBandReject, const mvFrequencyFilterBandPass&>));
    EXPECT_FALSE((takes<mvFrequencyFilterGabor, const mvFrequencyFilterGaborReject&>));
    EXPECT_FALSE((takes<mvFrequencyFilterGaborReject, const mvFrequencyFilterGabor&>));
    EXPECT_FALSE((takes<mvFrequencyFilterBandPass, const mvLobeParameters&>));
    EXPECT_FALSE((takes<mvFrequencyFilterGabor, const mvRingParameters&>));
    EXPECT_TRUE((takes<mvFrequencyFilterBandPass, const mvFrequencyFilterBandPass&>));
    EXPECT_TRUE((takes<mvFrequencyFilterGabor, const mvFrequencyFilterGabor&>));
}

TEST(Refused, PelsAreNotReadAsOthersNorWrittenWhereTheyAreConst) {
    EXPECT_FALSE(copies<mv_PelBuffer>);
    EXPECT_FALSE((takes<mvPelBuffer<Byte>, const mvPelBuffer_const<Byte>&>));
    EXPECT_FALSE((takes<mvPelBuffer_const<Byte>, const mvPelBuffer_const<double>&>));
    EXPECT_FALSE((std::is_constructible_v<mvPelBuffer<Byte>, const Byte*, long, long, long>));
    EXPECT_TRUE(copies<mvPelBuffer<Byte>>);
    EXPECT_TRUE(copies<mvPelBuffer_const<Byte>>);
    EXPECT_TRUE((takes<mvPelBuffer_const<Byte>, const mvPelBuffer<Byte>&>));
    EXPECT_TRUE((std::is_constructible_v<mvPelBuffer<Byte>, Byte*, long, long, long>));
    EXPECT_TRUE((std::is_constructible_v<mvPelBuffer_const<Byte>, const Byte*, long, long, long>));
}

TEST(Refused, NothingTurnsIntoAFilterOrAnErrorUnasked) {
    EXPECT_TRUE((takesOnlyWhenTold<mvFrequencyFilterImage, const mvFrequencyBuffer&>));
    EXPECT_TRUE((takesOnlyWhenTold<mvFrequencyFilterBandPass, const mvRingParameters&>));
    EXPECT_TRUE((takesOnlyWhenTold<mvFrequencyFilterBandReject, const mvRingParameters&>));
    EXPECT_TRUE((takesOnlyWhenTold<mvFrequencyFilterGabor, const mvLobeParameters&>));
    EXPECT_TRUE((takesOnlyWhenTold<mvFrequencyFilterGaborReject, const mvLobeParameters&>));
    EXPECT_TRUE((takesOnlyWhenTold<mvFrequencyDefs::BadCoord, const char*>));
    EXPECT_TRUE((takesOnlyWhenTold<mvRadian, double>));
}

TEST(Refused, ConstBuffersTellEverythingAndChangeNothing) {
    EXPECT_FALSE(clearsItsBand<const mvFrequencyBuffer>);
    EXPECT_FALSE(writesElements<const mvFrequencyBuffer>);
    EXPECT_TRUE(tellsItsState<const mvFrequencyBuffer>);
    EXPECT_TRUE(clearsItsBand<mvFrequencyBuffer>);
    EXPECT_TRUE(writesElements<mvFrequencyBuffer>);
}

template <class F>
struct EveryFilter : testing::Test {};
using Filters = testing::Types<mvFrequencyFilterBandPass, mvFrequencyFilterBandReject,
                               mvFrequencyFilterGabor, mvFrequencyFilterGaborReject>;
TYPED_TEST_SUITE(EveryFilter, Filters, );

TYPED_TEST(EveryFilter, TellsItsParametersWhenConstAndChangesNothing) {
    EXPECT_FALSE(isSet<const TypeParam>);
    EXPECT_FALSE(changes<const TypeParam>);
    EXPECT_TRUE(tellsItsParameters<const TypeParam>);
    EXPECT_TRUE(isSet<TypeParam>);
    EXPECT_TRUE(changes<TypeParam>);
}

}  // namespace
