// Calls upon calls in which several things go wrong at once.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>
#include <vector>

#include "campaigns/faults/call.h"
#include "campaigns/faults/operations.h"
#include "campaigns/faults/survival.h"
#include "support/draw.h"

namespace faults {

// As tests show it where an expectation fails.
void PrintTo(const Trouble& trouble, std::ostream* out) {
    *out << "allocation " << trouble.allocation
         << (trouble.extent == Extent::kThisAndLater ? " and all later" : "")
         << (trouble.threads == Threads::kAll ? " of all threads" : "") << ", poll " << trouble.poll
         << (trouble.pollThrows ? " by throwing" : "")
         << (trouble.pollStarves ? " and all allocations behind it" : "") << ", change "
         << trouble.change << (trouble.isBusy ? ", the handler calls the library" : "")
         << (trouble.isUnwinding ? ", while another exception is thrown" : "");
}

namespace {

using support::Draw;

constexpr Shape kShapes[] = {{8, 4, false}, {33, 17, true}, {1, 1, true}, {16, 16, false}};

const std::vector<Operation>& allOperations() {
    static const std::vector<Operation> all = [] {
        std::vector<Operation> rows;
        for (const auto group : {bufferOperations, transformOperations, filterOperations,
                                 pictureOperations, baseOperations}) {
            for (Operation& operation : group()) rows.push_back(std::move(operation));
        }
        return rows;
    }();
    return all;
}

// The circumstances of a call, in which nothing fails yet.
Trouble circumstances(Draw& draw) {
    Trouble trouble;
    trouble.isBusy = draw.oneIn(4);
    trouble.isUnwinding = draw.oneIn(4);
    trouble.threads = draw.oneIn(2) ? Threads::kAll : Threads::kThis;
    return trouble;
}

// One of that many, or the one that does not come any more; often none.
long event(Draw& draw, long count) {
    return draw.oneIn(4) ? 0 : 1 + draw.below(count + 1);
}

Trouble trouble(Draw& draw, Trouble trouble, const Outcome& good) {
    trouble.allocation = event(draw, good.allocations);
    trouble.extent = draw.oneIn(2) ? Extent::kThisAndLater : Extent::kOnlyThis;
    trouble.poll = event(draw, good.polls);
    trouble.pollThrows = draw.oneIn(2);
    trouble.pollStarves = draw.oneIn(2);
    trouble.change = draw.oneIn(2) ? event(draw, good.changes) : 0;
    return trouble;
}

// Of two threads either may be heard first.
void expectThrownByWhatFailed(const Outcome& outcome, const Trouble& trouble) {
    if (trouble.threads == Threads::kAll && outcome.hasPollFailed && outcome.hasAllocationFailed) {
        const char* const poll = trouble.pollThrows ? "Interrupted" : "status 77";
        EXPECT_TRUE(outcome.thrown == "bad_alloc" || outcome.thrown == poll) << outcome.thrown;
    } else {
        EXPECT_EQ(outcome.thrown, outcome.toThrow);
    }
}

// Whether an operand may be as it is without a fault: a call that is refused late has come to that,
// and earlier calls may have moved the place where an inverse marks what it has overwritten.
bool mayBeFinished(const Operation& operation, const std::string& name, const Outcome& outcome,
                   const Reference& good) {
    if (good.outcome.thrown != "nothing") return true;
    const auto left = operation.mayChange.find(name);
    return outcome.hasPollFailed && left != operation.mayChange.end() &&
           left->second == Left::kOverwritten;
}

void expectAllowedState(const Operation& operation, const Outcome& outcome, const Reference& good,
                        State left) {
    for (auto& [name, picture] : left) {
        const bool isFinished = picture == good.after.at(name);
        if (isFinished && mayBeFinished(operation, name, outcome, good)) {
            picture = good.before.at(name);
        }
    }
    expectOnlyAllowedChanges(operation, {outcome.hasPollFailed, false}, good, left);
}

// Calls the operation on operands in any state.
void expectSurvived(const Operation& operation, Operands& operands, Draw& draw) {
    const Trouble calm = circumstances(draw);
    Operands twin = operands;
    separate(twin);
    const Reference good(operation, twin, calm);
    const Trouble all = trouble(draw, calm, good.outcome);
    SCOPED_TRACE(testing::Message() << operation.name << ": " << testing::PrintToString(all));
    const Outcome outcome = call(operation, operands, all);
    SCOPED_TRACE(testing::Message() << "thrown: " << outcome.thrown << " after "
                                    << outcome.allocations << " allocations, " << outcome.polls
                                    << " polls, " << outcome.changes << " changes");
    if (outcome.first == Event::kNone) {
        EXPECT_EQ(outcome.thrown, good.outcome.thrown);
        return expectSame(good.after, stateOf(operands));
    }
    expectThrownByWhatFailed(outcome, all);
    expectAllowedState(operation, outcome, good, stateOf(operands));
}

const Operation& drawnOperation(Draw& draw) {
    const std::vector<Operation>& all = allOperations();
    return all[static_cast<std::size_t>(draw.below(std::ssize(all)))];
}

// What holds nothing gives nothing but that.
void expectNewContents(Operands& operands, const Shape& shape) {
    Operands fresh(shape);
    const State given = stateOf(fresh);
    operands = fresh;
    for (const std::string& name : changed(given, stateOf(operands))) {
        EXPECT_FALSE(given.at(name).holds) << name;
    }
}

// One to four calls, each on what those before it left, and then new contents.
long expectSequenceSurvived(unsigned long seed) {
    Draw draw(seed);
    const Shape shape = draw.of(kShapes);
    const long length = 1 + draw.below(4);
    Operands operands(shape);
    for (long i = 0; i < length; ++i) {
        expectSurvived(drawnOperation(draw), operands, draw);
        separate(operands);
    }
    expectNewContents(operands, shape);
    return length;
}

// How many calls, when a longer run is wanted.
long callsToMake() {
    const char* const count = std::getenv("MVFREQ_COMPOUND_FAULTS");
    return count == nullptr ? 2000 : std::strtol(count, nullptr, 10);
}

TEST(CompoundFaults, EndCallsAndSpoilNothingElse) {
    allOperations();
    for (const Shape& shape : kShapes) (void)Operands(shape);  // keeps filters to copy
    const long wanted = callsToMake();
    long calls = 0;
    for (unsigned long seed = 0; calls < wanted && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "sequence " << seed);
        const std::size_t blocks = liveBlocks();
        calls += expectSequenceSurvived(seed);
        EXPECT_EQ(liveBlocks(), blocks);
    }
}

}  // namespace

}  // namespace faults
