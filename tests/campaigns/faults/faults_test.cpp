// Each allocation and each attention poll of each public operation fails in turn.
#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <fstream>
#include <list>
#include <new>
#include <ostream>

#include "campaigns/faults/allocation_faults.h"
#include "campaigns/faults/operations.h"
#include "support/attention.h"
#include "support/thrown.h"

namespace {

using faults::AllocationFaults;
using faults::changed;
using faults::Extent;
using faults::Failure;
using faults::Operands;
using faults::Operation;
using faults::Shape;
using faults::State;
using support::AttentionCounter;

struct Outcome {
    std::string thrown;
    long events;
};

std::string nameOf(const std::exception_ptr& error) {
    try {
        return support::thrownBy([&] {
            if (error) std::rethrow_exception(error);
        });
    } catch (const std::bad_alloc&) {
        return "bad_alloc";
    }
}

// A kind of event that can be made to fail, and what the call then throws.
struct Fault {
    const char* name;
    Outcome (*run)(const Operation&, Operands&, long failAt);
    const char* thrown;
    bool isPoll;
};

template <class Guard, auto kind>
Outcome runWith(const Operation& operation, Operands& operands, long failAt) {
    std::exception_ptr error;
    long events = 0;
    {
        const Guard guard(failAt, kind);
        try {
            operation.call(operands);
        } catch (...) {
            error = std::current_exception();
        }
        if constexpr (requires { guard.polls(); }) {
            events = guard.polls();
        } else {
            events = guard.count();
        }
    }
    return {nameOf(error), events};
}

const Fault kFaults[] = {
    {"only this allocation", runWith<AllocationFaults, Extent::kOnlyThis>, "bad_alloc", false},
    {"this allocation and all later", runWith<AllocationFaults, Extent::kThisAndLater>, "bad_alloc",
     false},
    {"a poll answers with a status", runWith<AttentionCounter, AttentionCounter::How::kStatus>,
     "status 77", true},
    {"a poll throws", runWith<AttentionCounter, AttentionCounter::How::kThrow>, "Interrupted",
     true},
};

std::string listed(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += " " + name;
    return text;
}

// The states before and after a call in which nothing fails, its exception, and where an inverse
// marks what it has overwritten.
struct Reference {
    Reference(const Operation& operation, const Shape& shape, const Fault& fault) {
        Operands operands(shape);
        before = stateOf(operands);
        const Outcome outcome = fault.run(operation, operands, 0);
        thrown = outcome.thrown;
        lastBeforeMark = outcome.events - (shape.offset ? operation.pollsAfterMark : 0);
        state = stateOf(operands);
    }
    std::string thrown;
    long lastBeforeMark = 0;
    State before, state;
};

// Whatever is not as it was is as the operation may leave it.
void expectOnlyAllowedChanges(const Operation& operation, const Failure& failure,
                              const State& before, const State& after, const State& good) {
    for (const std::string& name : changed(before, after)) {
        const auto allowed = operation.mayChange.find(name);
        ASSERT_NE(allowed, operation.mayChange.end()) << name << " changed";
        EXPECT_TRUE(
            isLeft(allowed->second, failure, before.at(name), after.at(name), good.at(name)))
            << name << " is left in a wrong state";
    }
}

// New contents by assignment, then the operation as if nothing had happened.
void expectUsable(const Operation& operation, const Shape& shape, Operands& operands,
                  const Reference& good) {
    const Operands fresh(shape);
    operands = fresh;
    EXPECT_EQ(kFaults[0].run(operation, operands, 0).thrown, good.thrown);
    EXPECT_EQ(listed(changed(good.state, stateOf(operands))), "") << "when called again";
}

// Runs the operation with event n failing; false when there is no such event.
bool survives(const Operation& operation, const Shape& shape, const Fault& fault, long n,
              const Reference& good) {
    Operands operands(shape);
    const Outcome outcome = fault.run(operation, operands, n);
    if (outcome.events < n) {
        EXPECT_EQ(outcome.thrown, operation.thrown);
        return false;
    }
    EXPECT_EQ(outcome.thrown, fault.thrown);
    const Failure failure{fault.isPoll, fault.isPoll && n > good.lastBeforeMark};
    expectOnlyAllowedChanges(operation, failure, good.before, stateOf(operands), good.state);
    expectUsable(operation, shape, operands, good);
    return true;
}

// Returns how many events failed.
long expectSurvival(const Operation& operation, const Shape& shape, const Fault& fault) {
    const Reference good(operation, shape, fault);
    EXPECT_EQ(good.thrown, operation.thrown);
    long n = 0;
    for (bool more = true; more;) {
        ++n;
        SCOPED_TRACE(testing::Message() << operation.name << " of " << shape.width << " x "
                                        << shape.height << ", " << fault.name << ", number " << n);
        const std::size_t blocks = faults::liveBlocks();
        more = survives(operation, shape, fault, n, good);
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
