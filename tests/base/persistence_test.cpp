// Persistent objects: watchers, and what copies leave behind.
#include <base/persistence.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "support/slots.h"
#include "support/value_bytes.h"

namespace {

class Dial : public mvPersistent {
  public:
    int value() const { return value_; }
    void turn(int value) {
        mutating_();
        value_ = value;
    }
    bool tracked() const { return tracking_(); }

    using mvPersistent::dispatchSerialize;
    using mvPersistent::loadSimple;
    using mvPersistent::reInit;
    static bool visited(mvArchive& ar, const mvPersistent* object, std::size_t size) {
        return haveVisited(ar, object, size);
    }
    static void visit(mvArchive& ar, const mvPersistent* object, std::size_t size) {
        setVisited(ar, object, size);
    }

  private:
    int value_ = 0;
};

TEST(Persistent, KeepsTheOrderOfItsVirtualFunctions) {
    EXPECT_EQ(support::slotOf(&Dial::dispatchSerialize), 2);
    EXPECT_EQ(support::slotOf(&Dial::reInit), 3);
    EXPECT_EQ(support::slotOf(&Dial::loadSimple), 4);
    EXPECT_EQ(support::slotOf(&Dial::turn), -1);
}

TEST(Watch, IsCalledBeforeTheChange) {
    Dial dial;
    int seen = -1;
    mvPersistent::watch(dial, [&] { seen = dial.value(); });
    dial.turn(5);
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(dial.value(), 5);
    dial.turn(6);
    EXPECT_EQ(seen, 5);
}

TEST(Watch, SetsTheTrackingFlag) {
    Dial dial;
    EXPECT_FALSE(dial.tracked());
    dial.turn(1);
    mvPersistent::watch(dial, [] {});
    EXPECT_TRUE(dial.tracked());
    mvPersistent::watch(dial, nullptr);
    EXPECT_FALSE(dial.tracked());
    dial.turn(2);
    EXPECT_EQ(dial.value(), 2);
}

TEST(Watch, ReplacesTheFormerWatcher) {
    Dial dial;
    int first = 0, second = 0;
    mvPersistent::watch(dial, [&] { ++first; });
    mvPersistent::watch(dial, [&] { ++second; });
    dial.turn(1);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(Watch, MayReplaceItselfWhileItRuns) {
    Dial dial;
    int first = 0, second = 0;
    mvPersistent::watch(dial, [&dial, &first, &second, text = std::string(100, 'x')] {
        mvPersistent::watch(dial, [&second] { ++second; });
        first += static_cast<int>(text.size());
    });
    dial.turn(1);
    dial.turn(2);
    EXPECT_EQ(first, 100);
    EXPECT_EQ(second, 1);
}

TEST(Watch, KeepsTheChangeFromBeingMadeWhenItThrows) {
    Dial dial;
    mvPersistent::watch(dial, [] { throw std::runtime_error("locked"); });
    EXPECT_THROW(dial.turn(1), std::runtime_error);
    EXPECT_EQ(dial.value(), 0);
}

TEST(Watch, StaysWithItsObject) {
    Dial dial;
    int calls = 0;
    mvPersistent::watch(dial, [&] { ++calls; });
    Dial copy(dial), assigned;
    assigned = dial;
    Dial moved(std::move(dial));
    EXPECT_FALSE(copy.tracked() || assigned.tracked() || moved.tracked());
    dial = Dial();
    EXPECT_TRUE(dial.tracked());
    dial.turn(1);
    EXPECT_EQ(calls, 1);
}

TEST(Visited, HoldsForOneArchiveOneObjectAndOneSize) {
    std::ostringstream out;
    mvArchive ar(out), other(out);
    Dial dial, second;
    EXPECT_FALSE(Dial::visited(ar, &dial, 8));
    Dial::visit(ar, &dial, 8);
    Dial::visit(ar, &dial, 8);
    EXPECT_TRUE(Dial::visited(ar, &dial, 8));
    EXPECT_FALSE(Dial::visited(ar, &dial, 16));
    EXPECT_FALSE(Dial::visited(ar, &second, 8));
    EXPECT_FALSE(Dial::visited(other, &dial, 8));
    Dial::visit(ar, &dial, 16);
    EXPECT_TRUE(Dial::visited(ar, &dial, 16));
}

TEST(Visited, IsNeverTrueForNull) {
    std::ostringstream out;
    mvArchive ar(out);
    Dial::visit(ar, nullptr, 8);
    EXPECT_FALSE(Dial::visited(ar, nullptr, 8));
}

TEST(Visited, StaysWithItsObject) {
    std::ostringstream out;
    mvArchive ar(out);
    Dial dial, assigned;
    Dial::visit(ar, &dial, 8);
    const Dial copy(dial);
    assigned = dial;
    EXPECT_FALSE(Dial::visited(ar, &copy, 8));
    EXPECT_FALSE(Dial::visited(ar, &assigned, 8));
    dial = assigned;
    EXPECT_TRUE(Dial::visited(ar, &dial, 8));
}

TEST(Persistent, WritesNothingOfItsOwn) {
    EXPECT_EQ(storedBy([](mvArchive& ar) {
                  Dial dial;
                  ar || dial;
                  dial.dispatchSerialize(ar);
                  dial.loadSimple(ar);
                  dial.reInit();
              }),
              "");
}

}  // namespace
