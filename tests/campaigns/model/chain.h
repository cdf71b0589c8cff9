// Chains of operations: drawn, run, shrunk and printed.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "campaigns/model/operation.h"

namespace model {

struct Step {
    std::string operation;
    Arguments arguments{};
    /// The poll that fails, counted from 1; 0: none. It answers with a status, or throws.
    long failAt = 0;
    bool throws = false;
};

using Chain = std::vector<Step>;

/// What came of an operation's calls.
struct Outcomes {
    long good = 0;
    long refused = 0;
    long stopped = 0;
};
using Tally = std::map<std::string, Outcomes>;

/// A chain of 1 to 40 steps; the same for the same seed on every machine.
Chain drawnChain(unsigned long seed);

/// Runs the chain with the library and with the model. The first difference, led by the step where
/// it shows, or an empty text.
std::string differenceOf(const Chain& chain, Tally* tally = nullptr);

/// The shortest and simplest chain with a difference that leaving out and simplifying finds.
Chain shrunk(Chain chain);

/// As an argument of differenceOf, to be pasted into a test.
std::string textOf(const Chain& chain);

}  // namespace model
