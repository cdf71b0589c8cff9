// Chains of operations, run by library and model side by side.
#include "campaigns/model/chain.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "campaigns/model/compare.h"
#include "support/attention.h"
#include "support/thrown.h"

namespace model {
namespace {

using support::AttentionCounter;

struct Outcome {
    std::string thrown;
    long polls;
    bool stopped;
};

Outcome runLibrary(const Operation& operation, const Step& step, Library& library) {
    const auto how = step.throws ? AttentionCounter::How::kThrow : AttentionCounter::How::kStatus;
    const AttentionCounter counter(step.failAt, how);
    std::string thrown;
    try {
        const std::string error = support::thrownBy([&] {
            thrown = support::loadingThrows([&] { operation.call(library, step.arguments); });
        });
        if (error != "nothing") thrown = error;
    } catch (const std::exception& error) {
        thrown = error.what();
    }
    return {thrown, counter.polls(), false};
}

// What stops at a poll, as the library's text.
[[noreturn]] void stop(const Step& step) {
    throw Stopped{
        {step.throws ? "Interrupted" : "status " + std::to_string(AttentionCounter::kFailure)}};
}

// The library comes first: of some calls it is only said how often they poll at least.
Outcome runModel(const Operation& operation, const Step& step, World& world, long libraryPolls) {
    long polls = 0;
    world.poll = [&] {
        if (++polls == step.failAt) stop(step);
    };
    world.morePolls = [&] {
        const long before = std::exchange(polls, std::max(polls, libraryPolls));
        if (before < step.failAt && step.failAt <= polls) stop(step);
    };
    try {
        operation.model(world, step.arguments);
    } catch (const Stopped& stopped) {
        return {stopped.text, polls, true};
    } catch (const Thrown& thrown) {
        return {thrown.text, polls, false};
    }
    return {"nothing", polls, false};
}

void count(Tally* tally, const Step& step, const Outcome& outcome) {
    if (tally == nullptr) return;
    Outcomes& outcomes = (*tally)[step.operation];
    ++(outcome.stopped               ? outcomes.stopped
       : outcome.thrown != "nothing" ? outcomes.refused
                                     : outcomes.good);
}

std::string runStep(const Step& step, Library& library, World& world, Tally* tally) {
    const Operation& operation = operationOf(step.operation);
    library.answer.clear();
    world.answer.clear();
    library.record.clear();
    world.record.clear();
    const Outcome found = runLibrary(operation, step, library);
    const Outcome expected = runModel(operation, step, world, found.polls);
    count(tally, step, expected);
    if (expected.thrown != found.thrown) {
        return expected.thrown + " expected to be thrown, " + found.thrown + " was";
    }
    if (expected.polls != found.polls) {
        return std::to_string(expected.polls) + " polls expected, " + std::to_string(found.polls) +
               " made";
    }
    return compare(library, world);
}

}  // namespace

std::string differenceOf(const Chain& chain, Tally* tally) {
    Library library;
    World world;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const std::string difference = runStep(chain[i], library, world, tally);
        if (!difference.empty()) {
            return "step " + std::to_string(i + 1) + ", " + chain[i].operation + ": " + difference;
        }
    }
    return "";
}

std::string textOf(const Chain& chain) {
    std::ostringstream out;
    for (const Step& step : chain) {
        out << "    {\"" << step.operation << "\", {";
        const char* separator = "";
        for (const long value : step.arguments) {
            out << std::exchange(separator, ", ") << value;
        }
        out << '}';
        if (step.failAt != 0)
            out << ", " << step.failAt << ", " << (step.throws ? "true" : "false");
        out << "},\n";
    }
    return "{\n" + out.str() + "}";
}

}  // namespace model
