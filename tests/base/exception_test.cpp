// The exception family of the base library.
#include <base/exception.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "support/longs.h"
#include "support/value_bytes.h"

namespace shop {
struct OutOfLenses : mvException {};
}  // namespace shop

namespace {

template <class E>
std::string printed(const E& exception) {
    std::ostringstream out;
    out << exception;
    return out.str();
}

template <class E>
constexpr bool kCopiesWithoutThrowing =
    std::is_nothrow_copy_constructible_v<E>&& std::is_nothrow_move_constructible_v<E>&&
        std::is_nothrow_copy_assignable_v<E>&& std::is_nothrow_move_assignable_v<E>;

static_assert(kCopiesWithoutThrowing<mvException>);
static_assert(kCopiesWithoutThrowing<mvExceptionWithString>);
static_assert(kCopiesWithoutThrowing<mvStatusException>);
static_assert(kCopiesWithoutThrowing<mvArchive::UnknownVersion>);
static_assert(kCopiesWithoutThrowing<mvArchive::Truncated>);
static_assert(kCopiesWithoutThrowing<mvArchive::BadValue>);
static_assert(kCopiesWithoutThrowing<mvArchive::UnknownClass>);
static_assert(kCopiesWithoutThrowing<mvArchive::WriteFailed>);

TEST(Exception, IsCaughtAsEachOfItsBases) {
    EXPECT_THROW(throw mvExceptionWithString("x"), mvExceptionWithString);
    EXPECT_THROW(throw mvExceptionWithString("x"), mvException);
    EXPECT_THROW(throw mvExceptionWithString("x"), mvPersistent);
    EXPECT_THROW(throw mvStatusException(1), mvException);
    EXPECT_THROW(throw mvArchive::Truncated(), mvException);
}

TEST(Exception, HasNoNumberOfItsOwn) {
    EXPECT_EQ(mvException().errorNumber(), 0);
    EXPECT_EQ(mvStatusException(7).errorNumber(), 0);
    EXPECT_EQ(mvArchive::Truncated().errorNumber(), 0);
}

// What is thrown by a copy of the exception on the heap that is told to delete itself.
template <class E>
void expectSuicideThrowsACopy(const E& exception) {
    mvException* const error = new E(exception);
    try {
        error->suicideAndRethrow();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const mvException& thrown) {
        EXPECT_EQ(typeid(thrown), typeid(E));
        EXPECT_EQ(printed(thrown), printed(exception));
    }
}

TEST(Exception, SuicideDeletesItAndThrowsACopy) {
    expectSuicideThrowsACopy(mvException());
    expectSuicideThrowsACopy(mvExceptionWithString("Too dark."));
    expectSuicideThrowsACopy(mvStatusException(7));
    expectSuicideThrowsACopy(mvArchive::UnknownVersion("here", 12));
    expectSuicideThrowsACopy(mvArchive::Truncated("Too short."));
    expectSuicideThrowsACopy(mvArchive::BadValue("Too odd."));
    expectSuicideThrowsACopy(mvArchive::UnknownClass("Too new."));
    expectSuicideThrowsACopy(mvArchive::WriteFailed("Too full."));
}

TEST(Exception, SuicideThrowsTheNearestBaseOfAClassThatDoesNotOverrideIt) {
    mvException* const error = new shop::OutOfLenses;
    try {
        error->suicideAndRethrow();
    } catch (const mvException& thrown) {
        EXPECT_EQ(typeid(thrown), typeid(mvException));
    }
}

TEST(Exception, WithoutAMessagePrintsItsClass) {
    EXPECT_EQ(printed(mvException()), "mvException");
    EXPECT_EQ(printed(mvExceptionWithString()), "mvExceptionWithString");
    EXPECT_EQ(printed(shop::OutOfLenses()), "shop::OutOfLenses");
}

TEST(ExceptionWithString, PrintsTheMessageAlone) {
    EXPECT_EQ(printed(mvExceptionWithString("Too dark.")), "Too dark.");
    EXPECT_EQ(printed(mvExceptionWithString("")), "");
}

TEST(ExceptionWithString, TellsNoMessageFromAnEmptyOne) {
    EXPECT_EQ(mvExceptionWithString().message(), nullptr);
    EXPECT_EQ(mvExceptionWithString(nullptr).message(), nullptr);
    EXPECT_STREQ(mvExceptionWithString("").message(), "");
}

TEST(ExceptionWithString, KeepsItsOwnText) {
    std::string text = "Too dark.";
    const mvExceptionWithString exception(text.c_str());
    text.assign(text.size(), '?');
    EXPECT_STREQ(exception.message(), "Too dark.");
}

TEST(ExceptionWithString, SharesItsTextWithCopiesThatOutliveIt) {
    mvExceptionWithString assigned;
    const char* kept = nullptr;
    {
        const mvExceptionWithString original("Too dark.");
        const mvExceptionWithString copy(original);
        EXPECT_EQ(copy.message(), original.message());
        assigned = copy;
        kept = original.message();
    }
    EXPECT_EQ(assigned.message(), kept);
    EXPECT_STREQ(assigned.message(), "Too dark.");
}

TEST(ExceptionWithString, ArchivesItsMessage) {
    EXPECT_EQ(hex(storedBy([](mvArchive& ar) {
                  mvExceptionWithString e("ab");
                  ar || e;
              })),
              "01 02 00 00 00 61 62");
    EXPECT_EQ(hex(storedBy([](mvArchive& ar) {
                  mvExceptionWithString e("");
                  ar || e;
              })),
              "01 00 00 00 00");
    EXPECT_EQ(hex(storedBy([](mvArchive& ar) {
                  mvExceptionWithString e;
                  ar || e;
              })),
              "00");
}

TEST(ExceptionWithString, LoadsItsMessage) {
    for (const char* text : {"Too dark.", "", static_cast<const char*>(nullptr)}) {
        Loading loading(storedBy([&](mvArchive& ar) {
            mvExceptionWithString e(text);
            ar || e;
        }));
        mvExceptionWithString loaded("former");
        loading.archive() || loaded;
        EXPECT_STREQ(loaded.message(), text);
        EXPECT_EQ(loading.rest(), 0u);
    }
}

TEST(ExceptionWithString, KeepsEveryByteOfALoadedMessage) {
    const std::string record("\1\3\0\0\0a\0b", 8);
    Loading loading(record);
    mvExceptionWithString loaded;
    loading.archive() || loaded;
    EXPECT_STREQ(loaded.message(), "a");
    EXPECT_EQ(hex(storedBy([&](mvArchive& ar) { ar || loaded; })), hex(record));
}

TEST(ExceptionWithString, KeepsItsMessageWhenLoadingFails) {
    const std::string record("\1\4\0\0\0abcd", 9);
    for (std::size_t size = 0; size < record.size(); ++size) {
        Loading loading(record.substr(0, size));
        mvExceptionWithString exception("former");
        EXPECT_THROW(loading.archive() || exception, mvArchive::Truncated) << size;
        EXPECT_STREQ(exception.message(), "former");
    }
}

TEST(StatusException, CarriesItsStatus) {
    const mvStatusException exception(-5);
    EXPECT_EQ(mvStatusException(exception).status(), -5);
    EXPECT_NE(printed(exception).find("-5"), std::string::npos);
}

TEST(StatusException, ArchivesItsStatus) {
    mvStatusException exception(258), loaded(0);
    const std::string record = storedBy([&](mvArchive& ar) { ar || exception; });
    EXPECT_EQ(hex(record), "02 01 00 00");
    Loading(record).archive() || loaded;
    EXPECT_EQ(loaded.status(), 258);
}

TEST(StatusException, IsWrittenAndReadOncePerArchive) {
    mvStatusException exception(258), loaded(0);
    const std::string record = storedBy([&](mvArchive& ar) { ar || exception || exception; });
    EXPECT_EQ(hex(record), "02 01 00 00");
    Loading loading(record);
    loading.archive() || loaded || loaded;
    EXPECT_EQ(loaded.status(), 258);
    EXPECT_EQ(loading.rest(), 0U);
}

TEST(ThrowExceptionOnFailure, ThrowsForEveryStatusButZero) {
    EXPECT_NO_THROW(mfThrowExceptionOnFailure(0));
    for (const long status : {1L, -1L, 77L, support::powerOfTwo(31)}) {
        try {
            mfThrowExceptionOnFailure(status);
            ADD_FAILURE() << status;
        } catch (const mvStatusException& exception) {
            EXPECT_EQ(exception.status(), status);
        }
    }
}

TEST(ArchiveErrors, PrintSomethingUseful) {
    EXPECT_EQ(printed(mvArchive::UnknownVersion("filt/fft", 572)),
              "The archive holds a record of an unknown version (filt/fft, 572).");
    EXPECT_EQ(printed(mvArchive::UnknownVersion(nullptr, 0)),
              "The archive holds a record of an unknown version.");
    EXPECT_FALSE(printed(mvArchive::Truncated()).empty());
    EXPECT_FALSE(printed(mvArchive::BadValue()).empty());
    EXPECT_FALSE(printed(mvArchive::UnknownClass()).empty());
    EXPECT_FALSE(printed(mvArchive::WriteFailed()).empty());
}

TEST(UnknownVersion, KeepsItsOwnTextAndNumber) {
    std::string text = "filt/fft";
    const mvArchive::UnknownVersion error(text.c_str(), 572);
    text.assign(text.size(), '?');
    const mvArchive::UnknownVersion copy(error);
    EXPECT_STREQ(copy.text(), "filt/fft");
    EXPECT_EQ(copy.number(), 572);
    EXPECT_EQ(mvArchive::UnknownVersion(nullptr, 0).text(), nullptr);
}

}  // namespace
