// Each allocation and each attention poll of each public operation fails in turn.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <list>
#include <new>
#include <ostream>
#include <utility>

#include "campaigns/faults/allocation_faults.h"
#include "campaigns/faults/call.h"
#include "campaigns/faults/operations.h"
#include "campaigns/faults/survival.h"

namespace {

using faults::AllocationFaults;
using faults::Event;
using faults::Extent;
using faults::Failure;
using faults::Operands;
using faults::Operation;
using faults::Outcome;
using faults::Reference;
using faults::Shape;
using faults::Trouble;

// A kind of event that can be made to fail.
struct Fault {
    const char* name;
    Trouble (*at)(long n);
    long Outcome::*events;
};

const Fault kFaults[] = {
    {"only this allocation", [](long n) { return Trouble{.allocation = n}; },
     &Outcome::allocations},
    {"this allocation and all later",
     [](long n) { return Trouble{.allocation = n, .extent = Extent::kThisAndLater}; },
     &Outcome::allocations},
    {"a poll answers with a status", [](long n) { return Trouble{.poll = n}; }, &Outcome::polls},
    {"a poll throws", [](long n) { return Trouble{.poll = n, .pollThrows = true}; },
     &Outcome::polls},
    {"a watcher throws", [](long n) { return Trouble{.change = n}; }, &Outcome::changes},
};

// Where a call failed, of which it is known when an inverse marks what it has overwritten.
Failure failureOf(const Operation& operation, const Shape& shape, const Outcome& outcome,
                  const Outcome& good) {
    const bool isPoll = outcome.first == Event::kPoll;
    const long lastBeforeMark = good.polls - (shape.offset ? operation.pollsAfterMark : 0);
    return {isPoll, isPoll && outcome.polls > lastBeforeMark};
}

// Runs the operation with event n failing; false when there is no such event.
bool survives(const Operation& operation, const Shape& shape, const Operands& fresh,
              const Fault& fault, long n, const Reference& good) {
    Operands operands = fresh;
    separate(operands);
    const Outcome outcome = call(operation, operands, fault.at(n));
    if (outcome.*fault.events < n) {
        EXPECT_EQ(outcome.thrown, operation.thrown);
        return false;
    }
    EXPECT_EQ(outcome.thrown, outcome.toThrow);
    expectOnlyAllowedChanges(operation, failureOf(operation, shape, outcome, good.outcome), good,
                             stateOf(operands));
    expectUsable(operation, fresh, operands, good);
    return true;
}

// Returns how many events failed.
long expectSurvival(const Operation& operation, const Shape& shape, const Fault& fault) {
    const Operands fresh(shape);
    Operands operands = fresh;
    separate(operands);
    const Reference good(operation, operands, {});
    EXPECT_EQ(good.outcome.thrown, operation.thrown);
    long n = 0;
    for (bool more = true; more;) {
        ++n;
        SCOPED_TRACE(testing::Message() << operation.name << " of " << shape.width << " x "
                                        << shape.height << ", " << fault.name << ", number " << n);
        const std::size_t blocks = faults::liveBlocks();
        more = survives(operation, shape, fresh, fault, n, good);
        EXPECT_EQ(faults::liveBlocks(), blocks);
    }
    return n - 1;
}

struct Group {
    const char* name;
    std::vector<Operation> (*operations)();
};

void PrintTo(const Group& group, std::ostream* out) {
    *out << group.name;
}

class Faults : public testing::TestWithParam<Group> {};

TEST_P(Faults, EndTheCallAndSpoilNothingElse) {
    long failed = 0;
    const std::vector<Operation> operations = GetParam().operations();
    for (const Operation& operation : operations) {
        for (const Shape& shape : {Shape{8, 4, false}, Shape{33, 17, true}, Shape{1, 1, true}}) {
            for (const Fault& fault : kFaults) failed += expectSurvival(operation, shape, fault);
        }
    }
    EXPECT_GT(failed, 100) << "nothing was made to fail";
    RecordProperty("Operations", std::to_string(operations.size()));
    RecordProperty("FailedEvents", std::to_string(failed));
}

// The registry grows once and stays large, so that its growth fails before it ever succeeds.
TEST(Registry, ThatCannotGrowIsAsItWas) {
    const auto make = []() -> mvPersistent* { return nullptr; };
    const std::vector<std::string> before = mfRegisteredClasses();
    std::list<mv_Instantiator> registrations;
    for (int i = 0; i < 100; ++i) {
        for (long n = 1;; ++n) {
            const AllocationFaults faults(n, Extent::kOnlyThis);
            try {
                registrations.emplace_back(typeid(Operation), make);
            } catch (const std::bad_alloc&) {
                continue;
            }
            break;
        }
        ASSERT_EQ(registrations.size() + before.size(), mfRegisteredClasses().size());
    }
    registrations.clear();
    EXPECT_EQ(mfRegisteredClasses(), before);
}

// Only planes that are too large for one block are worked on in several.
TEST(LargestPlane, KeepsItsFrequenciesUntilThereIsMemory) {
    mvFrequencyBuffer spectrum(2048, 2048);
    for (long y = 0; y < 2048; ++y) spectrum.put(0, y, {1.0, 0.0}, false);
    mvPelBuffer<unsigned char> out;
    const std::size_t blocks = faults::liveBlocks();
    long failed = 0;
    for (bool more = true; more;) {
        const AllocationFaults faults(failed + 1);
        try {
            mfInverseFFT<unsigned char>(std::as_const(spectrum), out, false);
            more = false;
        } catch (const std::bad_alloc&) {
            ++failed;
            ASSERT_FALSE(out.isBound());
        }
    }
    EXPECT_GT(failed, 5) << "more than one block is wanted";
    EXPECT_EQ(spectrum.getReal(0, 2047, false), 1.0);
    out = {};
    EXPECT_EQ(faults::liveBlocks(), blocks);
}

// Leaves the places of the failed allocations in the file that the environment names.
class SitesFile : public testing::Environment {
    void TearDown() override {
        const char* const name = std::getenv("MVFREQ_FAILED_SITES");
        if (name == nullptr) return;
        std::ofstream file(name);
        for (const std::size_t site : faults::failedSites()) file << site << '\n';
    }
};

[[maybe_unused]] const testing::Environment* const kSitesFile =
    testing::AddGlobalTestEnvironment(new SitesFile);

INSTANTIATE_TEST_SUITE_P(All, Faults,
                         testing::Values(Group{"Buffers", faults::bufferOperations},
                                         Group{"Transforms", faults::transformOperations},
                                         Group{"Filters", faults::filterOperations},
                                         Group{"Pictures", faults::pictureOperations},
                                         Group{"Base", faults::baseOperations}),
                         [](const auto& param) { return std::string(param.param.name); });

}  // namespace
