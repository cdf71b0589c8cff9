// What must hold once a call has failed.
#include "campaigns/faults/survival.h"

#include <gtest/gtest.h>

#include <set>

namespace faults {

namespace {

std::string listed(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += " " + name;
    return text;
}

std::string described(const Picture& picture) {
    return std::string(picture.holds ? "" : "holds nothing, ") +
           (picture.isOverwritten ? "overwritten, " : "") + picture.size + "band " + picture.band;
}

}  // namespace

Reference::Reference(const Operation& operation, Operands& operands, const Trouble& trouble)
    : before(stateOf(operands)),
      outcome(call(operation, operands, trouble)),
      after(stateOf(operands)) {}

void expectOnlyAllowedChanges(const Operation& operation, const Failure& failure,
                              const Reference& reference, const State& left) {
    for (const std::string& name : changed(reference.before, left)) {
        const auto allowed = operation.mayChange.find(name);
        const Picture& before = reference.before.at(name);
        const Picture& good = reference.after.at(name);
        EXPECT_TRUE(allowed != operation.mayChange.end() &&
                    isLeft(allowed->second, failure, before, left.at(name), good))
            << name << " is left in a wrong state: " << described(before) << " before, now "
            << described(left.at(name)) << ", without a fault " << described(good);
    }
}

void expectSame(const State& expected, const State& found) {
    EXPECT_EQ(listed(changed(expected, found)), "");
}

void expectUsable(const Operation& operation, const Operands& fresh, Operands& operands,
                  const Reference& good) {
    operands = fresh;
    separate(operands);
    EXPECT_EQ(call(operation, operands, {}).thrown, good.outcome.thrown) << "when called again";
    expectSame(good.after, stateOf(operands));
}

}  // namespace faults
