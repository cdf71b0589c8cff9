// What the base library does when allocations fail, and what it allocates.
#include <base/archive.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <sstream>
#include <string>

namespace {

// Allocations are counted while `armed`; the one numbered `failAt` fails, from 1 on.
bool armed = false;
long failAt = 0;
long allocations = 0;
std::size_t largest = 0;

void* allocate(std::size_t size) {
    if (armed) {
        largest = std::max(largest, size);
        if (++allocations == failAt) throw std::bad_alloc();
    }
    void* const block = std::malloc(size);
    if (!block) throw std::bad_alloc();
    return block;
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

template <class Call>
void armedCall(long failure, Call call) {
    failAt = failure;
    allocations = 0;
    largest = 0;
    armed = true;
    try {
        call();
    } catch (...) {
        armed = false;
        throw;
    }
    armed = false;
}

// Lets each allocation of `call` fail in turn until none does; returns how many there were.
template <class Call, class Check>
long failEach(Call call, Check check) {
    for (long failure = 1;; ++failure) {
        try {
            armedCall(failure, call);
            return failure - 1;
        } catch (const std::bad_alloc&) {
            check();
        }
    }
}

class Cup : public mvPersistent {
  public:
    Cup() { ++alive; }
    ~Cup() override { --alive; }
    static mvPersistent* make() { return new Cup; }

    mvExceptionWithString label{"a label that is too long to be kept within a string object"};
    std::unique_ptr<Cup> inner;
    static int alive;

    using mvPersistent::mutating_;
    using mvPersistent::tracking_;

  protected:
    void dispatchSerialize(mvArchive& ar) override {
        if (haveVisited(ar, this, sizeof(Cup))) return;
        ar || label;
        if (ar.isStoring()) {
            Cup* pointer = inner.get();
            ar || pointer;
        } else {
            inner = mfLoad<Cup>(ar);
        }
        setVisited(ar, this, sizeof(Cup));
    }
};
int Cup::alive = 0;

const mv_Instantiator kCups(typeid(Cup), &Cup::make);

std::string storedCup() {
    Cup cup;
    cup.inner = std::make_unique<Cup>();
    Cup* pointer = &cup;
    std::ostringstream out;
    mvArchive ar(out);
    ar || pointer;
    return out.str();
}

TEST(Allocation, ThatFailsWhileLoadingLeavesNothingBehind) {
    const std::string bytes = storedCup();
    std::istringstream in;
    const auto load = [&] {
        in.clear();
        in.seekg(0);
        mvArchive ar(in);
        EXPECT_EQ(Cup::alive, 0);
        const std::unique_ptr<Cup> cup = mfLoad<Cup>(ar);
        EXPECT_STREQ(cup->inner->label.message(), cup->label.message());
    };
    in.str(bytes);
    EXPECT_GT(failEach(load, [] { EXPECT_EQ(Cup::alive, 0); }), 10);
    EXPECT_EQ(Cup::alive, 0);
}

TEST(Allocation, ThatFailsWhileStoringLeavesTheObjectAsItWas) {
    const std::string bytes = storedCup();
    Cup cup;
    cup.inner = std::make_unique<Cup>();
    std::string buffer;
    std::stringbuf sink(std::ios::out);
    const auto store = [&] {
        Cup* pointer = &cup;
        std::ostream out(nullptr);
        sink.str("");
        out.rdbuf(&sink);
        mvArchive ar(out);
        try {
            ar || pointer;
        } catch (const mvArchive::WriteFailed&) {
            throw std::bad_alloc();  // the sink ran out of memory
        }
    };
    EXPECT_GT(failEach(store, [] {}), 5);
    EXPECT_EQ(sink.str(), bytes);
}

TEST(Allocation, ThatFailsInWatchKeepsTheFormerWatcher) {
    Cup cup;
    int former = 0, latter = 0;
    mvPersistent::watch(cup, [&] { ++former; });
    const auto watch = [&] { mvPersistent::watch(cup, [&latter] { ++latter; }); };
    EXPECT_GT(failEach(watch, [&] { cup.mutating_(); }), 0);
    EXPECT_GT(former, 0);
    cup.mutating_();
    EXPECT_EQ(latter, 1);
}

TEST(Allocation, IsNotNeededToCopyExceptions) {
    const mvExceptionWithString message("a message");
    const mvArchive::UnknownVersion version("filt/fft", 572);
    const mvArchive::BadValue value;
    armedCall(1, [&] {
        const mvExceptionWithString copiedMessage(message);
        const mvArchive::UnknownVersion copiedVersion(version);
        const mvArchive::BadValue copiedValue(value);
        mvExceptionWithString assigned(nullptr);
        assigned = copiedMessage;
    });
    EXPECT_EQ(allocations, 0);
}

TEST(Allocation, FollowsTheBytesAndNotTheLengthOfAnArchive) {
    std::istringstream in(std::string("\xff\xff\xff\xff") + std::string(1000, 'x'));
    mvArchive ar(in);
    std::string text;
    EXPECT_THROW(armedCall(0, [&] { ar || text; }), mvArchive::Truncated);
    EXPECT_LE(largest, 1u << 17);
}

TEST(Allocation, ForALongTextStaysWithinAFewTimesItsBytes) {
    constexpr std::size_t kLength = 10 << 20;
    std::istringstream in(std::string{"\0\0\xa0\0", 4} + std::string(kLength, 'x'));
    mvArchive ar(in);
    std::string text;
    armedCall(0, [&] { ar || text; });
    EXPECT_EQ(text.size(), kLength);
    EXPECT_LE(largest, 2 * kLength + 1);
}

}  // namespace
