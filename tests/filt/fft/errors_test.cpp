// The error classes: numbers, family, archive form, rethrow.
#include <filt/fft/errors.h>
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "support/archive_bytes.h"
#include "support/slots.h"

namespace {

template <class E>
struct ErrorTest : testing::Test {};

template <class E>
struct Facts;

#define FACTS(Class, Number)                                            \
    template <>                                                         \
    struct Facts<mvFrequencyDefs::Class> {                              \
        static constexpr long number = Number;                          \
        static constexpr const char* name = "mvFrequencyDefs::" #Class; \
    };
FACTS(InvalidArgument, 0x10006300)
FACTS(Uninitialized, 0x10006301)
FACTS(InvalidSize, 0x10006302)
FACTS(UnboundWindow, 0x10006303)
FACTS(InvalidBuffer, 0x10006304)
FACTS(BadCoord, 0x10006305)
#undef FACTS

using Leaves = testing::Types<mvFrequencyDefs::InvalidArgument, mvFrequencyDefs::Uninitialized,
                              mvFrequencyDefs::InvalidSize, mvFrequencyDefs::UnboundWindow,
                              mvFrequencyDefs::InvalidBuffer, mvFrequencyDefs::BadCoord>;
TYPED_TEST_SUITE(ErrorTest, Leaves, );

std::string stored(mvPersistent& object) {
    return support::storedBy([&](mvArchive& ar) { ar || object; });
}

// The text and number of the UnknownVersion that loading the bytes throws.
std::string refusal(mvPersistent& object, const std::string& bytes) {
    std::istringstream in(bytes);
    mvArchive ar(in);
    try {
        ar || object;
    } catch (const mvArchive::UnknownVersion& error) {
        return std::string(error.text()) + " " + std::to_string(error.number());
    }
    return "nothing";
}

TYPED_TEST(ErrorTest, HasItsNumber) {
    EXPECT_EQ(TypeParam("x").errorNumber(), Facts<TypeParam>::number);
}

TYPED_TEST(ErrorTest, IsCaughtAsEveryClassOfItsFamily) {
    EXPECT_THROW(throw TypeParam("x"), TypeParam);
    EXPECT_THROW(throw TypeParam("x"), mvFrequencyDefs::Errors);
    EXPECT_THROW(throw TypeParam("x"), mvExceptionWithString);
    EXPECT_THROW(throw TypeParam("x"), mvException);
    EXPECT_THROW(throw TypeParam("x"), mvPersistent);
}

TYPED_TEST(ErrorTest, KeepsItsMessageThroughCopiesAndMoves) {
    const TypeParam original("the text");
    TypeParam copy(original);
    EXPECT_STREQ(copy.message(), "the text");
    TypeParam assigned;
    EXPECT_EQ(assigned.message(), nullptr);
    EXPECT_EQ(&(assigned = original), &assigned);
    EXPECT_STREQ(assigned.message(), "the text");
    const TypeParam moved(std::move(copy));
    EXPECT_STREQ(moved.message(), "the text");
    TypeParam moveAssigned(nullptr);
    EXPECT_EQ(&(moveAssigned = std::move(assigned)), &moveAssigned);
    EXPECT_STREQ(moveAssigned.message(), "the text");
}

TYPED_TEST(ErrorTest, WritesItsMessage) {
    std::ostringstream out;
    out << TypeParam("the text");
    EXPECT_EQ(out.str(), "the text");
}

TYPED_TEST(ErrorTest, StoresTwoVersionBytesAndItsMessage) {
    TypeParam error("ab");
    EXPECT_EQ(stored(error), std::string("\0\0\1\2\0\0\0ab", 9));
    TypeParam silent;
    EXPECT_EQ(stored(silent), std::string("\0\0\0", 3));
}

TYPED_TEST(ErrorTest, ComesBackFromAnArchiveAsItsOwnClass) {
    for (const char* message : {"the text", static_cast<const char*>(nullptr)}) {
        std::stringstream stream;
        TypeParam error(message);
        mvPersistent* pointer = &error;
        mvArchive out(static_cast<std::ostream&>(stream));
        out || pointer;
        mvArchive in(static_cast<std::istream&>(stream));
        const auto loaded = mfLoad<mvFrequencyDefs::Errors>(in);
        ASSERT_TRUE(loaded);
        const mvFrequencyDefs::Errors& read = *loaded;
        EXPECT_EQ(typeid(read), typeid(TypeParam));
        EXPECT_STREQ(read.message(), message);
    }
}

TYPED_TEST(ErrorTest, RefusesAnUnknownVersionByItsName) {
    TypeParam error;
    const std::string name = Facts<TypeParam>::name;
    EXPECT_EQ(refusal(error, std::string("\1\0\0", 3)), name + " 0");
    EXPECT_EQ(refusal(error, std::string("\xff\0\0", 3)), name + " 0");
    EXPECT_EQ(refusal(error, std::string("\0\1\0", 3)), "mvFrequencyDefs::Errors 0");
    EXPECT_EQ(refusal(error, std::string("\0\0\0", 3)), "nothing");
}

TYPED_TEST(ErrorTest, IsStoredOncePerArchive) {
    TypeParam error("ab");
    std::ostringstream out;
    mvArchive ar(out);
    mvPersistent& object = error;
    ar || object;
    const auto size = out.str().size();
    ar || object;
    EXPECT_EQ(out.str().size(), size);
    EXPECT_EQ(stored(object).size(), size) << "another archive stores it again";
}

TYPED_TEST(ErrorTest, SuicideDeletesItAndThrowsACopy) {
    struct Counted : TypeParam {
        Counted(const char* message, int& counter) : TypeParam(message), count(counter) {}
        ~Counted() override { ++count; }
        int& count;
    };
    int deleted = 0;
    mvFrequencyDefs::Errors* error = new Counted("the text", deleted);
    try {
        error->suicideAndRethrow();
        FAIL() << "nothing was thrown";
    } catch (const mvFrequencyDefs::Errors& thrown) {
        EXPECT_EQ(typeid(thrown), typeid(TypeParam));
        EXPECT_STREQ(thrown.message(), "the text");
    }
    EXPECT_EQ(deleted, 1);
}

// Opens what is protected.
template <class E>
struct Opened : E {
    using E::dispatchSerialize;
    using E::loadSimple;
    using E::message_;
    using E::reInit;
};

template <class E>
void expectTheOrderOfTheFamily() {
    EXPECT_EQ(support::slotOf(&Opened<E>::dispatchSerialize), 2);
    EXPECT_EQ(support::slotOf(&Opened<E>::reInit), 3);
    EXPECT_EQ(support::slotOf(&Opened<E>::loadSimple), 4);
    EXPECT_EQ(support::slotOf(&E::errorNumber), 5);
    EXPECT_EQ(support::slotOf(&E::suicideAndRethrow), 6);
    EXPECT_EQ(support::slotOf(&Opened<E>::message_), 7);
}

TYPED_TEST(ErrorTest, KeepsTheOrderOfItsVirtualFunctions) {
    expectTheOrderOfTheFamily<TypeParam>();
}

TEST(Errors, KeepsTheOrderOfItsVirtualFunctions) {
    expectTheOrderOfTheFamily<mvFrequencyDefs::Errors>();
}

// As docs/errors.md shows it.
template <class Call>
std::string outcomeOf(Call call) {
    try {
        call();
        return "good";
    } catch (const mvStatusException& stopped) {  // the attention handler's answer
        return "stopped with status " + std::to_string(stopped.status());
    } catch (const mvFrequencyDefs::UnboundWindow&) {  // one class, for which there is a remedy
        return "no image";
    } catch (const mvFrequencyDefs::Errors& refused) {  // the others: the call was refused
        return "refused, number " + std::to_string(refused.errorNumber());
    } catch (const mvException& error) {  // the base library: archives, pel buffers, geometry
        std::ostringstream text;
        text << error;
        return text.str();
    } catch (const std::bad_alloc&) {  // from here on what passed through
        return "out of memory";
    } catch (const std::exception& error) {
        return error.what();
    }
}

TEST(Errors, AreToldApartByThoseWhoCatchThem) {
    const mvPelBuffer<double> image(4, 4);
    mvFrequencyBuffer buffer(4, 4);
    EXPECT_EQ(outcomeOf([&] { mfForwardFFT(image, buffer); }), "good");
    EXPECT_EQ(outcomeOf([&] { mfForwardFFT(mvPelBuffer<double>(), buffer); }), "no image");
    EXPECT_EQ(outcomeOf([&] { buffer.get(4, 0, false); }), "refused, number 268460805");
    EXPECT_EQ(outcomeOf([&] { image.window(0, 0, 5, 5); }),
              "The window is empty or outside the pel buffer.");
    EXPECT_EQ(outcomeOf([] { throw std::bad_alloc(); }), "out of memory");
    EXPECT_EQ(outcomeOf([] {
                  mvFrequencyFilterBandPass(1e300, 0.0, 0.1, {8, 8}, 0);
              }),
              "The response of the filter would be too large.");
    const auto refuse = [](void*) { return 7; };
    const auto former = vsys_set_attention_handler(refuse, nullptr);
    EXPECT_EQ(outcomeOf([&] { mfForwardFFT(image, buffer); }), "stopped with status 7");
    vsys_set_attention_handler(former.handler, former.context);
}

TEST(Errors, AreNoStandardExceptions) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, mvException>));
}

TEST(Errors, IsAbstract) {
    EXPECT_TRUE(std::is_abstract_v<mvFrequencyDefs::Errors>);
}

}  // namespace
