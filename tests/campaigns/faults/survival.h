// What must hold once a call has failed.
#pragma once

#include <string>

#include "campaigns/faults/call.h"

namespace faults {

/// A call in which nothing fails: the states before and after it, and what it came to.
struct Reference {
    Reference(const Operation& operation, Operands& operands, const Trouble& trouble);

    State before;
    Outcome outcome;
    State after;
};

/// Expects that whatever is not as it was is as a call that failed so may leave it.
void expectOnlyAllowedChanges(const Operation& operation, const Failure& failure,
                              const Reference& reference, const State& left);

/// Expects states without a difference.
void expectSame(const State& expected, const State& found);

/// Expects that operands that get new contents by assignment are as good as new.
void expectUsable(const Operation& operation, const Operands& fresh, Operands& operands,
                  const Reference& good);

}  // namespace faults
