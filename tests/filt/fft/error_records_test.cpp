// The records of the error classes, by reference and through the registry.
#include <filt/fft.h>

#include <memory>
#include <typeinfo>

#include "support/loading.h"
#include "support/thrown.h"

namespace {

using archive::Record;
using Defs = mvFrequencyDefs;

template <class E>
struct ErrorRecord : testing::Test {};
using Leaves = testing::Types<Defs::InvalidArgument, Defs::Uninitialized, Defs::InvalidSize,
                              Defs::UnboundWindow, Defs::InvalidBuffer, Defs::BadCoord>;
TYPED_TEST_SUITE(ErrorRecord, Leaves);

Record withMessage(const char* message) {
    return Record().u8(0).u8(0).flag(true).text(message);
}

Record withoutMessage() {
    return Record().u8(0).u8(0).flag(false);
}

template <class E>
std::string nameOf() {
    return "mvFrequencyDefs::" + support::className(E("x"));
}

TYPED_TEST(ErrorRecord, HasTheseBytes) {
    TypeParam error("No.");
    EXPECT_EQ(archive::hex(archive::stored(error)), archive::hex(withMessage("No.").bytes()));
    TypeParam silent(nullptr);
    EXPECT_EQ(archive::hex(archive::stored(silent)), archive::hex(withoutMessage().bytes()));
    TypeParam empty("");
    EXPECT_EQ(archive::hex(archive::stored(empty)), archive::hex(withMessage("").bytes()));
}

TYPED_TEST(ErrorRecord, LoadsItsMessage) {
    TypeParam error("before");
    archive::load(withMessage("after").bytes(), error);
    EXPECT_STREQ(error.message(), "after");
    TypeParam silent("before");
    archive::load(withoutMessage().bytes(), silent);
    EXPECT_EQ(silent.message(), nullptr);
}

TYPED_TEST(ErrorRecord, ComesBackThroughTheRegistryAsItself) {
    TypeParam error("Coordinates");
    mvPersistent* pointer = &error;
    const std::string bytes = archive::stored(pointer);
    EXPECT_EQ(
        archive::hex(bytes),
        archive::hex(
            Record().u8(1).text(nameOf<TypeParam>()).then(withMessage("Coordinates")).bytes()));
    archive::Loading loading(bytes);
    std::unique_ptr<Defs::Errors> loaded = mfLoad<Defs::Errors>(loading);
    const Defs::Errors& object = *loaded;
    EXPECT_EQ(typeid(object), typeid(TypeParam));
    EXPECT_EQ(loaded->errorNumber(), error.errorNumber());
    try {
        loaded.release()->suicideAndRethrow();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const TypeParam& thrown) {
        EXPECT_STREQ(thrown.message(), "Coordinates");
    }
}

template <class E>
struct WithErrorsPart : E {
    using E::E;
    void errorsPart(mvArchive& ar) { Defs::Errors::dispatchSerialize(ar); }
};

TYPED_TEST(ErrorRecord, TheErrorsPartIsVisitedByItself) {
    WithErrorsPart<TypeParam> error("No.");
    std::ostringstream out;
    mvArchive ar(out);
    error.errorsPart(ar);
    error.errorsPart(ar);
    EXPECT_EQ(archive::hex(out.str()), archive::hex(Record().u8(0).flag(true).text("No.").bytes()));
}

TYPED_TEST(ErrorRecord, UnknownVersionsNameTheClass) {
    for (const unsigned version : {1U, 255U}) {
        TypeParam error("kept");
        EXPECT_EQ(archive::loadingThrows(Record().u8(version).bytes(), error),
                  "UnknownVersion " + nameOf<TypeParam>() + " 0");
        EXPECT_EQ(archive::loadingThrows(Record().u8(0).u8(version).bytes(), error),
                  "UnknownVersion mvFrequencyDefs::Errors 0");
        EXPECT_STREQ(error.message(), "kept");
    }
}

TYPED_TEST(ErrorRecord, ASecondTimeNothingIsWritten) {
    TypeParam error("once");
    EXPECT_EQ(archive::stored(error, error), withMessage("once").bytes());
}

TYPED_TEST(ErrorRecord, TwoEqualErrorsAreTwoObjects) {
    TypeParam one("x");
    TypeParam two("x");
    EXPECT_EQ(archive::stored(one, two), withMessage("x").then(withMessage("x")).bytes());
}

TYPED_TEST(ErrorRecord, AFailedLoadLeavesAnErrorThatCanBeUsed) {
    const std::string good = withMessage("message").bytes();
    for (std::size_t length = 0; length < good.size(); ++length) {
        TypeParam error("old");
        EXPECT_EQ(archive::loadingThrows(good.substr(0, length), error), "Truncated") << length;
        EXPECT_STREQ(error.message(), "old");
        archive::load(good, error);
        EXPECT_STREQ(error.message(), "message");
    }
}

}  // namespace
